// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include <functional>

/// Lets the n-th system call that changes a file fail, or kills the process there. A test that uses this stands in front of the C
/// library with its own write, fsync, rename and so on; the code under test knows nothing of it.
class FaultPlan {
public:
    enum Kind : unsigned { Write = 1, Sync = 2, Rename = 4, Close = 8, Open = 16, All = 31 };
    enum Action {
        Fail,    // the call answers an error; of a write, half of the bytes come first
        KillNow, // the process is killed before the call; of a write, half of the bytes come first
    };

    struct Outcome {
        bool reached;   // there was an n-th call
        bool succeeded; // the work came to its end without an exception
    };

    /// Runs the work in a child process with the fault at the n-th call (from 1) of the kinds. The child shares no memory: only what
    /// it leaves on disk is to be looked at.
    static Outcome run(unsigned kinds, unsigned n, Action action, const std::function<void()>& work);
};
