// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "HostZipDigest.h"

#include "HostErrors.h"
#include "HostZip.h"
#include "HostZipArchive.h"
#include "HostZipUpdate.h"
#include "ZipFault.h"
#include "ZipRecord.h"

#include <algorithm>

namespace {

using namespace zip_digest;

constexpr std::size_t kFieldSize = 1 + 8 + 4 + std::tuple_size_v<Hash>;
// The longest 64-bit field, which goes beside ours.
constexpr std::size_t kWideFieldSize = 4 + 24;

std::string toHex(const Hash& hash) {
    std::string text;
    for (const unsigned char byte : hash) {
        text += "0123456789abcdef"[byte >> 4];
        text += "0123456789abcdef"[byte & 15];
    }
    return text;
}

std::string headOf(const std::string& name, std::uint64_t size) {
    std::string head;
    zip_record::put(head, name.size(), 8);
    head += name;
    zip_record::put(head, size, 8);
    return head;
}

/// By name, each one once; no more content than a call may read.
template <class Item>
void sortAndCheck(const std::string& archive, std::vector<Item>& items) {
    std::sort(items.begin(), items.end(), [](const Item& a, const Item& b) { return a.name < b.name; });
    // Names in different encodings may become one; the second member would go unseen.
    const auto twin = std::adjacent_find(items.begin(), items.end(), [](const Item& a, const Item& b) { return a.name == b.name; });
    if (twin != items.end())
        failMember(archive, twin->name, "there are two of this name");
    std::uint64_t total = 0;
    for (const Item& item : items) {
        if (item.name.ends_with('/') && item.size != 0)
            failMember(archive, item.name, "a folder with content");
        if (item.size > HostZip::kMaxTotalSize - total)
            failArchive(archive, "more than " + std::to_string(HostZip::kMaxTotalSize) + " bytes of content");
        total += item.size;
    }
}

void addContent(Sha256& digest, const ZipMemberReader::Source& archive, const ZipMember& member, const std::string& name) {
    if (!name.ends_with('/'))
        ZipMemberReader(archive, member, name, HostZip::kMaxUnpackedSize).forEachPiece([&](const char* data, std::size_t size) {
            digest.add(data, size);
        });
}

/// The revision whose stamp ends the comment there; 0 for none.
int findRevision(const std::string& label) {
    return label == kLabel1 ? 1 : label == kLabel2 ? 2 : 0;
}

} // namespace

zip_digest::Comment zip_digest::split(const std::string& comment) {
    static_assert(sizeof kLabel1 == sizeof kLabel2);
    constexpr std::size_t labelSize = sizeof kLabel1 - 1;
    if (comment.size() < labelSize + kHexSize)
        return {comment};
    const std::size_t start = comment.size() - labelSize - kHexSize;
    const int revision = findRevision(comment.substr(start, labelSize));
    const std::string digest = comment.substr(start + labelSize);
    const bool isLine = start == 0 || comment[start - 1] == '\n';
    if (!isLine || revision == 0 || digest.find_first_not_of("0123456789abcdef") != std::string::npos)
        return {comment};
    return {comment.substr(0, start == 0 ? 0 : start - 1), revision, digest};
}

std::string zip_digest::join(const std::string& text, const std::string& digest) {
    std::string comment = text + (text.empty() ? "" : "\n") + kLabel2 + digest;
    if (comment.size() > 0xffff)
        throw HostError("its comment leaves no room for the digest");
    return comment;
}

std::optional<zip_digest::Hash> zip_digest::getHash(const ZipMember& member) {
    zip_record::Reader extra(member.extra);
    while (extra.left() >= 4) {
        const std::uint16_t id = extra.u16();
        const std::size_t size = extra.u16();
        zip_record::Reader field(extra.text(size));
        if (id != kFieldId || field.left() != kFieldSize || field.number(1) != kFieldRevision)
            continue;
        if (field.u64() != member.size || field.u32() != member.crc32)
            continue;
        Hash hash;
        const std::string_view bytes = field.text(hash.size());
        std::copy(bytes.begin(), bytes.end(), hash.begin());
        return hash;
    }
    return std::nullopt;
}

void zip_digest::setHash(ZipMember& member, const Hash& hash) {
    dropHash(member);
    if (member.extra.size() + 4 + kFieldSize + kWideFieldSize > 0xffff)
        return;
    std::string field;
    zip_record::put(field, kFieldId, 2);
    zip_record::put(field, kFieldSize, 2);
    zip_record::put(field, kFieldRevision, 1);
    zip_record::put(field, member.size, 8);
    zip_record::put(field, member.crc32, 4);
    field.append(hash.begin(), hash.end());
    member.extra.insert(0, field);
}

void zip_digest::dropHash(ZipMember& member) {
    zip_record::Reader extra(member.extra);
    std::string kept;
    while (extra.left() >= 4) {
        const std::uint16_t id = extra.u16();
        const std::uint16_t size = extra.u16();
        const std::string_view field = extra.text(size);
        if (id == kFieldId)
            continue;
        zip_record::put(kept, id, 2);
        zip_record::put(kept, size, 2);
        kept += field;
    }
    kept += extra.text(extra.left());
    member.extra = std::move(kept);
}

std::string zip_digest::compute(const std::string& archive, std::vector<Entry> table) {
    sortAndCheck(archive, table);
    Sha256 digest;
    for (const Entry& entry : table) {
        digest.add(headOf(entry.name, entry.size));
        digest.add(reinterpret_cast<const char*>(entry.hash.data()), entry.hash.size());
    }
    return toHex(digest.finish());
}

zip_digest::Hash zip_digest::hashMember(const ZipMemberReader::Source& archive, const ZipMember& member, const std::string& name) {
    Sha256 digest;
    addContent(digest, archive, member, name);
    return digest.finish();
}

std::string zip_digest::compute(const HostZipArchive& archive, int revision) {
    struct Item {
        std::string name;
        std::uint64_t size;
        const ZipMember* member;
    };
    std::vector<Item> items;
    for (std::size_t i = 0; i < archive.getMembers().size(); ++i)
        items.push_back({archive.getName(i), archive.getMembers()[i].size, &archive.getMembers()[i]});
    sortAndCheck(archive.getPath(), items);
    Sha256 whole;
    for (const Item& item : items) {
        whole.add(headOf(item.name, item.size));
        if (revision == 1) {
            addContent(whole, archive.getSource(), *item.member, item.name);
        } else {
            const Hash hash = hashMember(archive.getSource(), *item.member, item.name);
            whole.add(reinterpret_cast<const char*>(hash.data()), hash.size());
        }
    }
    return toHex(whole.finish());
}

void HostZip::attachDigestEn(const std::string& archive) {
    HostZipUpdate update(archive);
    update.attachDigest();
    update.commit();
}

std::string HostZip::getDigest(const std::string& archive) {
    return split(HostZipArchive::openFresh(archive, HostZipArchive::Everything)->getDirectory().comment).digest;
}

HostZip::DigestState HostZip::checkDigest(const std::string& archive) {
    const auto open = HostZipArchive::openFresh(archive, HostZipArchive::Everything);
    const Comment stamp = split(open->getDirectory().comment);
    if (stamp.revision == 0)
        return NoDigest;
    return stamp.digest == compute(*open, stamp.revision) ? DigestMatches : DigestDiffers;
}

bool HostZip::verifyDigest(const std::string& archive) {
    return checkDigest(archive) == DigestMatches;
}
