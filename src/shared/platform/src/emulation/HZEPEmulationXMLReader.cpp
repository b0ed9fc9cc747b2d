// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "HZEPEmulationXMLReader.h"

#include "../loading/LmxFileFailure.h"
#include "../loading/ReaderFault.h"
#include "HZEPEmulations.h"
#include "HostErrors.h"
#include "HostI18n.h"
#include "HostMsgMgr.h"
#include "HostPathUtils.h"
#include "HostZip.h"
#include "ZEPEmulationLMX.h"

#include <utility>

namespace {

void complain(const std::string& file, const HostFault& fault) {
    HostMsgMgr::getGlobal().send("platform", HostMsgMgr::Error, "@74-24@%s%d", {file, std::to_string(fault.line)}, fault);
}

} // namespace

HZEPEmulationXMLReader::HZEPEmulationXMLReader(std::string path, HZEPEmulations* emulations)
    : path_(std::move(path)), emulations_(emulations) {
    if (!HostPathUtils::exists(path_))
        throw HostFileNotFoundException(path_);
}

void HZEPEmulationXMLReader::parseXml() {
    const auto read = [this](const ZEPEmulation::Root& root) { parseRoot_(root, *emulations_); };
    if (const auto failure = readLmxFile<ZEPEmulation::Root>(path_, read))
        complain(path_, failure->toFault(path_));
}

void HZEPEmulationXMLReader::parseFromDsa(std::string archive, std::string member, HZEPEmulations* emulations) {
    std::string text;
    try {
        text = HostZip::readMember(archive, member, HostZip::kMaxMetadataSize);
    } catch (const HostError& error) {
        complain(member, toReaderFault(error, archive, member));
        return;
    }
    const auto failure = catchLmxFailure([&] {
        lmx60::elmx_error code = lmx60::error_none;
        const ZEPEmulation::Root root(text.data(), text.size(), &code);
        if (code == lmx60::error_none)
            parseRoot_(root, *emulations);
        return code;
    });
    if (failure)
        complain(member, failure->toFault(archive, member));
}

void HZEPEmulationXMLReader::parseRoot_(const ZEPEmulation::Root& root, HZEPEmulations& emulations) {
    const ZEPEmulation::Emulations& list = root.GetEmulations();
    for (std::size_t i = 0; i < list.SizeEmulation(); ++i) {
        const ZEPEmulation::Emulation& source = list.GetEmulation(i);
        HZEPEmulation& emulation = *emulations.createEmulation();
        emulation.setName(HostI18n::toUtf8(source.GetName()).c_str());
        const ZEPEmulation::Files& files = source.GetFiles();
        for (std::size_t j = 0; j < files.SizeFile(); ++j) {
            const ZEPEmulation::File& file = files.GetFile(j);
            emulation.createFile(HostI18n::toUtf8(file.GetType()).c_str(), HostI18n::toUtf8(file.GetName()).c_str());
        }
    }
}
