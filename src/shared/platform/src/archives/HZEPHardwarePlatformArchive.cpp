// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "../formats/DsaJsonBusKeys.h"
#include "../foundations/CheckedDocument.h"
#include "HPLPlatform.h"
#include "HZEPDsaJsonReader.h"
#include "HostErrors.h"
#include "HostFile.h"
#include "HostFileUtils.h"
#include "HostText.h"
#include "HostZip.h"
#include "HostZipSession.h"
#include "HostZipStreams.h"
#include "HostZipUpdate.h"
#include "JSONObjectWriter.h"

#include <map>
#include <optional>

namespace {

/// Nested objects are read back into dotted names up to a length only; the rest would become a parameter of its own without a value.
void refuseLongNames(const HPLPlatform& platform) {
    std::size_t place = 0;
    for (const HZEPDesignIPInstance* instance : platform.getDesignIPInstances()) {
        std::map<std::string, std::string> parameters;
        instance->getConfigParamMap(parameters);
        for (const auto& [name, value] : parameters)
            if (const std::size_t point = name.rfind('.'); point != name.npos && point >= dsa_json::kMaxNestedName) {
                const std::string key = "designIpInstances[" + std::to_string(place) + "].configuration";
                const std::string cause = "the name of a parameter has a \".\" behind its first " +
                                          std::to_string(dsa_json::kMaxNestedName) + " bytes: \"" +
                                          HostText::makePrintable(name.substr(0, 40)) + "...\"";
                throw HostDataException(key + ": " + cause, {"", key, 0, 0, cause});
            }
        ++place;
    }
}

/// The text of the JSON metadata. A document that can't be written, or not be read then, raises before any archive is touched.
std::string renderDocument(const HPLPlatform& platform) {
    refuseLongNames(platform);
    zep_platform::JSONObjectWriter writer;
    platform.toJSON(writer);
    return zep_platform::renderChecked(writer,
                                       [](const std::string& text) {
                                           HPLPlatform again;
                                           HZEPDsaJsonReader(&again).parseJsonString(text);
                                       }) +
           '\n';
}

HPLPlatform& asPlatform(HZEPHardwarePlatform& platform, const std::string& operation) {
    auto* const whole = dynamic_cast<HPLPlatform*>(&platform);
    if (!whole)
        throw HostAlgException(operation + "Could not cast this to HPLPlatform");
    return *whole;
}

/// Keeps a text changed for the life of this object.
class Lent {
public:
    Lent(std::string& text, const std::string& value) : text_(text) { text_ = value; }
    ~Lent() { text_.clear(); }
    Lent(const Lent&) = delete;
    Lent& operator=(const Lent&) = delete;

private:
    std::string& text_;
};

} // namespace

void HZEPHardwarePlatform::archiveFile(const std::string& fileType, const std::string& entryName, const std::string& sourceFile) {
    const std::string operation = "HZEPHardwarePlatform::archiveFile() - ";
    const std::string archive = getPlatformFile();
    const std::string jsonEntry = getJsonFileName();
    if (archive.empty())
        throw HostAlgException(operation + "karFile is not set");
    if (jsonEntry.empty())
        throw HostAlgException(operation + "jsonFile is not set");
    if (!HostFile::isRegularFile(archive))
        throw HostAlgException(operation + "karFile does not exist");
    // Before the document: what it tells of other members can't change any more.
    std::optional<HostZipUpdate> update;
    HostFault fault{archive, entryName, 0, 0, HostZipUpdate::getNameFault(entryName)};
    try {
        update.emplace(archive);
    } catch (const HostError& error) {
        fault = error.getFault(); // told below, with a name that it would refuse
        fault.cause = fault.cause.empty() ? error.what() : fault.cause;
    }
    const std::string document = renderWith_(operation, fileType, entryName, sourceFile);
    if (!fault.cause.empty())
        throw HostUserException(operation + "Could not open file for streaming: " + archive, fault);
    update->putFile(entryName, sourceFile);
    update->put(jsonEntry, document);
    // Last: the digest covers the new metadata.
    update->attachDigest();
    update->commit();
}

std::string HZEPHardwarePlatform::renderWith_(const std::string& operation, const std::string& fileType, const std::string& entryName,
                                              const std::string& sourceFile) {
    HPLPlatform& platform = asPlatform(*this, operation);
    platform.removeFileType(fileType);
    platform.addFile(fileType, entryName);
    if (!HostFileUtils::isReadable(sourceFile))
        throw HostUserException(operation + "Could not open file for reading: " + sourceFile);
    // The document may tell what stands in the very file that goes into the archive with it.
    const Lent entryToCome(entryToCome_, entryName);
    const Lent sourceToCome(sourceToCome_, sourceFile);
    return renderDocument(platform);
}

void HZEPHardwarePlatform::writeToJSON() {
    const std::string operation = "HZEPHardwarePlatform::writeToJSON() - ";
    const std::string archive = getPlatformFile();
    const std::string jsonEntry = getJsonFileName();
    if (archive.empty() || jsonEntry.empty())
        return;
    const std::string document = renderDocument(asPlatform(*this, operation));
    hoststream::iostreams::zip_ostream out(jsonEntry, archive, 0);
    if (!out.is_open())
        throw HostUserException(operation + "Could not open file for streaming: " + jsonEntry);
    out << document;
    out.close();
}

void HZEPHardwarePlatform::attachDigest() const {
    HostZip::attachDigestEn(getPlatformFile());
}

std::string HZEPHardwarePlatform::readEntry_(const std::string& entry) const {
    if (!sourceToCome_.empty() && entry == entryToCome_)
        return HostFileUtils::readFile(sourceToCome_, HostZip::kMaxMetadataSize);
    const std::string archive = getPlatformFile();
    const HostZipSession session(archive);
    return HostZip::containsFile(archive, entry) ? HostZip::readMember(archive, entry, HostZip::kMaxMetadataSize) : "";
}
