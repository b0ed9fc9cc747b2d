// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "HostZipDigest.h"

#include "HostErrors.h"
#include "HostZip.h"
#include "HostZipMember.h"
#include "HostZipSession.h"
#include "HostZipUpdate.h"
#include "ZipDirectory.h"
#include "ZipFile.h"
#include "ZipRecord.h"

#include <algorithm>
#include <memory>
#include <vector>

#include <openssl/evp.h>

namespace {

class Sha256 {
public:
    Sha256() : context_(EVP_MD_CTX_new(), EVP_MD_CTX_free) { check(context_ && EVP_DigestInit_ex(context_.get(), EVP_sha256(), nullptr)); }

    void add(const char* data, std::size_t size) { check(EVP_DigestUpdate(context_.get(), data, size)); }

    std::string hex() {
        unsigned char bytes[EVP_MAX_MD_SIZE];
        unsigned size = 0;
        check(EVP_DigestFinal_ex(context_.get(), bytes, &size));
        std::string text;
        for (unsigned i = 0; i < size; ++i) {
            text += "0123456789abcdef"[bytes[i] >> 4];
            text += "0123456789abcdef"[bytes[i] & 15];
        }
        return text;
    }

private:
    static void check(int ok) {
        if (!ok)
            throw HostError("the digest SHA-256 is not available");
    }

    std::unique_ptr<EVP_MD_CTX, void (*)(EVP_MD_CTX*)> context_;
};

ZipDirectory readDirectory(const std::string& archive) {
    return ZipDirectory::read(ZipFile::openArchive(archive).get(), archive);
}

} // namespace

zip_digest::Comment zip_digest::split(const std::string& comment) {
    const std::size_t labelSize = sizeof kLabel - 1;
    if (comment.size() < labelSize + kHexSize)
        return {comment, ""};
    const std::size_t start = comment.size() - labelSize - kHexSize;
    const std::string digest = comment.substr(start + labelSize);
    const bool isLine = start == 0 || comment[start - 1] == '\n';
    if (!isLine || comment.compare(start, labelSize, kLabel) != 0 || digest.find_first_not_of("0123456789abcdef") != std::string::npos)
        return {comment, ""};
    return {comment.substr(0, start == 0 ? 0 : start - 1), digest};
}

std::string zip_digest::join(const std::string& text, const std::string& digest) {
    std::string comment = text + (text.empty() ? "" : "\n") + kLabel + digest;
    if (comment.size() > 0xffff)
        throw HostError("its comment leaves no room for the digest");
    return comment;
}

std::string zip_digest::compute(const std::string& archive) {
    readDirectory(archive);
    const HostZipSession session(archive);
    std::vector<HostZipEntry> entries = HostZip::getEntries(archive);
    std::sort(entries.begin(), entries.end(), [](const HostZipEntry& a, const HostZipEntry& b) { return a.name < b.name; });
    Sha256 digest;
    std::vector<char> buffer(256 << 10);
    const std::string* before = nullptr;
    for (const HostZipEntry& entry : entries) {
        // Names in different encodings may become one; the second member would go unseen.
        if (before && *before == entry.name)
            throw HostError(archive + ": " + entry.name + ": there are two of this name");
        before = &entry.name;
        std::string head;
        zip_record::put(head, entry.name.size(), 8);
        head += entry.name;
        zip_record::put(head, entry.size, 8);
        digest.add(head.data(), head.size());
        if (entry.isDirectory) {
            if (entry.size != 0)
                throw HostError(archive + ": " + entry.name + ": a folder with content");
            continue;
        }
        HostZipMember member(archive, entry.name, HostZip::kMaxUnpackedSize);
        while (const std::size_t got = member.read(buffer.data(), buffer.size()))
            digest.add(buffer.data(), got);
    }
    return digest.hex();
}

void HostZip::attachDigestEn(const std::string& archive) {
    HostZipUpdate update(archive);
    update.attachDigest();
    update.commit();
}

std::string HostZip::getDigest(const std::string& archive) {
    return zip_digest::split(readDirectory(archive).comment).digest;
}

bool HostZip::verifyDigest(const std::string& archive) {
    const std::string digest = getDigest(archive);
    return !digest.empty() && digest == zip_digest::compute(archive);
}
