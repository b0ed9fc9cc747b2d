// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "FuzzInput.h"
#include "HostHwDefUtils.h"

/// A definition is refused with its line, or it is read, written and read again as it was.
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    silence();
    HostHwDef definition, again;
    std::string fault;
    if (!HostHwDefUtils::parse(std::string(reinterpret_cast<const char*>(data), size), definition, fault)) {
        if (fault.empty())
            std::abort();
        return 0;
    }
    if (!HostHwDefUtils::parse(HostHwDefUtils::render(definition), again, fault) || again.getInstances() != definition.getInstances() ||
        again.getHierTopModuleName() != definition.getHierTopModuleName() || again.getPart() != definition.getPart())
        std::abort();
    return 0;
}
