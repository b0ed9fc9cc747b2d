// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "HZEPExport.h"
#include "HostFault.h"

#include <string>

class HZEPProcessorGroup;
class HZEPSoftwarePlatform;
class HZEPSystemConfig;

namespace ZEPSoftwarePlatform {
class BootImages;
class Configuration;
class Platform;
class ProcessorGroup;
class SystemConfigurations;
} // namespace ZEPSoftwarePlatform

/// Reads a software platform file (".spfm") into a software platform.
class HZEP_EXPORT HZEPSoftwarePlatformXMLReader {
public:
    /// The platform stays the caller's; a null one makes parseFile() a mere check. Raises HostFileNotFoundException for a missing
    /// file when there is a platform to fill.
    HZEPSoftwarePlatformXMLReader(std::string file, HZEPSoftwarePlatform* platform);

    /// False for a file that can't be read or isn't valid: two lines went to the standard output, a message to the host, and the
    /// platform is untouched.
    bool parseFile();

    /// What the last failure wrote to the standard output; "" without one.
    std::string getErrorMsg() const { return errorMsg_; }

    /// The file, line and cause of the last failure; nothing without one.
    const HostFault& getFault() const { return fault_; }

private:
    void parsePlatform_(const ZEPSoftwarePlatform::Platform& platform);
    void parseSystemConfigurations_(const ZEPSoftwarePlatform::SystemConfigurations& configurations);
    void parseConfiguration_(const ZEPSoftwarePlatform::Configuration& configuration);
    static void parseBootImages_(const ZEPSoftwarePlatform::BootImages& images, HZEPSystemConfig& config);
    static void parseProcessorGroup_(const ZEPSoftwarePlatform::ProcessorGroup& group, HZEPProcessorGroup& into);

    HZEPSoftwarePlatform* platform_;
    std::string file_;
    std::string errorMsg_;
    HostFault fault_;
};
