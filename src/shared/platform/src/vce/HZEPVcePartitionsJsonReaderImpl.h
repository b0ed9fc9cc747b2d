// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include <boost/property_tree/ptree.hpp>

#include <string>

class HZEPHardwarePlatform;
class HZEPVcePartition;

/// The walk over a partition file's tree.
class HZEPVcePartitionsJsonReaderImpl {
public:
    explicit HZEPVcePartitionsJsonReaderImpl(HZEPHardwarePlatform& platform) : platform_(platform) {}

    void parse(const std::string& file);

private:
    void parseVce_(const boost::property_tree::ptree& tree);
    /// A partition without columns stands for a node that makes none.
    HZEPVcePartition& addRootPartition_(const boost::property_tree::ptree& node);
    void addSubPartitions_(const boost::property_tree::ptree& partitions, HZEPVcePartition& root);
    void populatePartition_(const boost::property_tree::ptree& node, bool isRoot, HZEPVcePartition& partition);

    HZEPHardwarePlatform& platform_;
    std::string instance_;
};
