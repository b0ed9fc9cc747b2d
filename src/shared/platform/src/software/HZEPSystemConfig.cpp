// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "HZEPSystemConfig.h"

#include "HZEPBootImg.h"
#include "HZEPProcessorGroup.h"
#include "JSONListWriter.h"
#include "JSONObjectWriter.h"

#include <boost/algorithm/string/predicate.hpp>

using zep_platform::JSONListWriter;
using zep_platform::JSONObjectWriter;

namespace {

template <class T>
T* findByName(const HZEPOwnedList<T>& list, const std::string& name) {
    for (T* item : list)
        if (item->getName() == name)
            return item;
    return nullptr;
}

template <class T>
std::string orFirstName(const std::string& name, const HZEPOwnedList<T>& list) {
    return !name.empty() || list.empty() ? name : list.items().front()->getName();
}

void append(std::vector<std::string>& out, const std::vector<std::string>& list) {
    out.insert(out.end(), list.begin(), list.end());
}

template <class T>
JSONListWriter listOf(const std::vector<T>& items) {
    JSONListWriter list;
    for (const T& item : items)
        list.addItem(item);
    return list;
}

} // namespace

HZEPSystemConfig::HZEPSystemConfig() = default;

HZEPSystemConfig::~HZEPSystemConfig() = default;

std::string HZEPSystemConfig::getName() const {
    return name_;
}

std::string HZEPSystemConfig::getDesc() const {
    return desc_;
}

std::string HZEPSystemConfig::getPrettyName() const {
    return prettyName_.empty() ? name_ : prettyName_;
}

std::string HZEPSystemConfig::getDefaultProcGrpName() const {
    return orFirstName(defaultProcGrpName_, processorGroups_);
}

std::string HZEPSystemConfig::getPrebuiltData() const {
    return prebuiltData_;
}

void HZEPSystemConfig::getProcessorGroups(HostVector<HZEPProcessorGroup*>& out) const {
    processorGroups_.appendTo(out);
}

void HZEPSystemConfig::getProcessorGroups(HostVector<std::string>& out) const {
    append(out, processorGroupNames_);
}

void HZEPSystemConfig::getRuntimes(HostVector<std::string>& out) const {
    append(out, runtimes_);
}

void HZEPSystemConfig::getRuntimesByPrettyName(HostVector<std::string>& out) const {
    for (const std::string& runtime : runtimes_) {
        if (boost::algorithm::iequals(runtime, "ocl"))
            out.push_back("OpenCL");
        else if (boost::algorithm::iequals(runtime, "cpp"))
            out.push_back("C/C++");
        else
            out.push_back(runtime);
    }
}

HZEPProcessorGroup* HZEPSystemConfig::getProcGrpByName(std::string name) const {
    return findByName(processorGroups_, name);
}

std::string HZEPSystemConfig::getDefaultBootImgName() const {
    return orFirstName(defaultBootImgName_, bootImgs_);
}

void HZEPSystemConfig::getBootImgs(HostVector<HZEPBootImg*>& out) const {
    bootImgs_.appendTo(out);
}

HZEPBootImg* HZEPSystemConfig::getBootImgByName(std::string name) const {
    return findByName(bootImgs_, name);
}

void HZEPSystemConfig::setName(std::string name) {
    name_ = std::move(name);
}

void HZEPSystemConfig::setDesc(std::string desc) {
    desc_ = std::move(desc);
}

void HZEPSystemConfig::setPrettyName(std::string name) {
    prettyName_ = std::move(name);
}

void HZEPSystemConfig::setDefaultProcGrpName(std::string name) {
    defaultProcGrpName_ = std::move(name);
}

void HZEPSystemConfig::setDefaultBootImgName(std::string name) {
    defaultBootImgName_ = std::move(name);
}

HZEPBootImg* HZEPSystemConfig::addBootImg() {
    return bootImgs_.add();
}

void HZEPSystemConfig::addProcessorGroup(std::string name) {
    processorGroupNames_.push_back(std::move(name));
}

HZEPProcessorGroup* HZEPSystemConfig::addProcessorGroup() {
    return processorGroups_.add();
}

void HZEPSystemConfig::setSupportsQemu(bool supports) {
    supportsQemu_ = supports;
}

void HZEPSystemConfig::addRuntime(std::string runtime) {
    runtimes_.push_back(std::move(runtime));
}

void HZEPSystemConfig::toJSON(JSONObjectWriter& writer) const {
    writer.addKey("name", getName());
    writer.addKey("prettyName", getPrettyName());
    writer.addKey("description", getDesc());
    writer.addKey("defaultProcessorGroup", getDefaultProcGrpName());
    writer.addKey("defaultBootImage", getDefaultBootImgName());
    writer.addKey("prebuiltData", getPrebuiltData());
    writer.addKey("qemu", isQemuSupported());
    writer.addKey("processorGroups", listOf(processorGroups_.items()));
    writer.addKey("bootImages", listOf(bootImgs_.items()));
    writer.addKey("runtimes", listOf(runtimes_));
}
