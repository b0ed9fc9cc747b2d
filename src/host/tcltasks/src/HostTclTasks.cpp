// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "HostTclTasks.h"

#include "HostErrors.h"
#include "ProcessState.h"
#include "TclExit.h"
#include "TclOutput.h"

#include <clocale>
#include <csignal>
#include <memory>
#include <mutex>

#include <unistd.h>

namespace {

/// Once a process. Tcl takes over the signal of broken pipes and the locale, which stay the host's.
void startTcl() {
    static std::once_flag once;
    std::call_once(once, [] {
        struct sigaction brokenPipe {};
        ::sigaction(SIGPIPE, nullptr, &brokenPipe);
        const std::string locale = std::setlocale(LC_ALL, nullptr);
        Tcl_FindExecutable(nullptr);
        std::setlocale(LC_ALL, locale.c_str());
        ::sigaction(SIGPIPE, &brokenPipe, nullptr);
    });
}

/// Gives back what Tcl keeps for a thread when the thread ends. That of the process is left to its end, since Tcl may be the host itself.
void watchThread() {
    struct End {
        ~End() {
            if (::gettid() != ::getpid())
                Tcl_FinalizeThread();
        }
    };
    static thread_local const End end;
    static_cast<void>(end);
}

struct DeleteInterpreter {
    void operator()(Tcl_Interp* interpreter) const { Tcl_DeleteInterp(interpreter); }
};
using Interpreter = std::unique_ptr<Tcl_Interp, DeleteInterpreter>;

void setLimit(Tcl_Interp* interpreter, std::chrono::seconds limit) {
    Tcl_Time end;
    Tcl_GetTime(&end);
    end.sec += static_cast<long>(limit.count());
    Tcl_LimitSetTime(interpreter, &end);
    Tcl_LimitTypeSet(interpreter, TCL_LIMIT_TIME);
}

/// `(file "x.tcl" line 3)`: the innermost place that the trace of the error tells.
std::string findPlace(Tcl_Interp* interpreter) {
    constexpr const char* kStart = "\n    (";
    const char* const trace = Tcl_GetVar(interpreter, "errorInfo", TCL_GLOBAL_ONLY);
    const std::string text = trace ? trace : "";
    for (std::size_t at = text.find(kStart); at != std::string::npos; at = text.find(kStart, at + 1)) {
        const std::string place = text.substr(at + 5, text.find('\n', at + 1) - at - 5);
        if ((place.starts_with("(file ") || place.starts_with("(procedure ")) && place.ends_with(')'))
            return place;
    }
    return "(line " + std::to_string(Tcl_GetErrorLine(interpreter)) + ")";
}

} // namespace

namespace host::tcltasks {

std::string task_manager::eval_in_tcl(const std::string& script, std::chrono::seconds timeLimit) {
    startTcl();
    watchThread();
    const ProcessState state;
    const TclOutput output;
    const Interpreter interpreter(Tcl_CreateInterp());
    if (Tcl_Init(interpreter.get()) != TCL_OK)
        throw HostError(std::string("Tcl: can't be started: ") + Tcl_GetStringResult(interpreter.get()));
    const TclExit exit(interpreter.get());
    setLimit(interpreter.get(), timeLimit);
    const int code = Tcl_EvalEx(interpreter.get(), script.data(), static_cast<int>(script.size()), TCL_EVAL_GLOBAL);
    if (exit.wasCalled())
        return "";
    if (Tcl_LimitTypeExceeded(interpreter.get(), TCL_LIMIT_TIME))
        throw HostError("Tcl: ended after " + std::to_string(timeLimit.count()) + " s, the longest that a script may take");
    const std::string result = Tcl_GetStringResult(interpreter.get());
    if (code != TCL_OK)
        throw HostError("Tcl: " + result + " " + findPlace(interpreter.get()));
    return result;
}

} // namespace host::tcltasks
