// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "HZEPEmulationJsonReader.h"

#include "../loading/ReaderFault.h"
#include "EmulationJsonKeys.h"
#include "HZEPEmulations.h"
#include "HZEPJSONText.h"
#include "HostErrors.h"
#include "HostMsgMgr.h"
#include "HostPathUtils.h"
#include "HostZip.h"

#include <boost/property_tree/ptree.hpp>

#include <algorithm>
#include <new>
#include <utility>

using boost::property_tree::ptree;

namespace {

/// Takes "./" off, as "^.[/]+(.*)$" replaced by "$1" does: so any other one character in front of separators goes too.
std::string withoutLeadingDot(const std::string& member) {
    if (member.size() < 2 || member[1] != '/' || member.find_first_of("\n\r") != std::string::npos)
        return member;
    return member.substr(std::min(member.find_first_not_of('/', 1), member.size()));
}

} // namespace

HZEPEmulationJsonReader::HZEPEmulationJsonReader(std::string path, HZEPEmulations* emulations)
    : path_(std::move(path)), emulations_(emulations) {
    if (!HostPathUtils::exists(path_))
        throw HostFileNotFoundException(path_);
}

HZEPEmulationJsonReader::HZEPEmulationJsonReader(HZEPEmulations* emulations) : emulations_(emulations) {}

bool HZEPEmulationJsonReader::isJsonValid() const {
    try {
        ptree root;
        HZEPJSONText::readFile(path_, root);
        return root.find(emulation_json::kEmulations) != root.not_found();
    } catch (const std::bad_alloc&) {
        throw;
    } catch (const std::exception&) {
        return false;
    }
}

void HZEPEmulationJsonReader::parseJson() {
    ptree root;
    HZEPJSONText::readFile(path_, root);
    parseRoot_(root);
}

void HZEPEmulationJsonReader::parseFromDsa(std::string archive, std::string member, HZEPEmulations* emulations) {
    const std::string name = withoutLeadingDot(member);
    ptree root;
    try {
        HZEPJSONText::read(HostZip::readMember(archive, name, HostZip::kMaxMetadataSize), root);
    } catch (const HostError& error) {
        // Missing, encrypted, too large or damaged: all one here.
        throw HostError(HostMsgMgr::getText({"platform", HostMsgMgr::Error, "@74-34@%s%s", {archive, name}}),
                        toReaderFault(error, archive, name));
    } catch (const HZEPJSONTextError& error) {
        throw error.in(archive, name);
    }
    HZEPEmulationJsonReader(emulations).parseRoot_(root);
}

void HZEPEmulationJsonReader::parseRoot_(const ptree& root) {
    if (const auto version = root.get_optional<std::string>(emulation_json::kVersion))
        emulations_->setPfmMetadataVersion(*version);
    for (const auto& [key, source] : root.get_child(emulation_json::kEmulations)) {
        const auto name = source.get_optional<std::string>(emulation_json::kName);
        if (!name)
            continue;
        HZEPEmulation& emulation = *emulations_->createEmulation();
        emulation.setName(name->c_str());
        for (const auto& [fileKey, sourceFile] : source.get_child(emulation_json::kFiles)) {
            const auto type = sourceFile.get<std::string>(emulation_json::kType);
            const auto fileName = sourceFile.get<std::string>(emulation_json::kName);
            HZEPEmulationFile& file = *emulation.createFile(type.c_str(), fileName.c_str());
            if (const auto instPath = sourceFile.get_optional<std::string>(emulation_json::kInstPath))
                file.setInstPath(instPath->c_str());
        }
    }
}
