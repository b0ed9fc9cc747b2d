// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "HZEPPlatformHelper.h"

#include "../foundations/OnceList.h"
#include "../software/ProcessorGroupPaths.h"
#include "HPLPlatform.h"
#include "HZEPPlatformMgr.h"
#include "HZEPPlatformUtils.h"
#include "HostFile.h"
#include "HostFileUtils.h"
#include "PlatformLoader.h"

HZEPPlatformHelper::HZEPPlatformHelper(HZEPPlatform* platform) : platform_(platform) {}

HZEPPlatformHelper::HZEPPlatformHelper(const std::string& name, const std::vector<std::string>& boardRepoPaths) {
    setBoardRepoPaths(boardRepoPaths);
    if (!HostFile::exists(name)) {
        platform_ = HZEPPlatformMgr::getGlobal()->getPlatform(name);
        return;
    }
    try {
        std::string path = name;
        HostFileUtils::makeAbsolutePath(path);
        loaded_ = zep_platform::PlatformLoader(path, zep_platform::PlatformLoader::PreferAlternateJson).load();
    } catch (...) {
        // Callers ask isValid; the reason went out as the loader's message.
    }
}

HZEPPlatformHelper::~HZEPPlatformHelper() = default;

std::string HZEPPlatformHelper::getFpgaPart() const {
    std::vector<HZEPDevice*> devices;
    ask_(&Hw::getDevices, devices);
    return devices.empty() ? "" : devices.front()->getPartName();
}

bool HZEPPlatformHelper::isQemuSupported(const std::string& config) const {
    const HZEPSystemConfig* found = getSystemConfigByName(config);
    return found && found->isQemuSupported();
}

std::string HZEPPlatformHelper::getIncludePaths(const std::string& config, const std::string& processorGroup,
                                                const std::string& osName) const {
    return pathsOfGroup(getSystemConfigByName(config), processorGroup, osName, &HZEPProcessorGroup::getIncludePaths);
}

std::string HZEPPlatformHelper::getLibraryPaths(const std::string& config, const std::string& processorGroup,
                                                const std::string& osName) const {
    return pathsOfGroup(getSystemConfigByName(config), processorGroup, osName, &HZEPProcessorGroup::getLibraryPaths);
}

void HZEPPlatformHelper::getRuntimes(const std::string& config, std::vector<std::string>& out) const {
    HZEPPlatformUtils::getRuntimes(getPlatform(), config, out);
}

void HZEPPlatformHelper::getRuntimesByPrettyName(const std::string& config, std::vector<std::string>& out) const {
    HZEPPlatformUtils::getRuntimesByPrettyName(getPlatform(), config, out);
}

std::size_t HZEPPlatformHelper::getNumRuntimes(const std::string& config) const {
    std::vector<std::string> runtimes;
    getRuntimes(config, runtimes);
    return runtimes.size();
}

bool HZEPPlatformHelper::supportsMultipleRuntimes() const {
    const HZEPSystemConfig* config = getDefaultSystemConfig();
    return getNumRuntimes(config ? config->getName() : "") > 1;
}

bool HZEPPlatformHelper::hasBootImg() const {
    if (isUnified())
        return isProcessorGroupRelevant();
    const auto* hardware = dynamic_cast<const HPLPlatform*>(part_<HZEPHardwarePlatform>());
    return hardware && hardware->getHostInterfaceAsEnum() == HPLPlatform::HostInterfaceAxi;
}

void HZEPPlatformHelper::setBoardRepoPaths(const std::vector<std::string>& paths) {
    boardRepoPaths_ = paths;
    boardDataManager_.setBoardPartRepoPaths(paths);
}

template <class Answer, class... Params>
Answer HZEPPlatformHelper::askConnectors_(Answer (HZEPHardwarePlatform::*ofPlatform)(Params...) const,
                                          Answer (HPLBoard::*ofBoard)(Params...) const, std::type_identity_t<Params>... args) const {
    const HZEPHardwarePlatform* hardware = part_<HZEPHardwarePlatform>();
    if (hardware && hardware->hasDimmConnectors())
        return (hardware->*ofPlatform)(args...);
    HPLBoard board;
    if (const HostBoard* base = getBaseBoard_(boardDataManager_)) {
        for (const HostBoardComponent* connector : base->getConnectorsList())
            if (connector->isDIMMConnector())
                board.addDimmConnector(connector->getName(), connector->getDisplayName(), connector->getType(),
                                       connector->getConnectedName(), connector->getConnectedDisplayName(), connector->isConnected(),
                                       connector->isLocked());
    }
    return (board.*ofBoard)(args...);
}

std::string HZEPPlatformHelper::getConnectorDisplayName(const std::string& name) const {
    return askConnectors_(&Hw::getConnectorDisplayName, &HPLBoard::getConnectorDisplayName, name);
}

void HZEPPlatformHelper::getConnectedDimmConnectors(std::vector<std::string>& names, std::vector<std::string>& connectedNames) const {
    askConnectors_(&Hw::getConnectedDimmConnectors, &HPLBoard::getConnectedDimmConnectors, names, connectedNames);
}

void HZEPPlatformHelper::getLockedDimmConnectors(std::vector<std::string>& out) const {
    askConnectors_(&Hw::getLockedDimmConnectors, &HPLBoard::getLockedDimmConnectors, out);
}

std::string HZEPPlatformHelper::getBoardConnectionsString() const {
    return askConnectors_(&Hw::getBoardConnectionsString, &HPLBoard::getBoardConnectionsString);
}

std::string HZEPPlatformHelper::getLockedBoardConnectionsString() const {
    return askConnectors_(&Hw::getLockedBoardConnectionsString, &HPLBoard::getLockedBoardConnectionsString);
}

std::string HZEPPlatformHelper::getUnlockedBoardConnectionsString() const {
    return askConnectors_(&Hw::getUnlockedBoardConnectionsString, &HPLBoard::getUnlockedBoardConnectionsString);
}

void HZEPPlatformHelper::getCompatibleConnectors(const std::string& connector, const std::vector<std::string>& boardRepoPaths,
                                                 std::vector<std::string>& out) const {
    HostBoardDataManager boards;
    boards.setBoardPartRepoPaths(boardRepoPaths);
    getCompatibleConnectors_(connector, boards, out);
}

void HZEPPlatformHelper::getCompatibleConnectors(const std::string& connector, std::vector<std::string>& out) const {
    getCompatibleConnectors_(connector, boardDataManager_, out);
}

const HostBoard* HZEPPlatformHelper::getBaseBoard_(const HostBoardDataManager& boards) const {
    const std::string id = getBoardId();
    return id.empty() ? nullptr : boards.getBoard(id);
}

const HostBoardComponent* HZEPPlatformHelper::getConnector_(const HostBoard& board, const std::string& name) {
    for (const HostBoardComponent* connector : board.getConnectorsList())
        if (connector->isDIMMConnector() && (connector->getDisplayName() == name || connector->getName() == name))
            return connector;
    return nullptr;
}

void HZEPPlatformHelper::getCompatibleConnectors_(const std::string& connector, const HostBoardDataManager& boards,
                                                  std::vector<std::string>& out) const {
    const HostBoard* board = getBaseBoard_(boards);
    const HostBoardComponent* slot = board ? getConnector_(*board, connector) : nullptr;
    if (!slot)
        return;
    OnceList names(out);
    for (const HostBoardComponent* fitting : board->getCompatibleConnectorsList(*slot))
        if (fitting->isDIMMConnector())
            names.add(fitting->getName());
}
