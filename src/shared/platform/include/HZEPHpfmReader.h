// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "HZEPExport.h"

#include <string>

class HZEPHardwareBusInterface;
class HZEPHardwareNocConnectivity;
class HZEPHardwarePlatform;

namespace WELHardwarePlatform {
class BusInterface;
class BusInterfaceAddressSegment;
class Component;
class NocConnectivity;
class Parameter;
class Repository;
class SystemClocks;
} // namespace WELHardwarePlatform

/// Reads a hardware platform file (".hpfm"): what a platform offers to a tool flow. It adds to what the platform holds; vendor,
/// board id and name are set only where they are empty.
class HZEP_EXPORT HZEPHpfmReader {
public:
    /// The platform stays the caller's. An empty text is told on the standard output; parseFile needs none.
    HZEPHpfmReader(std::string hpfmText, HZEPHardwarePlatform* platform);

    void setPlatformFile(std::string path) { file_ = std::move(path); }

    /// Reads the file, or the text given at construction. False when it isn't valid: the fault went to the standard output and as
    /// "@74-12@" or "@74-31@" to the host, and the platform is untouched.
    bool parseFile();
    bool parseStream();

    /// Add only the bus interfaces, or only the NoC connectivity, of the text; true. Raise lmx60::c_lmx_exception for a text that isn't
    /// valid.
    bool parseBusInterfaces();
    bool parseNocConnectivity();

    void parseRepository(const WELHardwarePlatform::Repository& repository);

    /// Text of the last failure; "" without one.
    std::string getErrorMsg() const { return errorMsg_; }

private:
    void parseComponent_(const WELHardwarePlatform::Component& component);
    void parseSystemClocks_(const WELHardwarePlatform::SystemClocks& clocks);
    void parseParam_(const WELHardwarePlatform::Parameter& parameter);
    void parseBusInterfaces_(const WELHardwarePlatform::Component& component);
    void parseNocConnectivities_(const WELHardwarePlatform::Component& component);
    void parseBusInterface_(const WELHardwarePlatform::BusInterface& source, HZEPHardwareBusInterface& bus);
    void parseAddressSegment_(const WELHardwarePlatform::BusInterfaceAddressSegment& source, HZEPHardwareBusInterface& bus);
    void parseNocConnectivity_(const WELHardwarePlatform::NocConnectivity& source, HZEPHardwareNocConnectivity& connectivity);

    HZEPHardwarePlatform* platform_;
    std::string file_;
    std::string hpfmText_;
    std::string errorMsg_;
};
