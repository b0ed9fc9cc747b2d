// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "HZEPNearNames.h"
#include "HostErrors.h"
#include "HostFileUtils.h"
#include "LintDocuments.h"
#include "LintText.h"

#include <algorithm>
#include <filesystem>
#include <map>

namespace {

namespace fs = std::filesystem;
using lint::Rule;

constexpr const char* kIgnoreFile = ".hzeplint";
/// Largest file of allowances, in bytes; how deep folders are looked through, and how many files are taken.
constexpr std::size_t kMaxIgnoreFile = std::size_t{1} << 20;
constexpr int kMaxFolders = 32;
constexpr std::size_t kMaxFiles = 100'000;

bool isKnownName(const std::string& path) {
    const std::string name = fs::path(path).filename().string();
    return lint::isArchiveName(name) || lint::getKindByName(name).has_value();
}

bool hasPlatform(const std::vector<std::string>& files) {
    return std::any_of(files.begin(), files.end(), [](const std::string& file) { return file.ends_with(".zpfm"); });
}

void walk(const std::string& folder, int depth, std::vector<std::string>& files) {
    const std::vector<std::string> here = lint::listFolder(folder, false);
    if (depth > 0 && hasPlatform(here))
        return;
    for (const std::string& file : here)
        if (files.size() < kMaxFiles && isKnownName(file))
            files.push_back(file);
    if (depth < kMaxFolders)
        for (const std::string& below : lint::listFolder(folder, true))
            walk(below, depth + 1, files);
}

/// Platform files anywhere below; other files only where no folder above holds a platform file.
void listUnits(const std::string& folder, int depth, bool isInPlatform, std::vector<std::string>& files) {
    const std::vector<std::string> here = lint::listFolder(folder, false);
    const bool isOwn = isInPlatform || hasPlatform(here);
    for (const std::string& file : here)
        if (files.size() < kMaxFiles && (isOwn ? file.ends_with(".zpfm") : isKnownName(file)))
            files.push_back(file);
    if (depth < kMaxFolders)
        for (const std::string& below : lint::listFolder(folder, true))
            listUnits(below, depth + 1, isOwn, files);
}

} // namespace

namespace lint {

std::vector<std::string> listFolder(const std::string& folder, bool folders) {
    std::vector<std::string> found;
    std::error_code error;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error)) {
        const fs::file_status status = entry->symlink_status(error);
        if (folders ? fs::is_directory(status) : fs::is_regular_file(status))
            found.push_back(entry->path().string());
    }
    std::sort(found.begin(), found.end());
    return found;
}

void listBelow(const std::string& folder, std::vector<std::string>& files) {
    walk(folder, 0, files);
}

void applyIgnores(const std::string& folder, bool isWhole, std::vector<HZEPMetadataLint::Finding>& found) {
    const std::string file = folder.empty() ? kIgnoreFile : folder + "/" + kIgnoreFile;
    std::error_code error;
    if (!fs::is_regular_file(file, error) || fs::file_size(file, error) > kMaxIgnoreFile)
        return;
    Findings own(file);
    std::string text;
    try {
        text = HostFileUtils::readFile(file);
    } catch (const HostError&) {
        return; // gone meanwhile
    }
    std::vector<std::string> ids;
    for (const HZEPMetadataLint::Rule& rule : HZEPMetadataLint::getRules())
        ids.emplace_back(rule.id);
    std::map<std::string, std::pair<std::size_t, bool>> ignored; // the line, and whether it was needed
    std::size_t line = 0;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t end = std::min(text.find('\n', at), text.size());
        std::string words = text.substr(at, end - at);
        at = end + 1;
        ++line;
        words.erase(words.find_last_not_of(" \t\r") + 1);
        const std::size_t start = words.find_first_not_of(" \t");
        if (start == std::string::npos || words[start] == '#')
            continue;
        const std::size_t blank = std::min(words.find_first_of(" \t", start), words.size());
        const std::string id = words.substr(start, blank - start);
        const bool isKnown = HZEPMetadataLint::findRule(id) != nullptr;
        if (!isKnown)
            own.add(Rule::IgnoreForm, {line, start + 1}, "there is no rule " + quote(id) + HZEPNearNames::suggest(id, ids, 1));
        else if (words.find_first_not_of(" \t", blank) == std::string::npos)
            own.add(Rule::IgnoreForm, {line, start + 1}, "rule " + quote(id) + " is allowed without a reason", {"RULE REASON", "", {}});
        else
            ignored.try_emplace(id, line, false);
    }
    std::erase_if(found, [&ignored](const HZEPMetadataLint::Finding& finding) {
        const auto entry = ignored.find(finding.rule->id);
        if (entry == ignored.end())
            return false;
        return entry->second.second = true;
    });
    for (const auto& [id, entry] : ignored)
        if (isWhole && !entry.second)
            own.add(Rule::UnusedIgnore, {entry.first, 1}, "rule " + quote(id) + " finds nothing here");
    for (auto& finding : own.take(text))
        found.push_back(std::move(finding));
}

} // namespace lint

std::vector<std::string> HZEPMetadataLint::list(const std::string& directory) {
    std::error_code error;
    if (fs::directory_iterator(directory, error); error)
        throw HostError(directory + ": " + error.message());
    std::vector<std::string> files;
    listUnits(directory, 0, false, files);
    return files;
}
