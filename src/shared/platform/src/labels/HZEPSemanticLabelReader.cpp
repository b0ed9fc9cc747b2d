// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "HZEPSemanticLabelReader.h"

#include "../loading/ReaderFault.h"
#include "HZEPJSONText.h"
#include "HostFile.h"
#include "HostMsgMgr.h"
#include "JSONObjectWriter.h"

#include <utility>

using boost::property_tree::ptree;

namespace {

constexpr char kUuid[] = "uuid";
constexpr char kPcieBar[] = "pcie_bar";
constexpr char kPcieEndpoint[] = "pcie_endpoint";
constexpr char kCpuEndpoint[] = "cpu_endpoint";
constexpr char kDebugNetwork[] = "debug_network";

void send(unsigned severity, const char* key, std::vector<std::string> args, HostFault fault = {}) {
    HostMsgMgr::getGlobal().send("platform", severity, key, std::move(args), std::move(fault));
}

/// The label joins the list once it is whole, so that a message about it finds the labels before it.
template <class Label>
void append(std::vector<Label>& labels, const ptree& source) {
    Label label(source);
    labels.push_back(std::move(label));
}

template <class Label>
void write(zep_platform::JSONObjectWriter& writer, const char* key, const std::vector<Label>& labels) {
    for (const Label& label : labels)
        writer.addKey(key, &label);
}

} // namespace

bool HZEPSemanticLabelReader::parseFile(const std::string& path) {
    if (!HostFile::isRegularFile(path)) {
        send(HostMsgMgr::Error, "@74-87@%s", {path}, {path, "", 0, 0, "does not exist"});
        return false;
    }
    try {
        ptree root;
        HZEPJSONText::readFile(path, root);
        parseRoot(root);
        return true;
    } catch (const std::exception& error) {
        send(HostMsgMgr::Error, "@74-86@%s%s", {path, error.what()}, toReaderFault(error, path));
        return false;
    }
}

void HZEPSemanticLabelReader::parseRoot(const ptree& root) {
    clear();
    for (const auto& [key, label] : root) {
        if (key == kUuid)
            append(uuids_, label);
        else if (key == kPcieBar)
            append(pcieBars_, label);
        else if (key == kPcieEndpoint)
            append(pcieEndpoints_, label);
        else if (key == kCpuEndpoint)
            append(cpuEndpoints_, label);
        else if (key == kDebugNetwork)
            append(debugNetworks_, label);
        else
            send(HostMsgMgr::CriticalWarning, "@74-88@%s", {key});
    }
}

void HZEPSemanticLabelReader::clear() {
    uuids_.clear();
    pcieBars_.clear();
    pcieEndpoints_.clear();
    cpuEndpoints_.clear();
    debugNetworks_.clear();
}

void HZEPSemanticLabelReader::toJSON(zep_platform::JSONObjectWriter& writer) const {
    write(writer, kUuid, uuids_);
    write(writer, kPcieBar, pcieBars_);
    write(writer, kPcieEndpoint, pcieEndpoints_);
    write(writer, kCpuEndpoint, cpuEndpoints_);
    write(writer, kDebugNetwork, debugNetworks_);
}
