// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "HostMsgMgr.h"

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <string>

#include <unistd.h>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

/// Makes the process silent: readers tell of every broken input, which is what a fuzzer feeds them.
inline void silence() {
    static const bool once = [] {
        HostMsgMgr::getGlobal().setSink({});
        std::cout.rdbuf(nullptr);
        return true;
    }();
    (void)once;
}

/// One file of this process for readers that want a path; its content is replaced with each input.
class InputFile {
public:
    explicit InputFile(const std::string& suffix)
        : path_((std::filesystem::temp_directory_path() / ("hzep-fuzz-" + std::to_string(::getpid()) + suffix)).string()) {}
    ~InputFile() { std::remove(path_.c_str()); }
    InputFile(const InputFile&) = delete;
    InputFile& operator=(const InputFile&) = delete;

    const std::string& write(const std::uint8_t* data, std::size_t size) const {
        std::ofstream out(path_, std::ios::binary | std::ios::trunc);
        out.write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));
        out.close();
        if (!out)
            std::abort();
        return path_;
    }

private:
    std::string path_;
};
