// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "HZEPExport.h"

#include <string>

class HZEPEmulations;
namespace ZEPEmulation {
class Root;
}

/// Reads the XML form of emulation metadata, which has no instance paths. What can't be read is told as "@74-24@%s%d" (file, line; line 0
/// when the fault has none) under the topic "platform" and adds nothing.
class HZEP_EXPORT HZEPEmulationXMLReader {
public:
    /// The emulations stay the caller's and must outlive the reader. Raises HostFileNotFoundException when nothing stands at the path.
    HZEPEmulationXMLReader(std::string path, HZEPEmulations* emulations);

    void parseXml();

    /// Reads a member of an archive. The message names the member.
    static void parseFromDsa(std::string archive, std::string member, HZEPEmulations* emulations);

private:
    static void parseRoot_(const ZEPEmulation::Root& root, HZEPEmulations& emulations);

    std::string path_;
    HZEPEmulations* emulations_;
};
