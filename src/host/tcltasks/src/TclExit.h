// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include <tcl.h>

/// An "exit" that ends the evaluation in place of the process, past every catch. Interpreters that the script makes get it too.
class TclExit {
public:
    /// Must live as long as the interpreter, whose evaluation is the one that ends.
    explicit TclExit(Tcl_Interp* interpreter);
    TclExit(const TclExit&) = delete;
    TclExit& operator=(const TclExit&) = delete;

    bool wasCalled() const { return called_; }

private:
    void install(Tcl_Interp* interpreter);
    static int exitCommand(ClientData self, Tcl_Interp* interpreter, int count, Tcl_Obj* const words[]);
    static int interpCommand(ClientData self, Tcl_Interp* interpreter, int count, Tcl_Obj* const words[]);

    Tcl_Interp* root_;
    Tcl_CmdInfo interp_{};
    bool called_ = false;
};
