// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "HZEPPlatformMgr.h"

#include "../foundations/DirectoryWalk.h"
#include "../hardware/AsciiCase.h"
#include "CanonicalFile.h"
#include "HZEPHardwarePlatform.h"
#include "HZEPHardwarePlatformMgr.h"
#include "HZEPPlatform.h"
#include "HZEPPlatformXMLReader.h"
#include "HZEPReconfigurablePartition.h"
#include "HZEPSoftwarePlatform.h"
#include "HZEPSoftwarePlatformXMLReader.h"
#include "HostBoardDataManager.h"
#include "HostEnv.h"
#include "HostFile.h"
#include "HostFwdStlIter.h"
#include "HostMsgMgr.h"
#include "HostPathUtils.h"

#include <boost/system/system_error.hpp>

#include <algorithm>
#include <unordered_set>

namespace fs = boost::filesystem;
using ascii::equalsIgnoringCase;

namespace {

constexpr int kLevelsScanned = 3;

void send(HostMsgMgr::Severity severity, const char* key, std::vector<std::string> args) {
    HostMsgMgr::getGlobal().send("platform", severity, key, std::move(args));
}

void appendIfExists(const std::string& directory, std::vector<std::string>& out) {
    if (HostFile::exists(directory))
        out.push_back(directory);
}

} // namespace

/// The files of the platforms in both lists, for the time of one scan: outside of it a caller may give a platform another file.
class HZEPPlatformMgr::KnownFiles_ {
public:
    explicit KnownFiles_(const HZEPPlatformMgr& manager) {
        for (const Platforms_* platforms : {&manager.zepPlatforms_, &manager.dsaPlatforms_})
            for (const HZEPPlatform* platform : *platforms)
                files_.insert(platform->getPlatformFile());
    }
    bool contains(const std::string& file) const { return files_.count(file) != 0; }
    void add(const std::string& file) { files_.insert(file); }

private:
    std::unordered_set<std::string> files_;
};

HZEPPlatformMgr* HZEPPlatformMgr::mp_theGlobal = nullptr;

HZEPPlatformMgr::HZEPPlatformMgr() : boardDataManager_(std::make_unique<HostBoardDataManager>()) {}

HZEPPlatformMgr::~HZEPPlatformMgr() {
    clearAllPlatforms();
}

HZEPPlatformMgr* HZEPPlatformMgr::getGlobalNoInit() {
    if (!mp_theGlobal)
        mp_theGlobal = new HZEPPlatformMgr;
    return mp_theGlobal;
}

HZEPPlatformMgr* HZEPPlatformMgr::getGlobal() {
    if (!mp_theGlobal)
        getGlobalNoInit()->init_();
    return mp_theGlobal;
}

void HZEPPlatformMgr::init_() {
    std::vector<std::string> dirs;
    getDefaultZepPlatformDirs(dirs);
    if (!dirs.empty())
        addPlatformsFromDirs(dirs);
}

void HZEPPlatformMgr::getDefaultZepPlatformDirs(std::vector<std::string>& dirs) {
    static const std::string separator = HostFile::getDirSeparator();
    for (const std::string& root : HostEnv::getHostAppRootList())
        appendIfExists(root + separator + "platforms", dirs);
    appendIfExists(separator + "opt" + separator + "tolvan" + separator + "platforms", dirs);
}

bool HZEPPlatformMgr::addPlatformsFromDirs(const std::vector<std::string>& dirs) {
    return addPlatformsFromDirs("", dirs);
}

bool HZEPPlatformMgr::addPlatformsFromDirs(std::string name, const std::vector<std::string>& dirs) {
    KnownFiles_ known(*this);
    addPlatformsFromDirs_(name, dirs, known);
    addHardwarePlatformsFromDirs_(dirs, known);
    return !zepPlatforms_.empty() || !dsaPlatforms_.empty();
}

void HZEPPlatformMgr::addPlatformsFromDirs_(const std::string& name, const std::vector<std::string>& dirs, KnownFiles_& known) {
    for (const std::string& dir : dirs) {
        if (!HostFile::isDir(dir))
            continue;
        try {
            if (addPlatformsFromDir_(name, dir, known))
                return;
        } catch (...) {
            send(HostMsgMgr::Warning, "@74-5@%s", {dir});
        }
    }
}

