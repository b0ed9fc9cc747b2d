// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors

// The library's surface for every script language. What a language needs of its own stands in its `language.i` and `vectors.i`, found on
// the include path: the module's name, strings, exceptions, handles, lists.

%include "language.i"
%include "shared.i"
%include "writers.i"
%include "containers.i"
%include "software.i"
%include "hardware.i"
%include "platform.i"
%include "queries.i"
%include "services.i"
%include "creation.i"
