// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "HZEPExport.h"

#include <string>

class HZEPEmulations;
namespace ZEPEmulation {
class Root;
}

/// Writes names, types and files as XML. Instance paths, feature ROMs and the metadata version have no place in it, and the file bears the
/// version of its schema.
class HZEP_EXPORT HZEPEmulationXMLWriter {
public:
    /// The emulations stay the caller's and must outlive the writer.
    HZEPEmulationXMLWriter(HZEPEmulations* emulations, std::string path);

    /// The file appears whole or not at all. Raises HostXMLException in the words of "@74-10@%s" or "@74-15@%s%s%s%s".
    void writeXml();

private:
    void writeXml_(ZEPEmulation::Root& root) const;

    HZEPEmulations* emulations_;
    std::string path_;
};
