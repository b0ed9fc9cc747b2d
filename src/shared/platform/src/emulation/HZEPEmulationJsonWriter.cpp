// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "HZEPEmulationJsonWriter.h"

#include "../foundations/CheckedDocument.h"
#include "HZEPEmulations.h"
#include "HostErrors.h"
#include "HostFileUtils.h"

#include <boost/property_tree/json_parser/error.hpp>
#include <boost/property_tree/ptree.hpp>

#include <utility>

using boost::property_tree::ptree;

namespace {

ptree& appendItem(ptree& list) {
    return list.push_back({"", ptree()})->second;
}

} // namespace

HZEPEmulationJsonWriter::HZEPEmulationJsonWriter(HZEPEmulations* emulations, std::string path)
    : emulations_(emulations), path_(std::move(path)) {}

void HZEPEmulationJsonWriter::writeJson() {
    ptree root;
    if (!emulations_->getPfmMetadataVersion().empty())
        root.put("pfm_metadata_version", emulations_->getPfmMetadataVersion());
    ptree& list = root.put_child("emulations", ptree());
    for (const HZEPEmulation* source : emulations_->getEmulations()) {
        ptree& emulation = appendItem(list);
        emulation.put("name", source->getName());
        ptree& files = emulation.put_child("files", ptree());
        for (const HZEPEmulationFile* sourceFile : source->getFiles()) {
            ptree& file = appendItem(files);
            file.put("type", sourceFile->getType());
            file.put("name", sourceFile->getName());
            if (!sourceFile->getInstPath().empty())
                file.put("inst_path", sourceFile->getInstPath());
        }
    }
    const std::string text = zep_platform::renderChecked(root);
    try {
        HostFileUtils::writeFileAtomically(path_, text);
    } catch (const HostError& error) {
        throw boost::property_tree::json_parser::json_parser_error(error.what(), path_, 0);
    }
}
