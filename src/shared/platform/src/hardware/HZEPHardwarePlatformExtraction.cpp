// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "HZEPHardwarePlatform.h"

#include "HZEPJSONText.h"
#include "HZEPJSONUtils.h"
#include "PlatformFileExtractor.h"
#include "PlatformVceprjFileExtractor.h"
#include "TemporaryFile.h"

#include <boost/property_tree/ptree.hpp>

namespace {

constexpr char kProjectMetadata[] = "vcearchive/druvel/vceprj_meta_data.json";

bool extractListed(const HZEPHardwarePlatform& platform, const char* fileKey, const std::string& outFile) {
    const std::string entry = platform.getFile(fileKey);
    return !entry.empty() && PlatformFileExtractor(platform).extract(entry, outFile);
}

} // namespace

bool HZEPHardwarePlatform::extractDrBdFile(const std::string& outFile) const {
    return extractListed(*this, "DR_BD", outFile);
}

bool HZEPHardwarePlatform::extractEmuXmlFile(const std::string& outFile) const {
    return extractListed(*this, "EMU_XML", outFile);
}

bool HZEPHardwarePlatform::extractEmuJsonFile(const std::string& outFile) const {
    return extractListed(*this, "EMU_JSON", outFile);
}

bool HZEPHardwarePlatform::extractNTSFile(const std::string& outFile) const {
    return PlatformVceprjFileExtractor(*this).extractListed("NOC_TRAFFIC", outFile);
}

bool HZEPHardwarePlatform::extractNCRFile(const std::string& outFile) const {
    return PlatformVceprjFileExtractor(*this).extractListed("NOC_SOLUTION", outFile);
}

bool HZEPHardwarePlatform::extractVCEPRJFile(const std::string& outFile) const {
    const PlatformVceprjFileExtractor extractor(*this);
    return HostFile::isRegularFile(outFile) || extractor.extractListed("VCEPRJ", outFile) || extractor.extractListed("ME_ARCHIVE", outFile);
}

bool HZEPHardwarePlatform::extractLARCHFile(const std::string& outFile) const {
    PlatformVceprjFileExtractor extractor(*this);
    return extractor.extractFromProject("vcearchive/druvel/logical_arch_vce.larch", outFile) ||
           extractor.extractListed("ME_LOGICAL_ARCH", outFile);
}

bool HZEPHardwarePlatform::extractINTFCSTFile(const std::string& outFile) const {
    PlatformVceprjFileExtractor extractor(*this);
    return extractor.extractFromProject("vcearchive/druvel/vce_interface.vceintfcst", outFile) ||
           extractor.extractListed("ME_CONSTRAINT", outFile);
}

bool HZEPHardwarePlatform::extractINTFSOLFile(const std::string& outFile) const {
    return PlatformVceprjFileExtractor(*this).extractFromProject("vcearchive/druvel/vce_interface.vceintfsol", outFile);
}

bool HZEPHardwarePlatform::extractVCECSTFile(const std::string& outFile) const {
    return PlatformVceprjFileExtractor(*this).extractFromProject("vcearchive/druvel/vce_constraints.vcecst", outFile);
}

bool HZEPHardwarePlatform::extractVCEMetadataFile(const std::string& outFile) const {
    return PlatformVceprjFileExtractor(*this).extractFromProject(kProjectMetadata, outFile);
}

std::string HZEPHardwarePlatform::getVCEPlInterfaceIDAsString() const {
    const TemporaryFile file("vceprj_meta_data.json");
    extractVCEMetadataFile(file.getPath());
    std::map<std::string, std::string> values;
    parseMetaData(file.getPath(), values);
    return values["VCE_PL_INTF_ID_STR"];
}

void HZEPHardwarePlatform::parseMetaData(const std::string& file, std::map<std::string, std::string>& map) {
    if (!HostFile::isRegularFile(file))
        return;
    boost::property_tree::ptree root;
    try {
        HZEPJSONText::readFile(file, root);
    } catch (const boost::property_tree::json_parser::json_parser_error&) {
        return;
    }
    if (const auto list = root.get_child_optional("MetaData"))
        for (const auto& [key, item] : *list)
            map[HZEPJSONUtils::getValue(item, "name")] = HZEPJSONUtils::getValue(item, "value");
}
