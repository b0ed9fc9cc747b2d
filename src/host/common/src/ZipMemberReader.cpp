// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "ZipMemberReader.h"

#include "ZipDirectory.h"
#include "ZipFault.h"
#include "ZipMemberView.h"

#include <algorithm>

struct ZipMemberReader::State {
    Source source;
    std::string name;
    std::uint64_t size = 0;
    std::uint64_t done = 0;
    bool ended = false;
    zip_t* zip = nullptr;
    zip_file_t* file = nullptr;

    ~State() {
        if (file)
            zip_fclose(file);
        if (zip)
            zip_discard(zip);
    }

    [[noreturn]] void fail(const std::string& cause) const { failMember(source.archive, name, cause); }

    void open(const ZipMember& member) {
        zip_error_t error;
        zip_error_init(&error);
        zip = openZipMember(source.fd, source.size, member, error);
        const std::string cause = zip ? "" : zip_error_strerror(&error);
        zip_error_fini(&error);
        file = zip ? zip_fopen_index(zip, 0, 0) : nullptr;
        if (!file)
            fail("cannot be opened: " + (zip ? zip_strerror(zip) : cause));
    }

    std::size_t readSome(char* buffer, std::size_t count) {
        const zip_int64_t got = zip_fread(file, buffer, count);
        if (got < 0)
            fail(std::string("damaged: ") + zip_error_strerror(zip_file_get_error(file)));
        return static_cast<std::size_t>(got);
    }
};

std::string ZipMemberReader::getRefusal(const Source& source, const ZipMember& member, const std::string& name, std::uint64_t maxSize) {
    if (name.ends_with('/'))
        return "is a directory";
    if (member.isEncrypted())
        return "is encrypted; encrypted members are not supported";
    if (member.size > maxSize)
        return "announces " + std::to_string(member.size) + " bytes, more than the limit of " + std::to_string(maxSize);
    if (member.compressedSize > source.size)
        return "announces more compressed bytes than the archive holds";
    return "";
}

ZipMemberReader::ZipMemberReader(Source source, const ZipMember& member, const std::string& name, std::uint64_t maxSize)
    : state_(new State{std::move(source), name}) {
    State& s = *state_;
    if (const std::string refusal = getRefusal(s.source, member, name, maxSize); !refusal.empty())
        s.fail(refusal);
    s.size = member.size;
    const std::uint64_t room = s.source.size - std::min(member.offset, s.source.size);
    if (room - checkZipLocalHeader(s.source.fd, s.source.archive, member, room) < member.compressedSize)
        s.fail("damaged: the archive ends before it does");
    s.open(member);
}

ZipMemberReader::~ZipMemberReader() = default;
ZipMemberReader::ZipMemberReader(ZipMemberReader&&) noexcept = default;
ZipMemberReader& ZipMemberReader::operator=(ZipMemberReader&&) noexcept = default;

std::uint64_t ZipMemberReader::getSize() const {
    return state_->size;
}

std::size_t ZipMemberReader::read(char* buffer, std::size_t size) {
    State& s = *state_;
    if (size == 0 || s.ended)
        return 0;
    const auto wanted = static_cast<std::size_t>(std::min<std::uint64_t>(size, s.size - s.done));
    const std::size_t got = wanted > 0 ? s.readSome(buffer, wanted) : 0;
    s.done += got;
    if (got > 0)
        return got;
    if (s.done < s.size)
        s.fail("damaged: shorter than announced");
    // The checksum is compared when the library meets the end.
    char beyond;
    if (s.readSome(&beyond, 1) > 0)
        s.fail("damaged: longer than announced");
    s.ended = true;
    return 0;
}

std::string ZipMemberReader::readAll() {
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
