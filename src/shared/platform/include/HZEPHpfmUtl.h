// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "HZEPExport.h"

#include <string>

namespace WELHardwarePlatform {
class BusInterface;
}

/// Makes the memory banks of an HBM subsystem alike in a hardware platform file: once some banks are preferred, all that may be
/// assigned are. A segment whose "auto" is absent or "false" is no such bank.
class HZEP_EXPORT HZEPHpfmUtl {
public:
    static bool areSomeButNotAllAddressSegmentsPreferred(WELHardwarePlatform::BusInterface& bus);
    /// Answers what areSomeButNotAllAddressSegmentsPreferred said before.
    static bool markAllTrueAddressSegmentsPreferred(WELHardwarePlatform::BusInterface& bus);
    static bool iterateOverAddressSegments(WELHardwarePlatform::BusInterface& bus, bool mark);

    /// Rewrites the file if its one HBM subsystem needs it; a file with two of them ("@74-261@") and one that can't be read ("@74-12@",
    /// "@74-260@%s%s%s") stay as they are. A crash leaves the old or the new file. Raises HostXMLException when it can't be written.
    static void ChangeAndWriteHpfmIfNeeded(const std::string& path);
};
