// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <sys/wait.h>
#include <unistd.h>

/// Does the work in a process forked off this one, for what a process settles once and for all; its answer comes back.
inline std::string inFreshProcess(const std::function<std::string()>& work) {
    int ends[2];
    if (::pipe(ends) != 0)
        return "no pipe";
    const pid_t child = ::fork();
    if (child == 0) {
        std::string answer;
        try {
            answer = work();
        } catch (const std::exception& error) {
            answer = std::string("raised: ") + error.what();
        }
        const bool isWritten = ::write(ends[1], answer.data(), answer.size()) == static_cast<ssize_t>(answer.size());
        ::_exit(isWritten ? 0 : 1);
    }
    ::close(ends[1]);
    std::string answer;
    char part[4096];
    for (ssize_t size; (size = ::read(ends[0], part, sizeof part)) > 0;)
        answer.append(part, static_cast<std::size_t>(size));
    ::close(ends[0]);
    int status = -1;
    ::waitpid(child, &status, 0);
    EXPECT_EQ(status, 0) << answer;
    return answer;
}
