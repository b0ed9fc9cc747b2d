// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "HZEPExport.h"

#include <memory>
#include <string>
#include <vector>

class HZEPHardwarePlatform;

/// Finds and reads hardware archives. Nothing is kept between calls, and nothing is raised for a bad file.
class HZEP_EXPORT HZEPHardwarePlatformMgr {
public:
    /// The archive's platform, from its JSON metadata, else from its XML metadata; the caller's. Null when neither can be read: the
    /// readers have told why. The extension isn't looked at.
    static HZEPHardwarePlatform* addPlatform(const std::string& file);

    /// Appends the loose archives at any depth below the directories: those without a platform file of the same stem one directory
    /// up. They become the caller's. Of archives with one unique name the first stays, also against what `out` held before; a file
    /// that was reached twice is told as "@74-23@%s" (file). With `checkVBNV` a second archive of one VBNV is told as
    /// "@74-17@%s%s%s" (VBNV, file kept, file dropped). A directory that doesn't exist is skipped; one that can't be read to the end is
    /// told as "@74-5@%s" (directory), and what was found in it before stays.
    static void addPlatformsFromDirs(const std::vector<std::string>& dirs, std::vector<HZEPHardwarePlatform*>& out, bool checkVBNV);

private:
    using Found_ = std::vector<std::unique_ptr<HZEPHardwarePlatform>>;

    static std::unique_ptr<HZEPHardwarePlatform> parseDSAFile_(const std::string& file);
    static void parseDSAFiles_(const std::string& dir, Found_& found);
    static void validateParsedPlatforms_(Found_ found, Found_& kept, bool checkVBNV);
    static void addPlatforms_(Found_ kept, std::vector<HZEPHardwarePlatform*>& out);
};
