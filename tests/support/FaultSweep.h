// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "FaultPlan.h"

#include <functional>
#include <string>

/// A crash test of work that replaces one file: the work is run once to see the new file, and then with a fault at its first call, its
/// second, and so on until none is struck. Expected each time: the file is the old one or the new one, byte for byte, the new one when
/// the work succeeded; and nothing else is left in its folder; what killed processes leave is gone after the run that none is struck in.
class FaultSweep {
public:
    struct Count {
        unsigned struck; // calls that failed, or at which the process was killed
        unsigned old;    // of them, those that left the old file
    };

    /// The work raises when it fails. `check` looks at the file as each fault left it.
    FaultSweep(std::string file, std::function<void()> work, std::function<void()> check);

    /// Ends with the new file in place. The kinds are FaultPlan's.
    Count run(unsigned kinds, FaultPlan::Action action) const;

private:
    std::string file_;
    std::function<void()> work_;
    std::function<void()> check_;
};