/// Whether the named platform was met for the first time and parsed: that ends the scan, also when its attachment failed.
bool HZEPPlatformMgr::addPlatformsFromDir_(const std::string& name, const std::string& dir, KnownFiles_& known) {
    bool isNamedMet = false;
    const auto fault = walkDirectory(dir, kLevelsScanned, [&](const fs::path& entry) {
        if (entry.extension() != ".zpfm")
            return true;
        if (!HostFile::isRegularFile(entry.string())) {
            // Reading a pipe or a device might wait for ever.
            if (name.empty() || equalsIgnoringCase(name, entry.stem().string()))
                send(HostMsgMgr::Warning, "@75-5@%s%s", {entry.string(), HostPathUtils::describe(entry.string())});
            return true;
        }
        std::string path = entry.string();
        std::replace(path.begin(), path.end(), '\\', '/');
        const bool isNamed = !name.empty() && equalsIgnoringCase(name, fs::path(path).stem().string());
        if (known.contains(path))
            return !isNamed;
        if (!name.empty() && !isNamed)
            return true;
        auto platform = parsePlatform_(path);
        if (!platform)
            return true;
        if (attachHardwarePlatforms_(platform.get()) && attachSoftwarePlatforms_(*platform)) {
            known.add(path);
            zepPlatforms_.push_front(platform.get());
            platform.release();
        }
        isNamedMet = isNamed;
        return !isNamed;
    });
    if (fault)
        throw boost::system::system_error(fault);
    return isNamedMet;
}

std::unique_ptr<HZEPPlatform> HZEPPlatformMgr::parsePlatform_(const std::string& path) {
    auto platform = std::make_unique<HZEPPlatform>();
    platform->setZpfm(true);
    HZEPPlatformXMLReader reader(path, platform.get());
    if (reader.parseFile())
        return platform;
    if (std::string text = reader.getErrorMsg(); !text.empty())
        parsingErrorMsgs_.push_back(std::move(text));
    send(HostMsgMgr::CriticalWarning, "@74-3@%s", {path});
    parsingErrorMsgs_.push_back("Encountered Errors while parsing platform: " + path + ". Unable to load platform.\n");
    return nullptr;
}

bool HZEPPlatformMgr::attachHardwarePlatforms_(HZEPPlatform* platform) {
    if (!platform)
        return false;
    return platform->hasReconfigurablePartitions() ? attachReconfigurablePartitions_(*platform) : attachSingleHardwarePlatform_(*platform);
}

bool HZEPPlatformMgr::attachSingleHardwarePlatform_(HZEPPlatform& platform) {
    auto hardware = readHardwarePlatform_(platform.getHardwarePlatformFile(), platform.getPlatformFile());
    platform.setHardwarePlatform(hardware.get());
    return hardware.release() != nullptr;
}

bool HZEPPlatformMgr::attachReconfigurablePartitions_(HZEPPlatform& platform) {
    std::vector<HZEPReconfigurablePartition*> partitions;
    platform.getReconfigurablePartitions(partitions);
    bool areAllAttached = true;
    for (HZEPReconfigurablePartition* partition : partitions)
        areAllAttached &= attachReconfigurablePartition_(platform, *partition);
    return areAllAttached;
}

bool HZEPPlatformMgr::attachReconfigurablePartition_(HZEPPlatform& platform, HZEPReconfigurablePartition& partition) {
    auto read = readHardwarePlatform_(partition.getHardwarePlatformFile(), platform.getPlatformFile());
    if (!read)
        return false;
    HZEPHardwarePlatform* hardware = platform.keepPartitionHardware(std::move(read));
    partition.setHardwarePlatform(hardware);
    if (partition.getID() == platform.getDefaultRPId())
        platform.setDefaultRPHardwarePlatform(hardware);
    return true;
}

