// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "HPLPlatform.h"
#include "HostErrors.h"
#include "HostFile.h"
#include "HostFileUtils.h"
#include "HostZip.h"
#include "HostZipSession.h"
#include "HostZipStreams.h"
#include "HostZipUpdate.h"
#include "JSONObjectWriter.h"

#include <optional>
#include <sstream>

namespace {

/// The text of the JSON metadata. A document that can't be written raises before any archive is touched.
std::string renderDocument(const HPLPlatform& platform) {
    zep_platform::JSONObjectWriter writer;
    platform.toJSON(writer);
    std::ostringstream text;
    writer.write(text);
    text << '\n';
    return text.str();
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
    HPLPlatform& platform = asPlatform(*this, operation);
    platform.removeFileType(fileType);
    platform.addFile(fileType, entryName);

    if (!HostFileUtils::isReadable(sourceFile))
        throw HostUserException(operation + "Could not open file for reading: " + sourceFile);
    // The document may tell what stands in the very file that goes into the archive with it.
    const Lent entryToCome(entryToCome_, entryName);
    const Lent sourceToCome(sourceToCome_, sourceFile);
    // Before the document: what it tells of other members can't change any more.
    std::optional<HostZipUpdate> update;
    HostFault fault{archive, entryName, 0, 0, HostZipUpdate::getNameFault(entryName)};
    try {
        update.emplace(archive);
    } catch (const HostError& error) {
        fault = error.getFault(); // told below, with a name that it would refuse
        fault.cause = fault.cause.empty() ? error.what() : fault.cause;
    }
    const std::string document = renderDocument(platform);
    if (!fault.cause.empty())
        throw HostUserException(operation + "Could not open file for streaming: " + archive, fault);
    update->putFile(entryName, sourceFile);
    update->put(jsonEntry, document);
    // Last: the digest covers the new metadata.
    update->attachDigest();
    update->commit();
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
