// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "HostZipUpdate.h"

#include "HostErrors.h"
#include "HostReplacement.h"
#include "HostZip.h"
#include "HostZipArchive.h"
#include "HostZipDigest.h"
#include "ZipDeflate.h"
#include "ZipDirectory.h"
#include "ZipFault.h"
#include "ZipFile.h"
#include "ZipName.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <map>
#include <optional>
#include <utility>
#include <vector>

#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr std::uint16_t kMadeByUnix = 3 << 8 | 20;
constexpr std::uint16_t kNeeded = 20;
constexpr std::uint16_t kUtf8Name = 1 << 11;
// The time that packed folders bear too: equal content gives equal archives.
constexpr std::uint16_t kDosDate = 1 << 5 | 1;
constexpr std::uint16_t kDosTime = 12 << 11;
constexpr std::size_t kKeptSize = 64 << 10;
constexpr std::size_t kFlushSize = 256 << 10;

HostFileIdentity identify(const ZipFile& file) {
    struct stat info {};
    if (fstat(file.get(), &info) != 0)
        file.fail("cannot be opened");
    return HostFileIdentity::of(info);
}

} // namespace

/// The new archive: new members first, as they come, then what stays of the old one in as few ranges as there are, then the directory.
struct HostZipUpdate::State {
    struct Slot {
        ZipMember member;
        bool isNew = false;
        bool isGone = false;
        std::optional<zip_digest::Hash> hash = {}; // of a new one
    };

    /// The new member being written.
    struct Writing {
        ZipMember member;
        std::uint64_t limit;
        bool wide;
        std::string kept; // the content, as long as it may be stored better than deflated
        std::string out;  // compressed, not yet in the file
        std::uint64_t at; // where `out` goes
        zip_digest::Sha256 hash;
    };

    /// The old archive, unless a new one is made, is read when nobody else can change it any more.
    State(const std::string& path, bool isNew)
        : archive(path), replacement(std::in_place, path),
          old(isNew ? nullptr : HostZipArchive::openFresh(path, HostZipArchive::Everything)),
          file(ZipFile::openTemporary(replacement->getTemporaryPath(), path)) {
        if (old)
            takeOver(old->getDirectory());
    }

    static std::unique_ptr<State> open(const std::string& path) {
        // What is no file is told before a file is made beside it.
        ZipFile::openArchive(path);
        return std::make_unique<State>(path, false);
    }

    void takeOver(const ZipDirectory& directory) {
        comment = directory.comment;
        position = directory.start;
        hasSoundTable = isTableSound(directory);
        slots.reserve(directory.members.size());
        for (const ZipMember& member : directory.members) {
            byName.emplace(old->getName(slots.size()), slots.size());
            slots.push_back({member});
        }
    }

    [[noreturn]] void fail(const std::string& entry, const std::string& cause) const { failMember(archive, entry, cause); }

    /// A change that fails is the last one: others may have the archive then.
    template <class Change>
    void change(const Change& change) {
        if (isBroken)
            failArchive(archive, "an earlier change of it failed");
        try {
            change();
        } catch (...) {
            giveUp();
            throw;
        }
        isChanged = true;
    }

    void giveUp() {
        isBroken = true;
        replacement.reset();
    }

    void begin(const std::string& entry, std::uint64_t announced) {
        if (writing)
            fail(entry, "begun before the one before was ended");
        if (const std::string fault = getNameFault(entry); !fault.empty())
            fail(entry, fault);
        drop(entry);
        writing.emplace();
        deflate.start();
        ZipMember& member = writing->member;
        member.name = entry;
        member.madeBy = kMadeByUnix;
        member.needed = kNeeded;
        if (std::any_of(entry.begin(), entry.end(), [](char c) { return static_cast<unsigned char>(c) >= 0x80; }))
            member.flags = kUtf8Name;
        member.method = ZipMember::kDeflated;
        member.time = kDosTime;
        member.date = kDosDate;
        member.externalAttributes = static_cast<std::uint32_t>(S_IFREG | 0644) << 16;
        member.offset = position;
        writing->wide = announced > kMaxStreamedSize;
        writing->limit = writing->wide ? UINT64_MAX : kMaxStreamedSize;
        writing->at = position + renderZipLocalHeader(member, writing->wide).size();
    }

    /// A member of this name that was written last is overwritten, so that changing one twice leaves nothing behind.
    void drop(const std::string& entry) {
        const auto found = byName.find(entry);
        if (found == byName.end())
            return;
        const Slot& slot = slots[found->second];
        if (slot.isNew && !slot.isGone && slot.member.end == position)
            position = slot.member.offset;
    }

