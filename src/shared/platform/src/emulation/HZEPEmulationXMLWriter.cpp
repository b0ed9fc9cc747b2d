// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "HZEPEmulationXMLWriter.h"

#include "../formats/LmxFile.h"
#include "HZEPEmulations.h"
#include "HostI18n.h"
#include "ZEPEmulationLMX.h"

#include <utility>

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
        emulation.SetName(HostI18n::toWide(source->getName()));
        ZEPEmulation::Files& files = emulation.GetFiles();
        for (const HZEPEmulationFile* sourceFile : source->getFiles()) {
            files.AppendFile();
            ZEPEmulation::File& file = files.BackFile();
            file.SetType(HostI18n::toWide(sourceFile->getType()));
            file.SetName(HostI18n::toWide(sourceFile->getName()));
        }
    }
}
