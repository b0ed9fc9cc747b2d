// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "HZEPEmulations.h"

const std::string& HZEPEmulations::getEmulationXmlFilename() {
    static const std::string name = "hw_emu.xml";
    return name;
}

const std::string& HZEPEmulations::getEmulationJsonFilename() {
    static const std::string name = "hw_emu.json";
    return name;
}

const std::string& HZEPEmulations::getEmuDirName() {
    static const std::string name = "hw_emu";
    return name;
}

const std::string& HZEPEmulations::getEmulationPropJsonFilename() {
    static const std::string name = "prop.json";
    return name;
}