/// Null when the file can't be had; only a missing file and one of another extension leave text here.
std::unique_ptr<HZEPHardwarePlatform> HZEPPlatformMgr::readHardwarePlatform_(const std::string& hardwareFile,
                                                                             const std::string& platformFile) {
    if (!HostFile::exists(hardwareFile))
        handleInvalidPath_(hardwareFile, platformFile);
    else if (!HZEPHardwarePlatform::isValidPlatformExt("." + HostFile(hardwareFile).getExt()))
        handleInvalidExtension_(hardwareFile, platformFile);
    else
        return std::unique_ptr<HZEPHardwarePlatform>(HZEPHardwarePlatformMgr::addPlatform(hardwareFile));
    return nullptr;
}

void HZEPPlatformMgr::handleInvalidPath_(const std::string& hardwareFile, const std::string& platformFile) {
    send(HostMsgMgr::CriticalWarning, "@74-14@%s%s", {hardwareFile, platformFile});
    parsingErrorMsgs_.push_back("Hardware platform file " + hardwareFile + " for platform " + platformFile +
                                " does not exist on disk. Unable to load platform.\n");
}

void HZEPPlatformMgr::handleInvalidExtension_(const std::string& hardwareFile, const std::string& platformFile) {
    std::string extensions; // the comma behind the last one is part of the text
    for (const std::string& extension : HZEPHardwarePlatform::getValidPlatformExts())
        extensions += " '" + extension + "',";
    send(HostMsgMgr::CriticalWarning, "@74-55@%s%s%s", {hardwareFile, platformFile, extensions});
    parsingErrorMsgs_.push_back("Found bad hardware platform file " + hardwareFile + " for platform " + platformFile +
                                ". Supported extensions are" + extensions + ". Unable to load platform.\n");
}

bool HZEPPlatformMgr::attachSoftwarePlatforms_(HZEPPlatform& platform) {
    const std::string file = platform.getSoftwarePlatformFile();
    if (file.empty())
        return true;
    if (!HostFile::exists(file)) {
        parsingErrorMsgs_.push_back("Software platform file " + file + " for platform " + platform.getPlatformFile() +
                                    " does not exist on disk. Unable to load platform.\n");
        return false;
    }
    auto* software = new HZEPSoftwarePlatform;
    platform.addSoftwarePlatform(software);
    HZEPSoftwarePlatformXMLReader reader(file, software);
    // Not from a pipe or a device, where the scan might wait for ever.
    if ((HostFile::isRegularFile(file) || HostFile::isDir(file)) && reader.parseFile())
        return true;
    send(HostMsgMgr::CriticalWarning, "@74-4@%s", {file});
    if (std::string text = reader.getErrorMsg(); !text.empty())
        parsingErrorMsgs_.push_back(std::move(text));
    parsingErrorMsgs_.push_back("Encountered Errors while parsing software platform for: " + platform.getPlatformFile() +
                                ". Unable to load platform.\n");
    return false;
}

void HZEPPlatformMgr::addHardwarePlatformsFromDirs_(const std::vector<std::string>& dirs, KnownFiles_& known) {
    std::vector<HZEPHardwarePlatform*> found;
    getHardwarePlatformsFromDirs(dirs, found, false);
    std::vector<std::unique_ptr<HZEPHardwarePlatform>> owned(found.begin(), found.end());
    for (auto& hardware : owned) {
        const std::string file = hardware->getPlatformFile();
        if (known.contains(file))
            continue;
        known.add(file);
        auto platform = createPlatform_(std::move(hardware));
        dsaPlatforms_.push_back(platform.get());
        platform.release();
    }
}

std::unique_ptr<HZEPPlatform> HZEPPlatformMgr::createPlatform_(std::unique_ptr<HZEPHardwarePlatform> hardwarePlatform) {
    auto platform = std::make_unique<HZEPPlatform>();
    platform->setPartial(true);
    platform->setPlatformFile(hardwarePlatform->getPlatformFile());
    platform->setHardwarePlatform(hardwarePlatform.release());
    return platform;
}

