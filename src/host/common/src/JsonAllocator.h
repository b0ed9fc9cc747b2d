// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <new>

/// Memory for the parser, which takes no null pointer for an answer: where there is none, std::bad_alloc is raised.
class JsonAllocator {
public:
    static constexpr bool kNeedFree = true;

    void* Malloc(std::size_t size) { return size ? ::operator new(size) : nullptr; }
    void* Realloc(void* block, std::size_t size, std::size_t newSize) {
        void* const moved = Malloc(newSize);
        if (const std::size_t kept = std::min(size, newSize); block && kept)
            std::memcpy(moved, block, kept);
        Free(block);
        return moved;
    }
    static void Free(void* block) { ::operator delete(block); }
};
