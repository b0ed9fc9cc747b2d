// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "HZEPExport.h"

#include <boost/property_tree/ptree_fwd.hpp>

#include <string>

class HZEPEmulations;

/// Reads the JSON form of emulation metadata. An emulation without a name is skipped with its files; other keys that must be there raise
/// boost::property_tree::ptree_bad_path, and what is no JSON json_parser_error. What was read until then stays.
class HZEP_EXPORT HZEPEmulationJsonReader {
public:
    /// The emulations stay the caller's and must outlive the reader. Raises HostFileNotFoundException when nothing stands at the path.
    HZEPEmulationJsonReader(std::string path, HZEPEmulations* emulations);
    explicit HZEPEmulationJsonReader(HZEPEmulations* emulations);

    /// The file is JSON with a list of emulations.
    bool isJsonValid() const;
    void parseJson();

    /// Reads a member of an archive; "./" in front of its name is taken off. Raises HostError in the words of "@74-34@%s%s" when there is
    /// no such member, or none that can be read.
    static void parseFromDsa(std::string archive, std::string member, HZEPEmulations* emulations);

private:
    void parseRoot_(const boost::property_tree::ptree& root);

    std::string path_;
    HZEPEmulations* emulations_;
};
