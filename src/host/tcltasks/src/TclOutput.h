// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include <tcl.h>

/// While it lives, what Tcl writes to its standard output on this thread goes to std::cout, wherever that leads.
class TclOutput {
public:
    TclOutput();
    ~TclOutput();
    TclOutput(const TclOutput&) = delete;
    TclOutput& operator=(const TclOutput&) = delete;

private:
    Tcl_Channel earlier_;
    Tcl_Channel channel_;
};
