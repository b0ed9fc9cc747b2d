// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>

/// A directory of one test's own, removed with all its content at the end of the object's life.
class TempDir {
public:
    TempDir() {
        std::string name = (std::filesystem::temp_directory_path() / "hzep-test-XXXXXX").string();
        if (!::mkdtemp(name.data()))
            throw std::runtime_error("cannot make a temporary directory " + name);
        path_ = std::filesystem::canonical(name).string();
    }
    ~TempDir() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    TempDir(const TempDir&) = delete;
    TempDir& operator=(const TempDir&) = delete;

    /// Canonical, without a trailing separator.
    const std::string& path() const { return path_; }

    /// The full path of a name below the directory; nothing is made.
    std::string path(const std::string& name) const { return path_ + "/" + name; }

    /// Writes a file, its directories made as needed, and returns its full path.
    std::string write(const std::string& name, const std::string& text) const {
        std::filesystem::path file = path(name);
        std::filesystem::create_directories(file.parent_path());
        std::ofstream out(file, std::ios::binary | std::ios::trunc);
        out.write(text.data(), static_cast<std::streamsize>(text.size()));
        out.close();
        if (!out)
            throw std::runtime_error("cannot write " + file.string());
        return file.string();
    }

    /// The text of a file below the directory; raises when there is none.
    std::string read(const std::string& name) const {
        std::ifstream in(path(name), std::ios::binary);
        if (!in)
            throw std::runtime_error("cannot read " + path(name));
        return {std::istreambuf_iterator<char>(in), {}};
    }

private:
    std::string path_;
};
