// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "HZEPDsaJsonReader.h"

#include "../loading/ReaderFault.h"
#include "DsaJsonPlatformKeys.h"
#include "HPLPlatform.h"
#include "HZEPEmulationJsonReader.h"
#include "HZEPEmulationXMLReader.h"
#include "HZEPEmulations.h"
#include "HZEPHpfmReader.h"
#include "HZEPJSONText.h"
#include "HostFile.h"
#include "HostFileUtils.h"
#include "HostMsgMgr.h"
#include "HostPathUtils.h"
#include "HostZip.h"
#include "HostZipSession.h"
#include "HostZipStreams.h"

#include <boost/property_tree/ptree.hpp>

#include <exception>
#include <new>
#include <set>
#include <string_view>

using boost::property_tree::ptree;
using zep_platform::PlatformLoader;

namespace {

void complain(const char* key, std::vector<std::string> args, const HostFault& fault) {
    HostMsgMgr::getGlobal().send("platform", HostMsgMgr::CriticalWarning, key, std::move(args), fault);
}

// A text of this size is read into one tree, which is quicker; the lists of a larger one are read item by item, which saves memory.
constexpr std::size_t kWholeTreeLimit = 256U << 10;

const std::set<std::string, std::less<>>& namesOfLists() {
    static const auto names = [] {
        std::set<std::string, std::less<>> lists;
        for (const auto& key : dsa_json::kPlatformKeys)
            if (key.read && key.itemByItem)
                lists.insert(key.name);
        return lists;
    }();
    return names;
}

void readListItems(HPLPlatform& platform, const dsa_json::Key<HPLPlatform>& key, std::string_view list) {
    ptree object;
    ptree& items = object.push_back({key.name, ptree()})->second;
    HZEPJSONText::readItems(list, [&](ptree& item) {
        items.push_back({std::string(), ptree()})->second.swap(item);
        key.read(platform, object, key.name);
    });
}

} // namespace

HZEPDsaJsonReader::HZEPDsaJsonReader(HPLPlatform* platform) : platform_(platform) {}

bool HZEPDsaJsonReader::canParse(const std::string& archive, HwMetadataMode mode, std::string& entry) {
    if (!HostPathUtils::exists(archive)) {
        fault_ = {archive, "", 0, 0, "does not exist"};
        complain("@74-66@%s", {archive}, fault_);
        return false;
    }
    archive_ = archive;
    fault_ = {archive, "", 0, 0, "its JSON metadata is not asked for"};
    if (mode == PlatformLoader::XmlOnly)
        return false;
    platform_->setPlatformFile(HostFile::getCanonicalName(archive));

    const HostZipSession session(archive);
    const std::string alternate = platform_->getAltJsonFileName();
    const std::string primary = platform_->getJsonFileName();
    const bool hasAlternate = HostZip::containsFile(archive, alternate);
    const bool hasPrimary = HostZip::containsFile(archive, primary);
    fault_.cause = "holds no JSON metadata: there is no entry \"" + primary + "\"";
    if (!hasAlternate && !hasPrimary)
        return false;
    entry = mode == PlatformLoader::PreferAlternateJson && hasAlternate ? alternate : primary;
    return mode != PlatformLoader::PrimaryJsonOnly || hasPrimary;
}

bool HZEPDsaJsonReader::canParseHwEmu(const std::string& archive, HwMetadataMode mode, std::string& entry) {
    if (mode == PlatformLoader::XmlOnly)
        return false;
    std::string unused;
    if (!canParse(archive, mode, unused))
        return false;
    // The primary member goes first here, unlike in canParse; archives rely on both.
    entry = getHwEmuJsonFileNameIfExist();
    if (entry.empty() && mode != PlatformLoader::PrimaryJsonOnly)
        entry = getAltHwEmuJsonFileNameIfExist();
    return !entry.empty();
}

bool HZEPDsaJsonReader::parseDSA(const std::string& archive, HwMetadataMode mode) {
    const HostZipSession session(archive);
    std::string entry;
    return canParse(archive, mode, entry) && parseMember_(archive, entry);
}

bool HZEPDsaJsonReader::parseHwEmuKAR(const std::string& archive, HwMetadataMode mode) {
    const HostZipSession session(archive);
    std::string entry;
    if (!canParseHwEmu(archive, mode, entry))
        return false;
    if (!hoststream::iostreams::zip_istream(entry, archive).is_open()) {
        fault_ = {archive, entry, 0, 0, "can't be opened"};
        complain("@74-67@%s%s", {archive, entry}, fault_);
        return false;
    }
    if (!parseMember_(archive, entry))
        return false;
    // Only now: the mark redirects the names of members, also while a document is read.
    platform_->setIsChildHardwareEmuPlatform(true);
    return true;
}

