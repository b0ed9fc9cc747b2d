// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "HostErrors.h"
#include "HostZipStreams.h"
#include "HostZipUpdate.h"

#include <exception>
#include <vector>

namespace hoststream::iostreams {

class zip_ostream::Buffer : public std::streambuf {
public:
    Buffer(const std::string& entry, const std::string& archive) : update_(archive), bytes_(64 << 10) {
        update_.begin(entry);
        setp(bytes_.data(), bytes_.data() + bytes_.size());
    }

    void close() {
        if (failure_)
            std::rethrow_exception(failure_);
        pass();
        update_.end();
        update_.commit();
    }

protected:
    int_type overflow(int_type c) override {
        if (failure_)
            return traits_type::eof();
        try {
            pass();
        } catch (const HostError&) {
            // The stream turns it into badbit; close() tells it.
            failure_ = std::current_exception();
            return traits_type::eof();
        }
        if (!traits_type::eq_int_type(c, traits_type::eof()))
            sputc(traits_type::to_char_type(c));
        return traits_type::not_eof(c);
    }

private:
    void pass() {
        update_.write(pbase(), static_cast<std::size_t>(pptr() - pbase()));
        setp(bytes_.data(), bytes_.data() + bytes_.size());
    }

    HostZipUpdate update_;
    std::vector<char> bytes_;
    std::exception_ptr failure_;
};

zip_ostream::zip_ostream(const std::string& entry, const std::string& archive, int)
    : std::ostream(nullptr), exceptions_(std::uncaught_exceptions()) {
    try {
        buffer_ = std::make_unique<Buffer>(entry, archive);
        rdbuf(buffer_.get());
    } catch (const HostError&) {
        setstate(std::ios_base::failbit);
    }
}

zip_ostream::~zip_ostream() {
    if (!buffer_ || !good() || std::uncaught_exceptions() > exceptions_)
        return;
    try {
        close();
    } catch (const std::exception&) {
        // Told to who calls close().
    }
}

bool zip_ostream::is_open() const {
    return buffer_ != nullptr;
}

void zip_ostream::close() {
    if (!buffer_)
        return;
    rdbuf(nullptr);
    const std::unique_ptr<Buffer> buffer = std::move(buffer_);
    buffer->close();
}

} // namespace hoststream::iostreams
