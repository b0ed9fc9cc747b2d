// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "HZEPExport.h"

#include <string>

class HZEPEmulations;

/// Writes the emulations and the metadata version as JSON; feature ROMs have no place in it.
class HZEP_EXPORT HZEPEmulationJsonWriter {
public:
    /// The emulations stay the caller's and must outlive the writer.
    HZEPEmulationJsonWriter(HZEPEmulations* emulations, std::string path);

    /// The file appears whole or not at all. Raises boost::property_tree::json_parser_error when it can't be written.
    void writeJson();

private:
    HZEPEmulations* emulations_;
    std::string path_;
};
