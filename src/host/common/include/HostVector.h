// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include <vector>

template <class T>
using HostVector = std::vector<T>;
