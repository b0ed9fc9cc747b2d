// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "HZEPExport.h"

#include <cstddef>
#include <string>
#include <vector>

class HZEPDevice;
class HZEPPlatform;

/// Questions to the current list of HZEPPlatformMgr::getGlobal(). A platform's name is what HZEPPlatformMgr::getPlatform takes. An unknown
/// name, and a platform without the part asked about, give false, null, 0 or ""; nothing is raised. Lists are appended to what `out`
/// holds, in the order of the manager's list; platforms and devices stay the manager's.
class HZEP_EXPORT HZEPPlatformUtils {
public:
    // One platform by name
    static HZEPPlatform* getPlatform(const std::string& name);
    /// Meant for a data center, server managed, or for an external host.
    static bool isKPLPlatform(const std::string& name);
    /// Meant as an embedded platform; the other two are the same question.
    static bool isWELPlatform(const std::string& name);
    static bool isProcessorGroupRelevant(const std::string& name);
    static bool isLinuxRootFSPathRelevant(const std::string& name);
    static bool isUnifiedPlatform(const std::string& name);
    static bool isExpandablePlatform(const std::string& name);
    /// Not expandable, so true for an unknown name.
    static bool isFixedPlatform(const std::string& name);
    /// First device of the effective hardware platform, its composed part name, and the fields of that as its metadata has them.
    static HZEPDevice* getDevice(const std::string& name);
    static std::string getFpgaPart(const std::string& name);
    static std::string getFpgaPartAsFields(const std::string& name);

    // Look-ups. Base names compare ignoring case, all else exactly.
    static HZEPPlatform* getPlatformByZpfmFileBaseName(const std::string& name);
    /// First platform of that unique name or base name, else the one of that file.
    static HZEPPlatform* getPlatformByUniqueName(const std::string& name);
    static void getPlatformsByUniqueName(const std::string& name, std::vector<HZEPPlatform*>& out);
    /// First platform whose file has the same canonical form.
    /// With $GET_PLATFORM_BY_PATH_DEBUG_VAR set, this and getPlatformsByUniqueName print each comparison to the standard output.
    static HZEPPlatform* getPlatformByFilePath(const std::string& path);
    /// All four must be equal; an empty text is no wildcard.
    static void getPlatformsByVBNV(const std::string& vendor, const std::string& board, const std::string& name, const std::string& version,
                                   std::vector<HZEPPlatform*>& out);
    static void getLatestPlatformsByVBNV(const std::string& vendor, const std::string& board, const std::string& name,
                                         const std::string& version, std::vector<HZEPPlatform*>& out);
    /// `part` is the architecture of the first device's part.
    static void getPlatformsByPart(const std::string& part, std::vector<HZEPPlatform*>& out);
    /// Of those: the ones with every intent set that `mask`, of HZEPDesignIntentStorage::Key, selects. An empty vendor or board
    /// matches all.
    static void getPlatformsByDesignIntent(int mask, const std::string& part, const std::string& vendor, const std::string& board,
                                           bool latestOnly, std::vector<HZEPPlatform*>& out);

    // Narrowing views. Filters compare ignoring case, an empty one matches all. Nothing is given twice.
    /// `category` is one of the target categories, `family` the architecture of the first device's part.
    static void getPlatformsByCategoryFamilyVendorAndBoard(const std::string& category, const std::string& family,
                                                           const std::string& vendor, const std::string& board,
                                                           std::vector<HZEPPlatform*>& out);
    /// The board ids of such platforms, without empty ones.
    static void getBoardsByCategoryFamilyAndVendor(const std::string& category, const std::string& family, const std::string& vendor,
                                                   std::vector<std::string>& out);
    /// `part` is the composed part name of the first device, or its architecture.
    static void getBoardsByPartAndVendor(const std::string& part, const std::string& vendor, std::vector<std::string>& out);
    /// The composed part names of the first devices.
    static void getSupportedFpgaParts(std::vector<std::string>& out);

    // Versions. Only the first two fields count, as numbers.
    /// No candidate of the same vendor, board and name has a higher version; false without a version. Candidates default to the
    /// current list.
    static bool isLatestVersion(const HZEPPlatform* platform, const std::vector<HZEPPlatform*>& candidates);
    static bool isLatestVersion(const HZEPPlatform* platform);
    /// Keeps the latest of the list itself.
    static void filterOutOldPlatforms(std::vector<HZEPPlatform*>& platforms);

    // Words for people; "" for another type.
    static std::string getPrettyNameForProductType(const std::string& type);
    static std::string getPrettyNameForLibType(const std::string& type);
    static void getAllLibraryTypes(std::vector<std::string>& out);

    // Directories. An install directory is one whose text begins with one of getRootInstallPlatformDirs. Each is given once.
    /// The canonical "platforms" of every install root, then of "/opt/tolvan", whether they exist or not.
    static void getRootInstallPlatformDirs(std::vector<std::string>& dirs);
    static bool isInstallPlatformDir(const std::string& dir);
    static bool isUserPlatform(const std::string& name);
    /// The directories of the current platforms' files that are install directories, or that aren't.
    static void getAllFactoryPlatformDirs(std::vector<std::string>& dirs);
    static void getAllUserPlatformDirs(std::vector<std::string>& dirs);
    /// The directories of the unified platforms that aren't install directories.
    static void getUnifiedPlatformDirs(std::vector<std::string>& dirs);
    /// Replaces the user platforms by those below the directories. Gives the text for people about what went wrong, "" if nothing did.
    static std::string setUserPlatformDirs(const std::vector<std::string>& dirs);

    // Runtimes of the system configuration of that name, or with an empty name of all configurations. Without a software platform the
    // design intent decides.
    static void getRuntimes(const std::string& name, const std::string& config, std::vector<std::string>& out);
    static void getRuntimesByPrettyName(const std::string& name, const std::string& config, std::vector<std::string>& out);
    static std::size_t getNumRuntimes(const std::string& name, const std::string& config = "");
    /// With an empty name: of the default configuration.
    static bool supportsMultipleRuntimes(const std::string& name, const std::string& config = "");
    /// The same for a platform at hand; nothing for a null one.
    static void getRuntimes(const HZEPPlatform* platform, const std::string& config, std::vector<std::string>& out);
    static void getRuntimesByPrettyName(const HZEPPlatform* platform, const std::string& config, std::vector<std::string>& out);
};
