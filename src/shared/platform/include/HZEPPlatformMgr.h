// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "HZEPExport.h"
#include "HostFwdIter.h"

#include <cstddef>
#include <deque>
#include <memory>
#include <string>
#include <vector>

class HZEPHardwarePlatform;
class HZEPPlatform;
class HZEPReconfigurablePartition;
class HostBoardDataManager;

/// Every platform found below a set of directories. A platform file that can't be loaded whole is left out, with readable text for it in
/// getParsingErrorMsgs, and the scan goes on; nothing is raised for it. The manager owns its platforms: pointers and iterators that it
/// hands out live until the platform is removed or cleared. Not locked; a manager belongs to one thread.
class HZEP_EXPORT HZEPPlatformMgr {
public:
    /// Which list the queries see: the platforms read from platform files, or, for PlatformProject alone, the loose hardware archives.
    enum ZEPProjectType : int { ZepProject = 0, PlatformProject = 1 };

    /// Knows no platform and scans nothing.
    HZEPPlatformMgr();
    ~HZEPPlatformMgr();
    HZEPPlatformMgr(const HZEPPlatformMgr&) = delete;
    HZEPPlatformMgr& operator=(const HZEPPlatformMgr&) = delete;

    /// The process's manager, made on the first call and never deleted. A first call to getGlobal scans the default directories, one
    /// to getGlobalNoInit doesn't, and then no later getGlobal does.
    static HZEPPlatformMgr* getGlobal();
    static HZEPPlatformMgr* getGlobalNoInit();

    /// Scans the directories in order: platform files up to three directories below each, following links to directories, then loose
    /// hardware archives as HZEPHardwarePlatformMgr finds them. A platform file goes in front of all earlier ones, a loose archive behind
    /// all earlier ones. A path that is known already, as the very same text, isn't loaded again; another spelling of it is. With a
    /// name, only the first platform file of that stem, ignoring case, is loaded, and the loose archives.
    /// A platform file that doesn't parse is told as "@74-3@%s" (file), a missing hardware file as "@74-14@%s%s" (hardware file,
    /// platform file), one of another extension as "@74-55@%s%s%s" (the same and the extensions), a software file that doesn't parse
    /// as "@74-4@%s" (software file). A directory whose walk fails is told as "@74-5@%s" and left for the next; one that doesn't
    /// exist is skipped. True when any platform is known afterwards.
    bool addPlatformsFromDirs(std::string name, const std::vector<std::string>& dirs);
    bool addPlatformsFromDirs(const std::vector<std::string>& dirs);

    /// Deletes the platforms of both lists whose file lies directly in one of the directories, compared as text.
    void removePlatformsFromDirs(const std::vector<std::string>& dirs);
    void clearAllPlatforms();

    /// The first platform of the current list whose unique name is the query, or whose base name is it, ignoring case, or whose file has
    /// the same canonical form, ignoring case. Null if none.
    HZEPPlatform* getPlatform(const std::string& query) const;

    /// Append the current list, or the unified platforms in it; getZEPPlatforms is getUnifiedPlatforms.
    void getPlatforms(std::vector<HZEPPlatform*>& out) const;
    void getUnifiedPlatforms(std::vector<HZEPPlatform*>& out) const;
    void getZEPPlatforms(std::vector<HZEPPlatform*>& out) const;
    /// Replaces what the list held by the loose hardware archives, whatever the project type.
    void getDSAPlatforms(std::vector<HZEPPlatform*>& out) const;
    /// Over the current list; the caller deletes it, before the list changes.
    HostFwdIter<HZEPPlatform*>* createPlatformIter() const;
    std::size_t getNumPlatforms() const;

    /// Appends the texts for people, in the order they arose.
    void getParsingErrorMsgs(std::vector<std::string>& out) const;
    void clearParsingErrorMsgs();

    void setProjectType(ZEPProjectType type);
    ZEPProjectType getProjectTypeAsEnumVal() const { return projectType_; }
    /// "zep" or "platform", "" for any other value.
    std::string getProjectTypeAsStr() const;

    /// HZEPHardwarePlatformMgr::addPlatformsFromDirs.
    void getHardwarePlatformsFromDirs(const std::vector<std::string>& dirs, std::vector<HZEPHardwarePlatform*>& out, bool checkVBNV) const;

    /// Appends "platforms" below each install root, then "/opt/tolvan/platforms", those that exist.
    static void getDefaultZepPlatformDirs(std::vector<std::string>& dirs);

    /// Also told to the board catalog. The getter replaces what the list held.
    void setBoardRepoPaths(const std::vector<std::string>& paths);
    void getBoardRepoPaths(std::vector<std::string>& paths) const;

private:
    using Platforms_ = std::deque<HZEPPlatform*>;
    class KnownFiles_;

    void init_();
    void addPlatformsFromDirs_(const std::string& name, const std::vector<std::string>& dirs, KnownFiles_& known);
    bool addPlatformsFromDir_(const std::string& name, const std::string& dir, KnownFiles_& known);
    void addHardwarePlatformsFromDirs_(const std::vector<std::string>& dirs, KnownFiles_& known);
    std::unique_ptr<HZEPPlatform> parsePlatform_(const std::string& path);
    static std::unique_ptr<HZEPPlatform> createPlatform_(std::unique_ptr<HZEPHardwarePlatform> hardwarePlatform);
    static void removePlatformsFromDirs_(const std::vector<std::string>& dirs, Platforms_& platforms);
    static void clear_(Platforms_& platforms);

    bool attachHardwarePlatforms_(HZEPPlatform* platform);
    bool attachSingleHardwarePlatform_(HZEPPlatform& platform);
    bool attachReconfigurablePartitions_(HZEPPlatform& platform);
    bool attachReconfigurablePartition_(HZEPPlatform& platform, HZEPReconfigurablePartition& partition);
    bool attachSoftwarePlatforms_(HZEPPlatform& platform);
    std::unique_ptr<HZEPHardwarePlatform> readHardwarePlatform_(const std::string& hardwareFile, const std::string& platformFile);
    void handleInvalidPath_(const std::string& hardwareFile, const std::string& platformFile);
    void handleInvalidExtension_(const std::string& hardwareFile, const std::string& platformFile);

    Platforms_ zepPlatforms_; // newest first
    Platforms_ dsaPlatforms_; // in the order found
    Platforms_* currentPlatforms_ = &zepPlatforms_;
    std::vector<std::string> parsingErrorMsgs_;
    ZEPProjectType projectType_ = ZepProject;
    std::vector<std::string> boardRepoPaths_;
    std::unique_ptr<HostBoardDataManager> boardDataManager_;
    static HZEPPlatformMgr* mp_theGlobal;
};