bool HZEPDsaJsonReader::parseMember_(const std::string& archive, const std::string& entry) {
    fault_ = {archive, entry, 0, 0, "is empty"};
    try {
        if (parseJsonString(HostZip::readMember(archive, entry, HostZip::kMaxMetadataSize))) {
            fault_ = {};
            return true;
        }
    } catch (const std::bad_alloc&) {
        throw; // no fault of the archive, and no reason to go on without this part of it
    } catch (const std::exception& error) {
        fault_ = toReaderFault(error, archive, entry);
        complain("@74-64@%s%s%s", {entry, archive, error.what()}, fault_);
    } catch (...) {
        fault_.cause = "can't be read for an unknown reason";
        complain("@74-63@%s%s", {entry, archive}, fault_);
    }
    return false;
}

bool HZEPDsaJsonReader::parseFile(const std::string& jsonPath) {
    if (!HostFile::isRegularFile(jsonPath))
        return false;
    try {
        return parseJsonString(HostFileUtils::readFile(jsonPath));
    } catch (...) {
        return false;
    }
}

bool HZEPDsaJsonReader::parseJsonString(const std::string& text) {
    if (text.empty())
        return false;
    ptree root;
    HZEPJSONText::Lists lists;
    if (text.size() <= kWholeTreeLimit)
        HZEPJSONText::read(text, root);
    else
        HZEPJSONText::read(text, root, namesOfLists(), lists);
    // The lists of the archive's hardware platform file go before the document's, whose files tell where it is.
    std::string hpfm;
    for (const auto& key : dsa_json::kPlatformKeys) {
        if (!key.read)
            continue;
        if (key.name == dsa_json::kBusInterfaces) {
            hpfm = getHpfmStr();
            if (readHpfmBusInterfaces(hpfm))
                continue;
        } else if (key.name == dsa_json::kNocConnectivity && readHpfmNocConnectivity(hpfm)) {
            continue;
        }
        if (const auto list = lists.find(std::string_view(key.name)); list != lists.end())
            readListItems(*platform_, key, list->second);
        else
            key.read(*platform_, root, key.name);
        if (key.name == dsa_json::kFiles)
            scanEmulations_();
    }
    return true;
}

std::string HZEPDsaJsonReader::getHwEmuJsonFileNameIfExist() const {
    return getEntryIfExists_(platform_->getHwEmuJsonFileName());
}

std::string HZEPDsaJsonReader::getAltHwEmuJsonFileNameIfExist() const {
    return getEntryIfExists_(platform_->getAltHwEmuJsonFileName());
}

std::string HZEPDsaJsonReader::getEntryIfExists_(const std::string& entry) const {
    return HostZip::containsFile(archive_, entry) ? entry : "";
}

std::string HZEPDsaJsonReader::getHpfmFile() const {
    return getEntryIfExists_(platform_->getFile("HPFM"));
}

std::string HZEPDsaJsonReader::getHpfmStr() const {
    const std::string entry = getHpfmFile();
    if (entry.empty() || !hoststream::iostreams::zip_istream(entry, archive_).is_open())
        return "";
    return HostZip::readMember(archive_, entry, HostZip::kMaxMetadataSize);
}

bool HZEPDsaJsonReader::readHpfmBusInterfaces(const std::string& hpfmText) {
    return !hpfmText.empty() && HZEPHpfmReader(hpfmText, platform_).parseBusInterfaces();
}

bool HZEPDsaJsonReader::readHpfmNocConnectivity(const std::string& hpfmText) {
    return !hpfmText.empty() && HZEPHpfmReader(hpfmText, platform_).parseNocConnectivity();
}

void HZEPDsaJsonReader::scanEmulations_() {
    if (!HostPathUtils::exists(archive_))
        return;
    HZEPEmulations emulations;
    const std::string json = platform_->getFile("EMU_JSON");
    const std::string xml = platform_->getFile("EMU_XML");
    if (!json.empty())
        HZEPEmulationJsonReader::parseFromDsa(archive_, json, &emulations);
    else if (!xml.empty())
        HZEPEmulationXMLReader::parseFromDsa(archive_, xml, &emulations);
    for (const HZEPEmulation* emulation : emulations.getEmulations())
        for (const HZEPEmulationFile* file : emulation->getFiles()) {
            if (file->getType() == "EMU_HPFM")
                platform_->setSupportsHWEmulation(true);
            else if (file->getType() == "TOP_BD")
                platform_->setSupportsTwoHwEmuBd(true);
        }
}
