// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "HostZipStreams.h"

#include "HostErrors.h"
#include "HostFileUtils.h"
#include "HostZip.h"
#include "HostZipMember.h"

#include <optional>
#include <vector>

namespace hoststream::iostreams {

bool zip::is_file(const std::string& archive, const std::string& entry) {
    return !entry.ends_with('/') && HostZip::containsFile(archive, entry);
}

class zip_istream::Buffer : public std::streambuf {
public:
    Buffer(zip_istream& stream, const std::string& entry, const std::string& archive)
        : stream_(stream), member_(archive, entry, HostZip::kMaxUnpackedSize), bytes_(64 << 10) {}

protected:
    /// Damage ends the content here and in the stream's state: who reads the buffer itself gets no exception.
    int_type underflow() override {
        if (gptr() == egptr()) {
            const std::size_t got = fill();
            setg(bytes_.data(), bytes_.data(), bytes_.data() + got);
            if (got == 0)
                return traits_type::eof();
        }
        return traits_type::to_int_type(*gptr());
    }

private:
    std::size_t fill() {
        if (stream_.bad())
            return 0;
        try {
            return member_.read(bytes_.data(), bytes_.size());
        } catch (const HostError&) {
            stream_.setstate(std::ios_base::badbit);
            return 0;
        }
    }

    zip_istream& stream_;
    HostZipMember member_;
    std::vector<char> bytes_;
};

zip_istream::zip_istream(const std::string& entry, const std::string& archive, std::ios_base::openmode, int) : std::istream(nullptr) {
    try {
        buffer_ = std::make_unique<Buffer>(*this, entry, archive);
        rdbuf(buffer_.get());
    } catch (const HostError&) {
        setstate(std::ios_base::failbit);
    }
}

zip_istream::~zip_istream() = default;

bool zip_istream::is_open() const {
    return buffer_ != nullptr;
}

namespace device {

struct file_source::State {
    std::string text; // of a file, and how far it is read
    std::size_t next = 0;
    std::optional<HostZipMember> member;
};

file_source::file_source(const std::string& path, std::ios_base::openmode) : state_(std::make_shared<State>()) {
    state_->text = HostFileUtils::readFile(path);
}

file_source::file_source(const std::string& archive, const std::string& entry, std::ios_base::openmode)
    : state_(std::make_shared<State>()) {
    state_->member.emplace(archive, entry, HostZip::kMaxMemberSize);
}

std::streamsize file_source::read(char* buffer, std::streamsize size) {
    if (!state_ || size <= 0)
        return size == 0 ? 0 : -1;
    std::streamsize got = 0;
    if (state_->member) {
        while (const std::size_t step = got < size ? state_->member->read(buffer + got, static_cast<std::size_t>(size - got)) : 0)
            got += static_cast<std::streamsize>(step);
    } else {
        got = static_cast<std::streamsize>(state_->text.copy(buffer, static_cast<std::size_t>(size), state_->next));
        state_->next += static_cast<std::size_t>(got);
    }
    return got > 0 ? got : -1;
}

void file_source::close() {
    state_.reset();
}

} // namespace device

} // namespace hoststream::iostreams
