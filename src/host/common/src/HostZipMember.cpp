// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "HostZipMember.h"

#include "HostErrors.h"
#include "HostZip.h"
#include "HostZipArchive.h"
#include "ZipMemberView.h"

#include <algorithm>

struct HostZipMember::State {
    std::shared_ptr<HostZipArchive> archive;
    std::string entry;
    zip_t* zip = nullptr;
    zip_file_t* file = nullptr;
    std::uint64_t size = 0;
    std::uint64_t done = 0;
    bool ended = false;

    ~State() {
        if (file)
            zip_fclose(file);
        if (zip)
            zip_discard(zip);
    }

    void open(const ZipMember& member) {
        zip_error_t error;
        zip_error_init(&error);
        zip = openZipMember(archive->getDescriptor(), static_cast<std::uint64_t>(archive->getIdentity().size), member, error);
        const std::string cause = zip ? "" : zip_error_strerror(&error);
        zip_error_fini(&error);
        file = zip ? zip_fopen_index(zip, 0, 0) : nullptr;
        if (!file)
            archive->fail(entry, "cannot be opened: " + (zip ? zip_strerror(zip) : cause));
    }

    std::size_t readSome(char* buffer, std::size_t count) {
        const zip_int64_t got = zip_fread(file, buffer, count);
        if (got < 0)
            archive->fail(entry, std::string("damaged: ") + zip_error_strerror(zip_file_get_error(file)));
        return static_cast<std::size_t>(got);
    }
};

HostZipMember::HostZipMember(const std::string& archive, const std::string& entry, std::uint64_t maxSize) : state_(new State) {
    State& s = *state_;
    s.archive = HostZipArchive::open(archive);
    s.entry = entry;
    const auto index = s.archive->find(entry);
    if (!index)
        s.archive->fail(entry, "no such member");
    if (const std::string refusal = s.archive->getRefusal(*index, maxSize); !refusal.empty())
        s.archive->fail(entry, refusal);
    const ZipMember& member = s.archive->getMembers()[*index];
    s.size = member.size;
    s.open(member);
}

HostZipMember::~HostZipMember() = default;
HostZipMember::HostZipMember(HostZipMember&&) noexcept = default;
HostZipMember& HostZipMember::operator=(HostZipMember&&) noexcept = default;

std::uint64_t HostZipMember::getSize() const {
    return state_->size;
}

std::size_t HostZipMember::read(char* buffer, std::size_t size) {
    State& s = *state_;
    if (size == 0 || s.ended)
        return 0;
    const auto wanted = static_cast<std::size_t>(std::min<std::uint64_t>(size, s.size - s.done));
    const std::size_t got = wanted > 0 ? s.readSome(buffer, wanted) : 0;
    s.done += got;
    if (got > 0)
        return got;
    if (s.done < s.size)
        s.archive->fail(s.entry, "damaged: shorter than announced");
    // The checksum is compared when the library meets the end.
    char beyond;
    if (s.readSome(&beyond, 1) > 0)
        s.archive->fail(s.entry, "damaged: longer than announced");
    s.ended = true;
    return 0;
}

std::string HostZipMember::readAll() {
    // Memory follows the bytes that really come, so that an announced size alone takes little.
    constexpr std::uint64_t kFirstStep = 8ULL << 20;
    std::string text;
    std::size_t done = 0;
    do {
        if (done == text.size())
            text.resize(static_cast<std::size_t>(std::min(getSize(), std::max<std::uint64_t>(2ULL * done, kFirstStep))));
        const std::size_t got = read(text.data() + done, text.size() - done);
        if (got == 0)
            break;
        done += got;
    } while (done < getSize());
    char end;
    read(&end, 1);
    return text;
}