    void write(const char* data, std::size_t size) {
        Writing& w = current();
        if (size > w.limit - deflate.getSize())
            fail(w.member.name, "is larger than " + std::to_string(w.limit) + " bytes");
        if (w.kept.size() + size <= kKeptSize && w.kept.size() == deflate.getSize())
            w.kept.append(data, size);
        w.hash.add(data, size);
        deflate.add(data, size, w.out);
        if (w.out.size() >= kFlushSize)
            flush(w);
    }

    void end() {
        Writing& w = current();
        deflate.finish(w.out);
        w.member.crc32 = deflate.getCrc32();
        w.member.size = deflate.getSize();
        w.member.compressedSize = deflate.getCompressedSize();
        if (w.kept.size() == w.member.size && w.member.size <= w.member.compressedSize) {
            w.member.method = ZipMember::kStored;
            w.member.compressedSize = w.member.size;
            w.out = w.kept;
        }
        flush(w);
        w.member.end = w.at;
        file.writeAt(w.member.offset, renderZipLocalHeader(w.member, w.wide));
        position = w.at;
        const auto [found, isAdded] = byName.emplace(w.member.name, slots.size());
        if (isAdded)
            slots.emplace_back();
        slots[found->second] = {std::move(w.member), true, false, w.hash.finish()};
        writing.reset();
    }

    void put(const std::string& entry, const std::string& content) {
        begin(entry, content.size());
        write(content.data(), content.size());
        end();
    }

    void putFile(const std::string& entry, const std::string& path) {
        const ZipFile source = ZipFile::openArchive(path);
        begin(entry, static_cast<std::uint64_t>(identify(source).size));
        std::string buffer(kFlushSize, '\0');
        for (;;) {
            const ssize_t got = ::read(source.get(), buffer.data(), buffer.size());
            if (got < 0 && errno == EINTR)
                continue;
            if (got < 0)
                source.fail("cannot be read");
            if (got == 0)
                break;
            write(buffer.data(), static_cast<std::size_t>(got));
        }
        end();
    }

    Slot* find(const std::string& entry) {
        const auto found = byName.find(entry);
        return found == byName.end() || slots[found->second].isGone ? nullptr : &slots[found->second];
    }

    bool remove(const std::string& entry) {
        Slot* const slot = find(entry);
        if (!slot)
            return false;
        drop(entry);
        slot->isGone = true;
        return true;
    }

    std::string read(const std::string& entry, std::uint64_t maxSize) {
        if (isBroken)
            failArchive(archive, "an earlier change of it failed");
        const Slot* const slot = find(entry);
        if (!slot)
            fail(entry, "no such member");
        const ZipMemberReader::Source source = slot->isNew ? ZipMemberReader::Source{file.get(), position, archive} : old->getSource();
        return ZipMemberReader(source, slot->member, entry, maxSize).readAll();
    }

    void commit() {
        if (writing)
            fail(writing->member.name, "not ended");
        ZipDirectory directory;
        comment = zip_digest::split(comment).text;
        if (wantsDigest)
            stamp();
        else
            for (Slot& slot : slots)
                zip_digest::dropHash(slot.member);
        copyKept();
        for (Slot& slot : slots)
            if (!slot.isGone)
                directory.members.push_back(std::move(slot.member));
        if (directory.members.size() > kMaxMembers)
            failArchive(archive, "more than " + std::to_string(kMaxMembers) + " members");
        directory.comment = comment;
        directory.shift = old ? old->getDirectory().shift : 0;
        const std::string bytes = directory.render(position);
        if (bytes.size() > kMaxDirectorySize)
            failArchive(archive, "its directory is larger than " + std::to_string(kMaxDirectorySize) + " bytes");
        file.writeAt(position, bytes);
        file.truncate(position + bytes.size());
        file.close();
        replacement->seal();
        // Only who knows of no locks could have done it.
        if (old && !(identify(ZipFile::openArchive(archive)) == old->getIdentity()))
            failArchive(archive, "changed by somebody else meanwhile");
        replacement->commit();
    }

private:
    Writing& current() {
        if (!writing)
            failArchive(archive, "no member was begun");
        return *writing;
    }

    void flush(Writing& w) {
        file.writeAt(w.at, w.out);
        w.at += w.out.size();
        w.out.clear();
    }

    /// With what stands in front of the members.
    void copyKept() {
        if (old)
            file.copyFrom(old->getDescriptor(), 0, 0, old->getDirectory().start);
        std::vector<ZipMember*> kept;
        for (Slot& slot : slots)
            if (!slot.isNew && !slot.isGone)
                kept.push_back(&slot.member);
        std::sort(kept.begin(), kept.end(), [](const ZipMember* a, const ZipMember* b) { return a->offset < b->offset; });
        for (std::size_t first = 0; first < kept.size();) {
            const std::uint64_t start = kept[first]->offset;
            std::uint64_t end = start;
            for (; first < kept.size() && kept[first]->offset == end; ++first) {
                end = kept[first]->end;
                kept[first]->offset += position - start;
            }
            file.copyFrom(old->getDescriptor(), start, position, end - start);
            position += end - start;
        }
    }

