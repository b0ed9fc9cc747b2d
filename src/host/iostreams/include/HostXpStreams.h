// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "HostExport.h"

#include <boost/iostreams/categories.hpp>
#include <boost/iostreams/filtering_stream.hpp>
#include <boost/iostreams/read.hpp>

#include <cstdint>
#include <functional>
#include <ios>
#include <memory>
#include <string>

namespace hoststream::iostreams {

namespace xp {
/// Bytes that a file may come to, plain or unpacked: 64 MiB.
constexpr std::uint64_t kMaxSize = 64ULL << 20;

/// The file is JSON text (an object or a list, as far as its first character tells) or the packed form of a text. False for a file
/// that can't be read.
HOST_EXPORT bool is_xp_format(const std::string& path);
} // namespace xp

/// Boost.Iostreams input filter: hands on a plain file as it is, and unpacks a packed one. Reading raises HostError, which a stream
/// turns into badbit, for a packed file that is damaged, cut off or longer than it says, and for more than xp::kMaxSize bytes.
class HOST_EXPORT xp_autodetect {
public:
    using char_type = char;
    struct category : boost::iostreams::multichar_input_filter_tag {};

    xp_autodetect();

    template <class Source>
    std::streamsize read(Source& source, char* buffer, std::streamsize size) {
        return read_(buffer, size, [&source](char* part, std::streamsize length) { return boost::iostreams::read(source, part, length); });
    }

private:
    struct State;
    std::streamsize read_(char* buffer, std::streamsize size, const std::function<std::streamsize(char*, std::streamsize)>& source);
    std::shared_ptr<State> state_;
};

/// Filters are pushed first, the source last: stream.push(xp_autodetect()); stream.push(device::file_source(path, mode));
using filtering_stream = boost::iostreams::filtering_istream;

} // namespace hoststream::iostreams
