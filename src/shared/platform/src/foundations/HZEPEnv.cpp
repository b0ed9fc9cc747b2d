// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors

#include "HZEPEnv.h"

#include "HostEnv.h"

std::string HZEPEnv::getProductName() {
    static std::string name;
    if (!name.empty())
        return name;

    std::string root = HostEnv::getHostAppRoot();
    for (char& c : root)
        if (c >= 'A' && c <= 'Z')
            c = static_cast<char>(c - 'A' + 'a');

    std::size_t best = 0;
    for (const char* product : {"plome", "zep", "ferro", "druvel"}) {
        const std::size_t position = root.rfind(product);
        if (position == root.npos || position < best || (product == std::string("zep") && isRunningAsGradleUnitTest()))
            continue;
        best = position;
        name = product;
    }
    if (name.empty())
        name = isRunningAsGradleUnitTest() ? "plome" : "unknown";
    return name;
}

bool HZEPEnv::isRunningAsGradleUnitTest() {
    static const bool answer = [] {
        bool isSet = false;
        HostEnv::getEnv("GRADLE_UNIT_TEST", &isSet);
        return isSet;
    }();
    return answer;
}
