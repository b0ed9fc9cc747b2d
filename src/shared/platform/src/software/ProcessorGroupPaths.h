// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "HZEPProcessorGroup.h"
#include "HZEPSystemConfig.h"

#include <string>

/// Paths of the configuration's group of that name; "" without one and for a group that runs another operating system.
inline std::string pathsOfGroup(const HZEPSystemConfig* config, const std::string& groupName, const std::string& osName,
                                std::string (HZEPProcessorGroup::*paths)() const) {
    const HZEPProcessorGroup* group = config ? config->getProcGrpByName(groupName) : nullptr;
    return group && group->getOSName() == osName ? (group->*paths)() : "";
}
