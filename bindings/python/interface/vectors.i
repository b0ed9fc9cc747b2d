// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors

// Lists, maps and sets in Python are its own where one is handed in, and act like its own where one comes back.

%include <std_vector.i>
%include <std_map.i>
%include <std_set.i>
