// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "HZEPExport.h"
#include "HostFault.h"

#include <string>

class HZEPPlatform;

namespace ZEPPlatform {
class HardwarePlatforms;
class Platform;
class ReconfigurablePartition;
} // namespace ZEPPlatform

/// Reads a platform file (".zpfm") into a platform: its identity and the paths of its member files, none of which is opened.
class HZEP_EXPORT HZEPPlatformXMLReader {
public:
    /// The platform stays the caller's. Raises HostFileNotFoundException for an empty path and for a missing file.
    HZEPPlatformXMLReader(std::string file, HZEPPlatform* platform);

    /// False for a file that can't be read or isn't valid: two lines went to the standard output, a message to the host, and the
    /// platform is untouched.
    bool parseFile();

    /// What the last failure wrote to the standard output; "" without one.
    std::string getErrorMsg() const { return errorMsg_; }

    /// The file, line and cause of the last failure; nothing without one.
    const HostFault& getFault() const { return fault_; }

private:
    void parsePlatform_(const ZEPPlatform::Platform& platform);
    void parseHardwarePlatforms_(const ZEPPlatform::HardwarePlatforms& platforms);
    void parseReconfigurablePartition_(const ZEPPlatform::ReconfigurablePartition& partition);
    template <class Member>
    std::string memberPath_(const Member& member) const;
    template <class Member>
    std::string canonicalMemberPath_(const Member& member) const;

    HZEPPlatform* platform_;
    std::string file_;
    std::string errorMsg_;
    HostFault fault_;
};
