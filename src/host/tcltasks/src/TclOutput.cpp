// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "TclOutput.h"

#include <iostream>

namespace {

int closeOutput(ClientData, Tcl_Interp*) {
    std::cout.flush();
    return 0;
}

// What std::cout does not take is its own affair: a script must not fail for it.
int writeOutput(ClientData, const char* text, int size, int*) {
    std::cout.write(text, size);
    return size;
}

void watchOutput(ClientData, int) {}

Tcl_ChannelType makeType() {
    Tcl_ChannelType type{};
    type.typeName = "hostoutput";
    type.version = TCL_CHANNEL_VERSION_5;
    type.closeProc = &closeOutput;
    type.outputProc = &writeOutput;
    type.watchProc = &watchOutput;
    return type;
}

} // namespace

TclOutput::TclOutput() : earlier_(Tcl_GetStdChannel(TCL_STDOUT)) {
    static const Tcl_ChannelType type = makeType();
    channel_ = Tcl_CreateChannel(&type, "hostoutput", nullptr, TCL_WRITABLE);
    Tcl_SetChannelOption(nullptr, channel_, "-buffering", "line");
    Tcl_SetChannelOption(nullptr, channel_, "-encoding", "utf-8");
    Tcl_SetChannelOption(nullptr, channel_, "-translation", "lf");
    Tcl_RegisterChannel(nullptr, channel_);
    Tcl_SetStdChannel(channel_, TCL_STDOUT);
}

TclOutput::~TclOutput() {
    Tcl_SetStdChannel(earlier_, TCL_STDOUT);
    Tcl_UnregisterChannel(nullptr, channel_);
}
