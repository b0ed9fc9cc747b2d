// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "WrittenIsRead.h"

/// The bytes choose the texts of a model, which every writer then writes: what it wrote is read, or it failed and changed nothing.
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    silence();
    static WrittenIsRead rounds;
    if (const std::string fault = rounds.run(data, size); !fault.empty()) {
        std::cerr << fault;
        std::abort();
    }
    return 0;
}
