// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors

#include "HZEPHardwarePlatform.h"
#include "HZEPPlatform.h"
#include "PlatformLoader.h"

#include <iostream>
#include <vector>

int main(int argc, char** argv) {
    if (argc != 2)
        return 2;
    const auto platform = zep_platform::PlatformLoader(argv[1], zep_platform::PlatformLoader::PreferAlternateJson).load();
    if (!platform)
        return 1;
    const HZEPHardwarePlatform* hardware = platform->getHardwarePlatform();
    std::vector<HZEPHardwareBusInterface*> interfaces;
    hardware->getBusInterfaces(interfaces);
    std::cout << platform->getName() << ": " << interfaces.size() << " bus interfaces, default clock " << hardware->getDefaultClockName()
              << "\n";
}
