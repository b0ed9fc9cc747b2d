// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "HZEPExport.h"

#include <boost/property_tree/ptree_fwd.hpp>

#include <string>

class HZEPEmulations;

/// Reads the feature ROM values of extension metadata.
class HZEP_EXPORT HZEPEmulationExtMetaJsonReader {
public:
    /// The emulations stay the caller's and must outlive the reader. Raises HostFileNotFoundException when nothing stands at the path.
    HZEPEmulationExtMetaJsonReader(std::string path, HZEPEmulations* emulations);
    explicit HZEPEmulationExtMetaJsonReader(HZEPEmulations* emulations);

    /// The file is JSON.
    bool isJsonValid() const;

    /// Adds one feature ROM, also when the file lists none; of several the last one's keys count. Raises what the JSON parser raises, and
    /// boost::property_tree::ptree_bad_path for a list that must be there and is not.
    void parseJson();

private:
    void parseExtMetaRoot_(const boost::property_tree::ptree& root);

    std::string path_;
    HZEPEmulations* emulations_;
};
