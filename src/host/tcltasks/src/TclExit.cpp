// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "TclExit.h"

#include <cstring>

TclExit::TclExit(Tcl_Interp* interpreter) : root_(interpreter) {
    Tcl_GetCommandInfo(interpreter, "interp", &interp_);
    install(interpreter);
}

void TclExit::install(Tcl_Interp* interpreter) {
    // A safe interpreter has its "exit" hidden, from where its maker can still call it.
    const bool isSafe = Tcl_IsSafe(interpreter) != 0;
    if (isSafe)
        Tcl_ExposeCommand(interpreter, "exit", "exit");
    Tcl_CreateObjCommand(interpreter, "exit", &exitCommand, this, nullptr);
    if (isSafe)
        Tcl_HideCommand(interpreter, "exit", "exit");
    Tcl_CreateObjCommand(interpreter, "interp", &interpCommand, this, nullptr);
}

int TclExit::exitCommand(ClientData self, Tcl_Interp* interpreter, int count, Tcl_Obj* const words[]) {
    int status = 0;
    if (count > 2) {
        Tcl_WrongNumArgs(interpreter, 1, words, "?returnCode?");
        return TCL_ERROR;
    }
    if (count == 2 && Tcl_GetIntFromObj(interpreter, words[1], &status) != TCL_OK)
        return TCL_ERROR;
    auto* const exit = static_cast<TclExit*>(self);
    exit->called_ = true;
    Tcl_CancelEval(exit->root_, nullptr, nullptr, TCL_CANCEL_UNWIND);
    // The cancellation is only noted so far; a catch around this command must see it already.
    return Tcl_AsyncInvoke(interpreter, TCL_ERROR);
}

int TclExit::interpCommand(ClientData self, Tcl_Interp* interpreter, int count, Tcl_Obj* const words[]) {
    auto* const exit = static_cast<TclExit*>(self);
    // The data of "interp" is null in every interpreter.
    const int code = exit->interp_.objProc(exit->interp_.objClientData, interpreter, count, words);
    const char* const word = count > 1 ? Tcl_GetString(words[1]) : "";
    const bool makesOne = std::strlen(word) > 1 && std::strncmp(word, "create", std::strlen(word)) == 0;
    if (code == TCL_OK && makesOne)
        if (Tcl_Interp* const made = Tcl_GetSlave(interpreter, Tcl_GetStringResult(interpreter)))
            exit->install(made);
    return code;
}
