// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors

#include "HZEPVcePartition.h"

#include "HZEPJSONUtils.h"
#include "JSONListWriter.h"
#include "JSONObjectWriter.h"

#include <algorithm>
#include <utility>

void HZEPVcePartition::toJSON(zep_platform::JSONObjectWriter& writer) const {
    writer.addKey("vceInst", vceInst_);
    writer.addKey("startColumn", std::to_string(startColumn_));
    writer.addKey("numColumns", std::to_string(numColumns_));
    writer.addKey("uuid", uuid_);
    writer.addKey("plIntefaceID", plIntefaceID_);
    zep_platform::JSONListWriter list;
    for (const HZEPVcePartition& partition : partitions_)
        list.addItem(&partition);
    writer.addKey("partitions", std::move(list));
}

void HZEPVcePartition::fromJSON(const boost::property_tree::ptree& tree) {
    vceInst_ = HZEPJSONUtils::getValue(tree, "vceInst");
    startColumn_ = HZEPJSONUtils::getIntValue(tree, "startColumn", 0);
    numColumns_ = HZEPJSONUtils::getIntValue(tree, "numColumns", 0);
    uuid_ = HZEPJSONUtils::getValue(tree, "uuid");
    plIntefaceID_ = HZEPJSONUtils::getValue(tree, "plIntefaceID");
    partitions_.clear();
    if (const auto list = tree.get_child_optional("partitions"))
        for (const auto& [key, item] : *list)
            addPartition().fromJSON(item);
}

bool HZEPVcePartition::operator==(const HZEPVcePartition& other) const {
    return isRoot_ == other.isRoot_ && startColumn_ == other.startColumn_ && numColumns_ == other.numColumns_ &&
           vceInst_ == other.vceInst_ && uuid_ == other.uuid_ && plIntefaceID_ == other.plIntefaceID_ && partitions_ == other.partitions_;
}

const HZEPVcePartition& HZEPVcePartition::findPartition(int start, int num) const {
    static const HZEPVcePartition none;
    const auto found = std::find_if(partitions_.begin(), partitions_.end(), [start, num](const HZEPVcePartition& partition) {
        return partition.startColumn_ == start && partition.numColumns_ == num;
    });
    return found == partitions_.end() ? none : *found;
}

bool HZEPVcePartition::hasPartition(const std::string& plInterfaceId) const {
    return std::any_of(partitions_.begin(), partitions_.end(),
                       [&plInterfaceId](const HZEPVcePartition& partition) { return partition.plIntefaceID_ == plInterfaceId; });
}

HZEPVcePartition& HZEPVcePartition::addPartition() {
    return partitions_.emplace_back();
}

HZEPVcePartition& HZEPVcePartition::addPartition(int start, int num) {
    return partitions_.emplace_back(start, num);
}

void HZEPVcePartition::clear() {
    *this = HZEPVcePartition();
}
