// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "LmxFileFailure.h"

#include <iostream>

std::string LmxFileFailure::print(const std::string& heading, const std::string& file) const {
    const std::string lines = heading + file + "\nLine number:" + std::to_string(line) + ". " + text;
    std::cout << lines << std::endl;
    return lines;
}

HostFault LmxFileFailure::toFault(const std::string& file, const std::string& member) const {
    return {file, member, line > 0 ? static_cast<std::size_t>(line) : 0, 0, text};
}
