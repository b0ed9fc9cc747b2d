// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors

#include "ListManager.h"
#include "Table.h"

#include "HZEPHardwarePlatform.h"
#include "HZEPPlatformMgr.h"
#include "HostText.h"
#include "JSONListWriter.h"
#include "JSONObjectWriter.h"

#include <algorithm>
#include <iostream>
#include <set>

namespace {

using Platforms = std::vector<HZEPPlatform*>;

/// Messages whose cause the manager's own texts tell as well, as they do what readers print.
const std::set<std::string> kToldInTexts = {"@74-3@%s", "@74-4@%s", "@74-9@%s", "@74-14@%s%s", "@74-51@%s%d", "@74-55@%s%s%s"};

/// Keeps both from being said while it lives.
class WithoutDoubles {
public:
    WithoutDoubles() : printed_(std::cout.rdbuf(nullptr)) {
        before_ = HostMsgMgr::getGlobal().setSink([this](const HostMsg& message) {
            if (kToldInTexts.contains(message.key))
                return;
            hasWarned_ |= message.severityMask >= HostMsgMgr::Warning;
            before_(message);
        });
    }
    ~WithoutDoubles() {
        HostMsgMgr::getGlobal().setSink(before_);
        std::cout.rdbuf(printed_);
    }
    /// Something was left out, and that is said.
    bool hasWarned() const { return hasWarned_; }
    WithoutDoubles(const WithoutDoubles&) = delete;
    WithoutDoubles& operator=(const WithoutDoubles&) = delete;

private:
    std::streambuf* printed_;
    HostMsgMgr::Sink before_;
    bool hasWarned_ = false;
};

std::string getVersion(const HZEPPlatform& platform) {
    const HZEPHardwarePlatform* hardware = platform.getHardwarePlatform();
    return platform.isPartial() && hardware ? hardware->getVersion() : platform.getVersion();
}

const char* getKind(const HZEPPlatform& platform) {
    return platform.isPartial() ? "archive" : "platform";
}

void printDocument(Session& session, const Platforms& platforms, const std::vector<std::string>& errors) {
    zep_platform::JSONListWriter list;
    for (const HZEPPlatform* platform : platforms) {
        zep_platform::JSONObjectWriter each;
        each.addKey("baseName", HostText::toUtf8(platform->getPlatformBaseName()));
        each.addKey("version", getVersion(*platform));
        each.addKey("type", platform->getTypeString());
        each.addKey("kind", getKind(*platform));
        each.addKey("platformFile", HostText::toUtf8(platform->getPlatformFile()));
        list.addItem(std::move(each));
    }
    zep_platform::JSONListWriter texts;
    for (const std::string& text : errors)
        texts.addItem(HostText::toUtf8(text));
    zep_platform::JSONObjectWriter root;
    root.addKey("platforms", std::move(list));
    root.addKey("errors", std::move(texts));
    root.write(session.out());
}

void printTable(Session& session, const Platforms& platforms) {
    Table table({"NAME", "VERSION", "TYPE", "KIND", "FILE"});
    for (const HZEPPlatform* platform : platforms) {
        const std::string version = getVersion(*platform);
        table.add({platform->getPlatformBaseName(), version.empty() ? "-" : version, platform->getTypeString(), getKind(*platform),
                   platform->getPlatformFile()});
    }
    table.print(session.out(), Session::isTerminal());
}

/// On one line, whatever lines and names are in it.
std::string flatten(std::string text) {
    text.erase(text.find_last_not_of('\n') + 1);
    std::replace(text.begin(), text.end(), '\n', ' ');
    return HostText::makePrintable(text);
}

/// The manager has a text of the reader, and behind it one that names the platform: they tell of one fault.
std::vector<std::string> joinPairs(const std::vector<std::string>& texts) {
    std::vector<std::string> joined;
    bool isCause = false;
    for (const std::string& text : texts) {
        const bool isConclusion = text.starts_with("Encountered Errors while parsing ");
        if (!isConclusion || !isCause)
            joined.push_back(flatten(text));
        else if (const std::string file = text.substr(text.find(": ") + 2, text.rfind(". Unable") - text.find(": ") - 2);
                 joined.back().find(HostText::makePrintable(file)) == text.npos)
            joined.back() += " (" + flatten(text) + ")";
        isCause = text.starts_with("Error parsing ");
    }
    return joined;
}

} // namespace

void listByManager(Session& session, const std::vector<std::string>& dirs, bool defaults, bool json) {
    std::vector<std::string> all;
    if (defaults)
        HZEPPlatformMgr::getDefaultZepPlatformDirs(all);
    all.insert(all.end(), dirs.begin(), dirs.end());
    HZEPPlatformMgr manager;
    bool isBroken = false;
    {
        const WithoutDoubles quiet;
        manager.addPlatformsFromDirs(all);
        isBroken = quiet.hasWarned();
    }
    Platforms platforms;
    Platforms archives;
    manager.getPlatforms(platforms);
    manager.getDSAPlatforms(archives);
    platforms.insert(platforms.end(), archives.begin(), archives.end());
    std::vector<std::string> errors;
    manager.getParsingErrorMsgs(errors);

    if (json) {
        printDocument(session, platforms, errors);
    } else {
        printTable(session, platforms);
        for (const std::string& error : joinPairs(errors))
            Session::say("error", error);
    }
    session.finish();
    if (platforms.empty() && (isBroken || !errors.empty()))
        throw Answered();
}