void HZEPPlatformMgr::removePlatformsFromDirs(const std::vector<std::string>& dirs) {
    removePlatformsFromDirs_(dirs, zepPlatforms_);
    removePlatformsFromDirs_(dirs, dsaPlatforms_);
}

void HZEPPlatformMgr::removePlatformsFromDirs_(const std::vector<std::string>& dirs, Platforms_& platforms) {
    const std::unordered_set<std::string> wanted(dirs.begin(), dirs.end());
    std::erase_if(platforms, [&wanted](HZEPPlatform* platform) {
        const std::string file = platform->getPlatformFile();
        if (file.empty() || !wanted.count(HostFile(file).getParent()))
            return false;
        delete platform;
        return true;
    });
}

void HZEPPlatformMgr::clearAllPlatforms() {
    clear_(zepPlatforms_);
    clear_(dsaPlatforms_);
}

void HZEPPlatformMgr::clear_(Platforms_& platforms) {
    for (const HZEPPlatform* platform : platforms)
        delete platform;
    platforms.clear();
}

HZEPPlatform* HZEPPlatformMgr::getPlatform(const std::string& query) const {
    const CanonicalFile file(query);
    const auto found = std::find_if(currentPlatforms_->begin(), currentPlatforms_->end(), [&](const HZEPPlatform* platform) {
        return platform->getUniqueName() == query || equalsIgnoringCase(platform->getPlatformBaseName(), query) ||
               file.equalsIgnoringCase(platform->getPlatformFile());
    });
    return found == currentPlatforms_->end() ? nullptr : *found;
}

void HZEPPlatformMgr::getPlatforms(std::vector<HZEPPlatform*>& out) const {
    out.insert(out.end(), currentPlatforms_->begin(), currentPlatforms_->end());
}

void HZEPPlatformMgr::getUnifiedPlatforms(std::vector<HZEPPlatform*>& out) const {
    std::copy_if(currentPlatforms_->begin(), currentPlatforms_->end(), std::back_inserter(out),
                 [](const HZEPPlatform* platform) { return platform->isUnified(); });
}

void HZEPPlatformMgr::getZEPPlatforms(std::vector<HZEPPlatform*>& out) const {
    getUnifiedPlatforms(out);
}

void HZEPPlatformMgr::getDSAPlatforms(std::vector<HZEPPlatform*>& out) const {
    out.assign(dsaPlatforms_.begin(), dsaPlatforms_.end());
}

HostFwdIter<HZEPPlatform*>* HZEPPlatformMgr::createPlatformIter() const {
    return new HostFwdStlIter<Platforms_>(*currentPlatforms_);
}

std::size_t HZEPPlatformMgr::getNumPlatforms() const {
    return currentPlatforms_->size();
}

void HZEPPlatformMgr::getParsingErrorMsgs(std::vector<std::string>& out) const {
    out.insert(out.end(), parsingErrorMsgs_.begin(), parsingErrorMsgs_.end());
}

void HZEPPlatformMgr::clearParsingErrorMsgs() {
    parsingErrorMsgs_.clear();
}

void HZEPPlatformMgr::setProjectType(ZEPProjectType type) {
    projectType_ = type;
    currentPlatforms_ = type == PlatformProject ? &dsaPlatforms_ : &zepPlatforms_;
}

std::string HZEPPlatformMgr::getProjectTypeAsStr() const {
    switch (projectType_) {
    case ZepProject:
        return "zep";
    case PlatformProject:
        return "platform";
    }
    return "";
}

void HZEPPlatformMgr::getHardwarePlatformsFromDirs(const std::vector<std::string>& dirs, std::vector<HZEPHardwarePlatform*>& out,
                                                   bool checkVBNV) const {
    HZEPHardwarePlatformMgr::addPlatformsFromDirs(dirs, out, checkVBNV);
}

void HZEPPlatformMgr::setBoardRepoPaths(const std::vector<std::string>& paths) {
    boardRepoPaths_ = paths;
    boardDataManager_->setBoardPartRepoPaths(paths);
}

void HZEPPlatformMgr::getBoardRepoPaths(std::vector<std::string>& paths) const {
    paths = boardRepoPaths_;
}
