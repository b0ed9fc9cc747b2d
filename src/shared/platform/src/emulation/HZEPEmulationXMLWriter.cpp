// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "HZEPEmulationXMLWriter.h"

#include "../formats/LmxFile.h"
#include "../foundations/CheckedDocument.h"
#include "HZEPEmulations.h"
#include "HostI18n.h"
#include "ZEPEmulationLMX.h"

#include <utility>

namespace {

std::wstring wide(const std::string& text) {
    zep_platform::refuseUnlessUtf8("a value of an emulation", text);
    return HostI18n::toWide(text);
}

} // namespace

HZEPEmulationXMLWriter::HZEPEmulationXMLWriter(HZEPEmulations* emulations, std::string path)
    : emulations_(emulations), path_(std::move(path)) {}

void HZEPEmulationXMLWriter::writeXml() {
    const ZEPEmulation::Root schema;
    ZEPEmulation::Root root;
    root.SetVersionMajor(schema.GetVersionMajor());
    root.SetVersionMinor(schema.GetVersionMinor());
    writeXml_(root);
    writeLmxFile(root, path_);
}

void HZEPEmulationXMLWriter::writeXml_(ZEPEmulation::Root& root) const {
    ZEPEmulation::Emulations& list = root.GetEmulations();
    for (const HZEPEmulation* source : emulations_->getEmulations()) {
        list.AppendEmulation();
        ZEPEmulation::Emulation& emulation = list.BackEmulation();
        emulation.SetName(wide(source->getName()));
        ZEPEmulation::Files& files = emulation.GetFiles();
        for (const HZEPEmulationFile* sourceFile : source->getFiles()) {
            files.AppendFile();
            ZEPEmulation::File& file = files.BackFile();
            file.SetType(wide(sourceFile->getType()));
            file.SetName(wide(sourceFile->getName()));
        }
    }
}
