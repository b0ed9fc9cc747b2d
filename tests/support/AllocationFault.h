// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include <cstddef>
#include <functional>

/// Runs the work with its first allocation failing, its second, and so on until none is struck: it comes to its end or raises
/// std::bad_alloc, nothing else. Answers how many failed. A test that uses this has an operator new of its own.
std::size_t failEachAllocation(const std::function<void()>& work);
