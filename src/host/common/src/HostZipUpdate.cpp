// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "HostZipUpdate.h"

#include "HostErrors.h"
#include "HostReplacement.h"
#include "HostZipArchive.h"
#include "HostZipDigest.h"
#include "ZipDeflate.h"
#include "ZipDirectory.h"
#include "ZipFile.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <optional>
#include <unordered_map>
#include <utility>
#include <vector>

#include <sys/stat.h>
#include <unistd.h>
#include <zip.h>

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
    };

    /// The new member being written.
    struct Writing {
        ZipMember member;
        std::uint64_t limit;
        bool wide;
        std::string kept; // the content, as long as it may be stored better than deflated
        std::string out;  // compressed, not yet in the file
        std::uint64_t at; // where `out` goes
    };

    explicit State(const std::string& path) : State(path, ZipFile::openArchive(path)) {}

    /// Without an old archive a new one is made.
    State(const std::string& path, std::optional<ZipFile> oldFile)
        : archive(path), old(std::move(oldFile)), identity(old ? identify(*old) : HostFileIdentity()),
          directory(old ? ZipDirectory::read(old->get(), path) : ZipDirectory()), replacement(path),
          file(ZipFile::openTemporary(replacement.getTemporaryPath(), path)) {
        slots.reserve(directory.members.size());
        for (ZipMember& member : directory.members) {
            byName.emplace(member.name, slots.size());
            slots.push_back({std::move(member)});
        }
        directory.members.clear();
    }

    [[noreturn]] void fail(const std::string& entry, const std::string& cause) const {
        throw HostError(archive + ": " + getPrintableZipName(entry) + ": " + cause);
    }

    /// Until the change has succeeded no other one is let in.
    template <class Change>
    void change(const Change& change) {
        if (std::exchange(isBroken, true))
            throw HostError(archive + ": an earlier change of it failed");
        change();
        isBroken = false;
        isChanged = true;
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
        member.method = ZIP_CM_DEFLATE;
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
            w.member.method = ZIP_CM_STORE;
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
        slots[found->second] = {std::move(w.member), true, false};
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

    bool remove(const std::string& entry) {
        const auto found = byName.find(entry);
        if (found == byName.end() || slots[found->second].isGone)
            return false;
        drop(entry);
        slots[found->second].isGone = true;
        return true;
    }

    void commit() {
        if (writing)
            fail(writing->member.name, "not ended");
        copyKept();
        const zip_digest::Comment comment = zip_digest::split(directory.comment);
        directory.comment = comment.text;
        if (wantsDigest)
            directory.comment = withDigest(comment.text, std::string(zip_digest::kHexSize, '0'));
        for (Slot& slot : slots)
            if (!slot.isGone)
                directory.members.push_back(std::move(slot.member));
        if (directory.members.size() > kMaxMembers)
            throw HostError(archive + ": more than " + std::to_string(kMaxMembers) + " members");
        const std::string bytes = directory.render(position);
        if (bytes.size() > kMaxDirectorySize)
            throw HostError(archive + ": its directory is larger than " + std::to_string(kMaxDirectorySize) + " bytes");
        file.writeAt(position, bytes);
        const std::uint64_t size = position + bytes.size();
        file.truncate(size);
        if (wantsDigest)
            file.writeAt(size - zip_digest::kHexSize, computeDigest());
        file.close();
        if (old && !(identify(ZipFile::openArchive(archive)) == identity))
            throw HostError(archive + ": changed by somebody else meanwhile");
        replacement.commit();
    }

private:
    Writing& current() {
        if (!writing)
            throw HostError(archive + ": no member was begun");
        return *writing;
    }

    void flush(Writing& w) {
        file.writeAt(w.at, w.out);
        w.at += w.out.size();
        w.out.clear();
    }

    void copyKept() {
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
            file.copyFrom(*old, start, position, end - start);
            position += end - start;
        }
    }

    std::string withDigest(const std::string& text, const std::string& digest) const {
        try {
            return zip_digest::join(text, digest);
        } catch (const HostError& error) {
            throw HostError(archive + ": " + error.what());
        }
    }

    std::string computeDigest() const {
        const std::string& temporary = replacement.getTemporaryPath();
        try {
            return zip_digest::compute(temporary);
        } catch (const HostError& error) {
            // The fault lies in what the archive will be; its user does not know the temporary file.
            const std::string text = error.what();
            throw HostError(text.starts_with(temporary) ? archive + text.substr(temporary.size()) : text);
        }
    }

public:
    std::string archive;
    std::optional<ZipFile> old;
    HostFileIdentity identity;
    ZipDirectory directory;
    HostReplacement replacement;
    ZipFile file;
    std::vector<Slot> slots; // in the order of the directory
    std::unordered_map<std::string, std::size_t> byName;
    std::optional<Writing> writing;
    ZipDeflate deflate;
    std::uint64_t position = 0;
    bool wantsDigest = false;
    bool isChanged = false;
    bool isBroken = false;
};

HostZipUpdate::HostZipUpdate(const std::string& archive) : state_(new State(archive)) {}
HostZipUpdate::HostZipUpdate(std::unique_ptr<State> state) : state_(std::move(state)) {}
HostZipUpdate::~HostZipUpdate() = default;

HostZipUpdate HostZipUpdate::create(const std::string& archive) {
    auto state = std::make_unique<State>(archive, std::nullopt);
    state->isChanged = true;
    return HostZipUpdate(std::move(state));
}

std::string HostZipUpdate::getNameFault(const std::string& entry) {
    if (const char* fault = getZipNameFault(entry))
        return fault;
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

void HostZipUpdate::attachDigest() {
    state_->change([&] { state_->wantsDigest = true; });
}

void HostZipUpdate::commit() {
    if (!state_->isChanged && !state_->isBroken)
        return;
    state_->change([&] { state_->commit(); });
    state_->isBroken = true;
}