    /// The hashes beside the old members are those that the old stamp speaks of: no content has to be read to know them.
    bool isTableSound(const ZipDirectory& directory) const {
        const zip_digest::Comment stamped = zip_digest::split(directory.comment);
        if (stamped.revision != 2)
            return false;
        std::vector<zip_digest::Entry> table;
        for (const ZipMember& member : directory.members) {
            const auto hash = zip_digest::getHash(member);
            if (!hash)
                return false;
            table.push_back({getZipName(member), member.size, *hash});
        }
        try {
            return zip_digest::compute(archive, std::move(table)) == stamped.digest;
        } catch (const HostError&) {
            return false; // a table that nobody stamps
        }
    }

    /// Content is read only of members that no sound hash is known of.
    void stamp() {
        std::vector<zip_digest::Entry> table;
        std::uint64_t total = 0;
        for (Slot& slot : slots) {
            if (slot.isGone)
                continue;
            if (slot.member.size > HostZip::kMaxTotalSize - total)
                failArchive(archive, "more than " + std::to_string(HostZip::kMaxTotalSize) + " bytes of content");
            total += slot.member.size;
            const std::string name = getZipName(slot.member);
            if (!slot.hash && hasSoundTable)
                slot.hash = zip_digest::getHash(slot.member);
            if (!slot.hash)
                slot.hash = zip_digest::hashMember(old->getSource(), slot.member, name);
            zip_digest::setHash(slot.member, *slot.hash);
            table.push_back({name, slot.member.size, *slot.hash});
        }
        const std::string digest = zip_digest::compute(archive, std::move(table));
        try {
            comment = zip_digest::join(comment, digest);
        } catch (const HostError& error) {
            failArchive(archive, error.what());
        }
    }

public:
    std::string archive;
    std::optional<HostReplacement> replacement; // until all is done
    std::shared_ptr<HostZipArchive> old;
    std::string comment;
    ZipFile file;
    std::vector<Slot> slots;                   // in the order of the directory
    std::map<std::string, std::size_t> byName; // no hash that names could be made to collide in
    std::optional<Writing> writing;
    ZipDeflate deflate;
    std::uint64_t position = 0;
    bool hasSoundTable = false;
    bool wantsDigest = false;
    bool isChanged = false;
    bool isBroken = false;
};

HostZipUpdate::HostZipUpdate(const std::string& archive) : state_(State::open(archive)) {}
HostZipUpdate::HostZipUpdate(std::unique_ptr<State> state) : state_(std::move(state)) {}
HostZipUpdate::~HostZipUpdate() = default;

HostZipUpdate HostZipUpdate::create(const std::string& archive) {
    auto state = std::make_unique<State>(archive, true);
    state->isChanged = true;
    return HostZipUpdate(std::move(state));
}

std::string HostZipUpdate::getNameFault(const std::string& entry) {
    if (std::string fault = getZipPathFault(entry); !fault.empty())
        return fault;
    if (!HostText::isUtf8(entry))
        return "its name is no UTF-8";
    return entry.ends_with('/') ? "is the name of a folder" : "";
}

void HostZipUpdate::put(const std::string& entry, const std::string& content) {
    state_->change([&] { state_->put(entry, content); });
}

void HostZipUpdate::putFile(const std::string& entry, const std::string& path) {
    state_->change([&] { state_->putFile(entry, path); });
}

void HostZipUpdate::begin(const std::string& entry) {
    state_->change([&] { state_->begin(entry, 0); });
}

void HostZipUpdate::write(const char* data, std::size_t size) {
    state_->change([&] { state_->write(data, size); });
}

void HostZipUpdate::end() {
    state_->change([&] { state_->end(); });
}

bool HostZipUpdate::remove(const std::string& entry) {
    const bool wasChanged = state_->isChanged;
    bool removed = false;
    state_->change([&] { removed = state_->remove(entry); });
    state_->isChanged = wasChanged || removed;
    return removed;
}

std::string HostZipUpdate::read(const std::string& entry, std::uint64_t maxSize) const {
    return state_->read(entry, maxSize);
}

bool HostZipUpdate::contains(const std::string& entry) const {
    return state_->find(entry) != nullptr;
}

std::vector<std::string> HostZipUpdate::getEntryNames() const {
    std::vector<std::string> names;
    for (const State::Slot& slot : state_->slots)
        if (!slot.isGone)
            names.push_back(getZipName(slot.member));
    return names;
}

void HostZipUpdate::attachDigest() {
    state_->change([&] { state_->wantsDigest = true; });
}

void HostZipUpdate::commit() {
    if (state_->isChanged || state_->isBroken)
        state_->change([&] { state_->commit(); });
    state_->giveUp();
}
