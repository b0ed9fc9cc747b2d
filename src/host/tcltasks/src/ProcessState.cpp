// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "ProcessState.h"

#include <cstdlib>

#include <fcntl.h>
#include <unistd.h>

ProcessState::ProcessState() : directory_(::open(".", O_PATH | O_DIRECTORY | O_CLOEXEC)), environment_(readEnvironment()) {}

ProcessState::~ProcessState() {
    if (directory_ >= 0) {
        // A directory that was removed meanwhile can still be entered; there is nothing to do about any other failure.
        [[maybe_unused]] const int status = ::fchdir(directory_);
        ::close(directory_);
    }
    const Environment now = readEnvironment();
    for (const auto& [name, value] : now)
        if (!environment_.contains(name))
            ::unsetenv(name.c_str());
    for (const auto& [name, value] : environment_)
        if (const auto found = now.find(name); found == now.end() || found->second != value)
            ::setenv(name.c_str(), value.c_str(), 1);
}

ProcessState::Environment ProcessState::readEnvironment() {
    Environment environment;
    for (char** entry = environ; entry && *entry; ++entry) {
        const std::string text = *entry;
        if (const std::size_t sign = text.find('='); sign != std::string::npos && sign > 0)
            environment.emplace(text.substr(0, sign), text.substr(sign + 1));
    }
    return environment;
}
