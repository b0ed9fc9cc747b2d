// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "../loading/ReaderFault.h"
#include "EmulationPropertyKeys.h"
#include "HZEPEmulationUtils.h"
#include "HZEPJSONText.h"
#include "HostMsgMgr.h"
#include "HostPathUtils.h"
#include "PropertyOrigins.h"

#include <boost/property_tree/exceptions.hpp>
#include <boost/property_tree/ptree.hpp>

#include <utility>

namespace keys = emulation_properties;

namespace {

using Tree = boost::property_tree::ptree;
using Utils = HZEPEmulationUtils;

/// The texts of an object; of several of one name the first, as everywhere.
Utils::Properties readTexts(const Tree& object) {
    Utils::Properties texts;
    for (const auto& [key, value] : object)
        if (value.empty() && !key.empty())
            texts.emplace(key, value.data());
    return texts;
}

void overwrite(Utils::Properties& properties, Utils::Properties&& later) {
    later.merge(properties);
    properties.swap(later);
}

struct PropertyFile {
    explicit PropertyFile(const Tree& root);

    Utils::Banks banks;
    Utils::Properties properties = {};
    Utils::Properties clocks = {};
    Utils::Instances instances = {};
};

PropertyFile::PropertyFile(const Tree& root) : properties(readTexts(root)) {
    if (const auto list = root.get_child_optional(keys::kBanks))
        for (const auto& item : *list) {
            const auto number = static_cast<unsigned>(banks.size());
            Utils::Properties& bank = banks[number] = readTexts(item.second);
            bank[keys::kTag] = keys::kBankPrefix + std::to_string(number);
        }
    if (const auto list = root.get_child_optional(keys::kInstances))
        for (const auto& item : *list)
            instances[item.second.get_child(keys::kVlnv).data()] = readTexts(item.second.get_child(keys::kConfiguration));
    if (const auto object = root.get_child_optional(keys::kClocks))
        clocks = readTexts(*object);
    for (const char* key : {keys::kBanks, keys::kInstances, keys::kClocks})
        properties.erase(key);
}

} // namespace

void HZEPEmulationUtils::populateDdrPropMap(const std::string& path, Banks& banks, Properties& properties, Properties& clocks,
                                            Instances& instances) {
    if (!HostPathUtils::exists(path))
        return;
    try {
        Tree root;
        HZEPJSONText::readFile(path, root);
        PropertyFile file(root);
        for (auto& [number, bank] : file.banks)
            overwrite(banks[number], std::move(bank));
        overwrite(properties, std::move(file.properties));
        overwrite(clocks, std::move(file.clocks));
        file.instances.merge(instances);
        instances.swap(file.instances);
    } catch (const boost::property_tree::ptree_error& error) {
        HostMsgMgr::getGlobal().send("platform", HostMsgMgr::Info, "@74-37@%s", {path}, PropertyOrigins::place(toReaderFault(error, path)));
    }
}

const HZEPEmulationUtils::Keys& HZEPEmulationUtils::getUnUsedZepMemorySubSystemParams() {
    static const Keys unused = {"C_BASEADDR", "C_HIGHADDR", "EDK_IPTYPE", "NUM_CLKS", "NUM_SI"};
    return unused;
}

const HZEPEmulationUtils::Keys& HZEPEmulationUtils::getUnUsedParamatersInDDRModel(unsigned) {
    // "ontrollerType" is the key's name here: "ControllerType" stays in the script.
    static const Keys unused = {"AS_LATENCY",
                                "AS_WRITE_LATENCY",
                                "AXI_ARBITRATION_SCHEME",
                                "BURST_LENGTH",
                                "DDR4_ADDR_WIDTH",
                                "DDR4_AXI_ADDR_WIDTH",
                                "DDR4_AXI_DATA_WIDTH",
                                "DDR4_AXI_ID_WIDTH",
                                "DDR4_AutoPrecharge",
                                "DDR4_AxiNarrowBurst",
                                "DDR4_CL",
                                "DDR4_CWL",
                                "DDR4_Ordering",
                                "DDR4_tXPR",
                                "DDR4_tZQCS",
                                "DDR4_tZQI",
                                "DDR4_tZQINIT",
                                "SP_TAG",
                                "Name",
                                "ontrollerType"};
    return unused;
}

const HZEPEmulationUtils::Keys& HZEPEmulationUtils::getUnUsedCLKSettings() {
    static const Keys unused = {"CPU"};
    return unused;
}
