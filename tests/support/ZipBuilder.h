// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

/// Writes archives from text, byte by byte and with no archive library, so that a test can also write what no library would:
///     ZipBuilder(dir.path("a.kar")).add("kar.json", text).addStored("logo.png", bytes).write();
class ZipBuilder {
public:
    enum Method : std::uint16_t { Stored = 0, Deflated = 8 };

    /// One member. What is set in an optional is announced in place of the truth, in the local header and in the directory;
    /// sizes above 4 GiB are announced in the 64-bit form.
    struct Member {
        std::string name;
        std::string content = {};
        Method method = Deflated;
        std::uint16_t flags = 0;          // bit 0: encrypted
        std::uint32_t unixMode = 0100644; // 0120777: a symbolic link, its target is the content
        std::optional<std::uint32_t> crc = {};
        std::optional<std::uint64_t> size = {};
        std::optional<std::uint64_t> compressedSize = {};
        std::optional<std::uint16_t> announcedMethod = {};
        std::optional<std::string> localName = {}; // name in the local header alone
        bool raw = false;                          // content is stored as given, already in its compressed form
    };

    ZipBuilder() = default;
    explicit ZipBuilder(std::string path) : path_(std::move(path)) {}

    /// Deflated. The same name may be added twice; a name with a trailing "/" and no content is a directory.
    ZipBuilder& add(const std::string& name, const std::string& content = "");
    ZipBuilder& addStored(const std::string& name, const std::string& content);
    ZipBuilder& add(Member member);
    ZipBuilder& setComment(const std::string& comment);

    /// The archive.
    std::string bytes() const;

    /// Writes the archive to the path given first and returns that path.
    std::string write() const;

private:
    std::string path_;
    std::string comment_;
    std::vector<Member> members_;
};
