// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "HZEPHardwarePlatform.h"
#include "HZEPPlatform.h"
#include "HZEPPlatformUtils.h"

#include <algorithm>
#include <cstdlib>
#include <map>
#include <optional>
#include <string_view>
#include <tuple>
#include <utility>

namespace {

using Version = std::pair<long, long>;

/// The next field of the text, which is cut off it; empty at its end.
std::string nextField(std::string_view& text) {
    text.remove_prefix(std::min(text.find_first_not_of('.'), text.size()));
    const std::string field(text.substr(0, text.find('.')));
    text.remove_prefix(field.size());
    return field;
}

/// Nothing for a text without any field; a field that is missing or no number counts as 0.
std::optional<Version> parseVersion(std::string_view text) {
    const std::string major = nextField(text);
    if (major.empty())
        return std::nullopt;
    return Version(std::strtol(major.c_str(), nullptr, 10), std::strtol(nextField(text).c_str(), nullptr, 10));
}

/// The highest version of each vendor, board and name.
class LatestVersions {
public:
    explicit LatestVersions(const std::vector<HZEPPlatform*>& platforms) {
        for (const HZEPPlatform* platform : platforms)
            if (const HZEPHardwarePlatform* hardware = platform ? platform->getHardwarePlatform() : nullptr) {
                const Version version = parseVersion(hardware->getVersion()).value_or(Version());
                Version& latest = latest_.emplace(keyOf_(*hardware), version).first->second;
                latest = std::max(latest, version);
            }
    }

    bool contain(const HZEPPlatform* platform) const {
        const HZEPHardwarePlatform* hardware = platform ? platform->getHardwarePlatform() : nullptr;
        const std::optional<Version> version = hardware ? parseVersion(hardware->getVersion()) : std::nullopt;
        if (!version)
            return false;
        const auto latest = latest_.find(keyOf_(*hardware));
        return latest == latest_.end() || latest->second <= *version;
    }

private:
    using Key = std::tuple<std::string, std::string, std::string>;
    static Key keyOf_(const HZEPHardwarePlatform& hardware) { return {hardware.getVendor(), hardware.getBoardId(), hardware.getName()}; }

    std::map<Key, Version> latest_;
};

} // namespace

bool HZEPPlatformUtils::isLatestVersion(const HZEPPlatform* platform, const std::vector<HZEPPlatform*>& candidates) {
    return LatestVersions(candidates).contain(platform);
}

void HZEPPlatformUtils::filterOutOldPlatforms(std::vector<HZEPPlatform*>& platforms) {
    const LatestVersions latest(platforms);
    std::erase_if(platforms, [&latest](const HZEPPlatform* platform) { return !latest.contain(platform); });
}
