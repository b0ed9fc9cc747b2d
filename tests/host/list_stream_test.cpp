// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "HostErrors.h"
#include "HostXpStreams.h"
#include "HostZipStreams.h"
#include "PackText.h"
#include "TempDir.h"

#include <gtest/gtest.h>

#include <iterator>

namespace {

namespace streams = hoststream::iostreams;

std::string readAll(const std::string& path) {
    streams::filtering_stream stream;
    stream.push(streams::xp_autodetect());
    stream.push(streams::device::file_source(path, std::ios::binary));
    return std::string(std::istreambuf_iterator<char>(stream), {});
}

std::string incompressible(std::size_t size) {
    std::string text = "{";
    for (unsigned state = 1; text.size() < size; state = state * 1664525U + 1013904223U)
        text += static_cast<char>(' ' + (state >> 24) % 90);
    return text;
}

TEST(ListStream, HandsOnPlainTextAndUnpacks) {
    const TempDir dir;
    for (const std::string& text : {std::string("{}"), std::string("{") + std::string(300'000, 'a'), incompressible(100'000)}) {
        for (const std::string& bytes : {text, packText(text)}) {
            const std::string file = dir.write("list", bytes);
            EXPECT_TRUE(streams::xp::is_xp_format(file));
            EXPECT_EQ(readAll(file), text);
        }
    }
    for (const std::string bytes : {"", "  ", "words", "HZX", "HZXP\2\0\0\0aaaaaaaaa"}) {
        const std::string file = dir.write("list", bytes);
        EXPECT_FALSE(streams::xp::is_xp_format(file)) << bytes;
        EXPECT_EQ(readAll(file), bytes);
    }
    EXPECT_TRUE(streams::xp::is_xp_format(dir.write("list", "\xEF\xBB\xBF\n [1]")));
    EXPECT_FALSE(streams::xp::is_xp_format(dir.path()));
    EXPECT_FALSE(streams::xp::is_xp_format(dir.path("missing")));
}

TEST(ListStream, RefusesWhatIsDamagedOrTooLarge) {
    const TempDir dir;
    const std::string text = incompressible(50'000);
    const std::string packed = packText(text);
    const auto refused = [&](const std::string& bytes) { EXPECT_THROW(readAll(dir.write("list", bytes)), HostError) << bytes.size(); };
    for (const std::size_t size : {std::size_t{8}, std::size_t{15}, std::size_t{16}, packed.size() / 2, packed.size() - 1})
        refused(packed.substr(0, size));
    refused(packed + "x");
    for (const int change : {-1, 1}) {
        std::string lying = packed;
        lying[8] = static_cast<char>(lying[8] + change);
        refused(lying);
    }
    std::string damaged = packed;
    damaged[packed.size() / 2] ^= 1;
    refused(damaged);

    const std::string largest = "{" + std::string(streams::xp::kMaxSize - 1, ' ');
    EXPECT_EQ(readAll(dir.write("list", packText(largest))).size(), largest.size());
    EXPECT_EQ(readAll(dir.write("list", largest)).size(), largest.size());
    refused(packText(largest + " "));
    refused(largest + " ");
}

} // namespace
