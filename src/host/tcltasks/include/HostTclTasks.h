// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "HostExport.h"

#include <chrono>
#include <string>

namespace host::tcltasks {

/// Runs scripts in Tcl on the calling thread.
class HOST_EXPORT task_manager {
public:
    /// Longest that one evaluation takes unless told otherwise. A build of a large design takes hours, an endless loop longer.
    static constexpr std::chrono::seconds kTimeLimit = std::chrono::hours(8);

    /// The script's result; "" when it called exit, which ends the evaluation alone. Nothing is left for a later evaluation: each one has
    /// a new interpreter, and finds the working directory and the environment as they were. "puts" writes to std::cout. The command is
    /// recorded nowhere. Raises HostError with Tcl's message and the file or procedure with the line; also when the time is over, for
    /// which a program that the script waits for is not interrupted.
    static std::string eval_in_tcl(const std::string& script, std::chrono::seconds timeLimit = kTimeLimit);
};

} // namespace host::tcltasks
