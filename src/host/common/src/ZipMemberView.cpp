// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "ZipMemberView.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <memory>
#include <string>

#include <unistd.h>

namespace {

// A local header with the longest name and additional field.
constexpr std::uint64_t kMaxLocalSize = 30 + 2 * 0xffff;
// Where the zip library looks for an end record: nothing of the member must lie there.
constexpr std::size_t kSearchedSize = 0xffff + 22 + 20;

struct View {
    int fd;
    std::uint64_t begin;   // in the file
    std::uint64_t span;    // bytes of the file; then come kSearchedSize zeros
    std::string tail = {}; // directory and end record
    std::uint64_t at = 0;
    zip_error_t error = {};

    std::uint64_t size() const { return span + kSearchedSize + tail.size(); }

    zip_int64_t read(char* buffer, std::uint64_t count) {
        count = std::min(count, size() - std::min(at, size()));
        for (std::uint64_t done = 0; done < count;) {
            const zip_int64_t step = readSome(buffer + done, count - done);
            if (step < 0)
                return -1;
            done += static_cast<std::uint64_t>(step);
            at += static_cast<std::uint64_t>(step);
        }
        return static_cast<zip_int64_t>(count);
    }

    zip_int64_t readSome(char* buffer, std::uint64_t count) {
        if (at >= span + kSearchedSize)
            return static_cast<zip_int64_t>(tail.copy(buffer, count, at - span - kSearchedSize));
        if (at >= span) {
            count = std::min(count, span + kSearchedSize - at);
            std::memset(buffer, 0, count);
            return static_cast<zip_int64_t>(count);
        }
        ssize_t got;
        do
            got = pread(fd, buffer, std::min(count, span - at), static_cast<off_t>(begin + at));
        while (got < 0 && errno == EINTR);
        if (got > 0)
            return got;
        zip_error_set(&error, got < 0 ? ZIP_ER_READ : ZIP_ER_EOF, got < 0 ? errno : 0);
        return -1;
    }

    zip_int64_t seek(void* data, std::uint64_t size) {
        const zip_int64_t to = zip_source_seek_compute_offset(at, this->size(), data, size, &error);
        if (to < 0)
            return -1;
        at = static_cast<std::uint64_t>(to);
        return 0;
    }
};

zip_int64_t answer(void* user, void* data, zip_uint64_t size, zip_source_cmd_t command) {
    auto* const view = static_cast<View*>(user);
    switch (command) {
    case ZIP_SOURCE_OPEN:
        view->at = 0;
        return 0;
    case ZIP_SOURCE_READ:
        return view->read(static_cast<char*>(data), size);
    case ZIP_SOURCE_CLOSE:
        return 0;
    case ZIP_SOURCE_STAT: {
        auto* const stat = static_cast<zip_stat_t*>(data);
        zip_stat_init(stat);
        stat->size = view->size();
        stat->valid = ZIP_STAT_SIZE;
        return sizeof *stat;
    }
    case ZIP_SOURCE_ERROR:
        return zip_error_to_data(&view->error, data, size);
    case ZIP_SOURCE_FREE:
        delete view;
        return 0;
    case ZIP_SOURCE_SEEK:
        return view->seek(data, size);
    case ZIP_SOURCE_TELL:
        return static_cast<zip_int64_t>(view->at);
    case ZIP_SOURCE_SUPPORTS:
        return zip_source_make_command_bitmap(ZIP_SOURCE_OPEN, ZIP_SOURCE_READ, ZIP_SOURCE_CLOSE, ZIP_SOURCE_STAT, ZIP_SOURCE_ERROR,
                                              ZIP_SOURCE_FREE, ZIP_SOURCE_SEEK, ZIP_SOURCE_TELL, ZIP_SOURCE_SUPPORTS, -1);
    default:
        zip_error_set(&view->error, ZIP_ER_OPNOTSUPP, 0);
        return -1;
    }
}

} // namespace

zip_t* openZipMember(int fd, std::uint64_t fileSize, const ZipMember& member, zip_error_t& error) {
    ZipMember alone = member;
    alone.name = "m";
    alone.extra.clear();
    alone.comment.clear();
    alone.offset = 0;
    const std::uint64_t begin = std::min(member.offset, fileSize);
    const std::uint64_t left = fileSize - begin;
    const std::uint64_t span = member.compressedSize < left - std::min(left, kMaxLocalSize) ? member.compressedSize + kMaxLocalSize : left;

    auto view = std::make_unique<View>(View{fd, begin, span});
    view->tail = ZipDirectory{{alone}, ""}.render(view->size());
    zip_error_init(&view->error);
    zip_source_t* const source = zip_source_function_create(answer, view.get(), &error);
    if (!source)
        return nullptr;
    static_cast<void>(view.release());
    zip_t* const zip = zip_open_from_source(source, ZIP_RDONLY, &error);
    if (!zip)
        zip_source_free(source);
    return zip;
}
