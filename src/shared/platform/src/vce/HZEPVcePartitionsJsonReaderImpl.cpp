// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors

#include "HZEPVcePartitionsJsonReaderImpl.h"

#include "HZEPHardwarePlatform.h"
#include "HZEPJSONText.h"
#include "HZEPJSONUtils.h"
#include "HZEPVcePartition.h"
#include "HostErrors.h"

using boost::property_tree::ptree;

namespace {

bool hasColumns(const ptree& node) {
    return HZEPJSONUtils::getIntValue(node, "numColumns", 0) >= 1;
}

} // namespace

void HZEPVcePartitionsJsonReaderImpl::parse(const std::string& file) {
    try {
        ptree tree;
        HZEPJSONText::readFile(file, tree);
        parseVce_(tree);
    } catch (const std::exception&) {
        throw HostAlgException("An error occurred while parsing the vce partitions json file: " + file);
    }
}

void HZEPVcePartitionsJsonReaderImpl::parseVce_(const ptree& tree) {
    const auto vce = tree.get_child_optional("VCE");
    if (!vce)
        return;
    for (const auto& [instance, node] : *vce) {
        instance_ = instance;
        HZEPVcePartition& root = addRootPartition_(node);
        if (!root.isPartition())
            continue;
        if (const auto partitions = node.get_child_optional("partitions"))
            addSubPartitions_(*partitions, root);
    }
}

HZEPVcePartition& HZEPVcePartitionsJsonReaderImpl::addRootPartition_(const ptree& node) {
    static HZEPVcePartition none;
    if (!hasColumns(node))
        return none;
    HZEPVcePartition& partition = *platform_.addVcePartition();
    populatePartition_(node, true, partition);
    return partition;
}

void HZEPVcePartitionsJsonReaderImpl::addSubPartitions_(const ptree& partitions, HZEPVcePartition& root) {
    for (const auto& [key, node] : partitions)
        if (hasColumns(node))
            populatePartition_(node, false, root.addPartition());
}

void HZEPVcePartitionsJsonReaderImpl::populatePartition_(const ptree& node, bool isRoot, HZEPVcePartition& partition) {
    partition.isRoot(isRoot);
    partition.vceInst(instance_);
    partition.startColumn(HZEPJSONUtils::getIntValue(node, "startColumn", 0));
    partition.numColumns(HZEPJSONUtils::getIntValue(node, "numColumns", 0));
    partition.uuid(HZEPJSONUtils::getValue(node, "uuid"));
    partition.plIntefaceID(HZEPJSONUtils::getValue(node, "vce_pl_intf_id"));
}
