// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "FuzzInput.h"
#include "HostErrors.h"
#include "HostXpStreams.h"
#include "PackText.h"

#include <boost/iostreams/device/array.hpp>

#include <iterator>
#include <optional>

namespace {

/// Nothing when the bytes are refused.
std::optional<std::string> readAll(const std::string& bytes) {
    try {
        hoststream::iostreams::filtering_stream stream;
        stream.push(hoststream::iostreams::xp_autodetect());
        stream.push(boost::iostreams::array_source(bytes.data(), bytes.size()));
        return std::string(std::istreambuf_iterator<char>(stream), {});
    } catch (const HostError&) {
        return std::nullopt;
    }
}

} // namespace

// What was packed comes back; one changed byte behind the mark changes nothing or is refused.
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    silence();
    const std::string text(data, data + size);
    readAll(text);
    std::string packed = packText(text);
    if (readAll(packed) != text)
        std::abort();
    constexpr std::size_t mark = 8;
    const std::size_t at = mark + std::hash<std::string>()(text) % (packed.size() - mark);
    packed[at] = static_cast<char>(packed[at] ^ (1 + at % 255));
    const auto damaged = readAll(packed);
    if (damaged && *damaged != text)
        std::abort();
    return 0;
}
