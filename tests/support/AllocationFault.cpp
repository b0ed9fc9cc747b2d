// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "AllocationFault.h"

#include <cstdlib>
#include <new>

namespace {

std::size_t callsLeft = 0; // until the one that fails; 0: none does

} // namespace

// Seen by the library under test, in place of the C++ library's.
#pragma GCC visibility push(default)
void* operator new(std::size_t size) {
    if (callsLeft > 0 && --callsLeft == 0)
        throw std::bad_alloc();
    if (void* const block = std::malloc(size > 0 ? size : 1))
        return block;
    throw std::bad_alloc();
}
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    try {
        return ::operator new(size);
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}
void operator delete(void* block) noexcept {
    std::free(block);
}
void operator delete(void* block, std::size_t) noexcept {
    std::free(block);
}
#pragma GCC visibility pop

std::size_t failEachAllocation(const std::function<void()>& work) {
    work();
    for (std::size_t n = 1;; ++n) {
        callsLeft = n;
        try {
            work();
        } catch (const std::bad_alloc&) {
        }
        if (callsLeft > 0) {
            callsLeft = 0;
            return n - 1;
        }
    }
}
