// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include <map>
#include <string>

/// Puts working directory and environment of the process back to what they were when this object was made.
class ProcessState {
public:
    ProcessState();
    ~ProcessState();
    ProcessState(const ProcessState&) = delete;
    ProcessState& operator=(const ProcessState&) = delete;

private:
    using Environment = std::map<std::string, std::string>;
    static Environment readEnvironment();

    int directory_;
    Environment environment_;
};
