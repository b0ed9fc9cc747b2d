// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors

#include "Session.h"

#include "HZEPHardwarePlatform.h"
#include "HZEPPlatformXMLReader.h"
#include "HZEPReconfigurablePartition.h"
#include "HostErrors.h"
#include "HostFile.h"
#include "HostZip.h"
#include "hzep_c_api.h"
#include "lmx60.h"

#include <algorithm>
#include <iostream>
#include <iterator>
#include <optional>
#include <unistd.h>
#include <utility>

using zep_platform::PlatformLoader;

namespace {

constexpr const char* kNotLoaded = "@74-60@%s";
constexpr const char* kPlatformFileFault = "@74-9@%s";
constexpr const char* kMetadataFault = "@74-65@%s%s%s";

/// XML metadata is looked for last, so an archive without any metadata is reported for having none in XML.
bool isMissingXml(const HostMsg& message) {
    return message.key == kMetadataFault && message.args.size() > 1 && !HostZip::containsFile(message.args[1], message.args[0]);
}

std::string join(const std::vector<std::string>& texts) {
    std::string joined;
    for (const std::string& text : texts)
        joined += (joined.empty() ? "" : "; ") + text;
    return joined;
}

/// What is wrong with an archive that no reader had a word for; "" when nothing is to be seen.
std::string describeArchive(const std::string& archive) {
    if (HostFile::isDir(archive))
        return "is a directory, not an archive";
    const std::string ext = HostFile(archive).getExt();
    if (!HostFile::exists(archive) || !HZEPHardwarePlatform::isValidPlatformExt("." + ext))
        return "";
    if (std::string fault = HostZip::getFault(archive); !fault.empty())
        return fault;
    const std::string primary = ext + ".json";
    for (const std::string& entry : {"alt_" + primary, primary})
        if (HostZip::containsFile(archive, entry))
            return HostZip::readMember(archive, entry).empty() ? entry + " is empty" : "";
    const std::string xml = ext + ".xml";
    if (HostZip::containsFile(archive, xml))
        return "";
    return "holds no metadata: there is no entry \"" + primary + "\" or \"" + xml + "\"";
}

/// The archives that loading the path reads, itself or those that a platform file names.
std::vector<std::string> getArchives(const std::string& path) {
    if (HZEPHardwarePlatform::isValidPlatformExt("." + HostFile(path).getExt()))
        return {path};
    HZEPPlatform platform;
    if (!HZEPPlatformXMLReader(path, &platform).parseFile())
        return {};
    std::vector<std::string> archives = {platform.getHardwarePlatformFile()};
    std::vector<HZEPReconfigurablePartition*> partitions;
    platform.getReconfigurablePartitions(partitions);
    for (const HZEPReconfigurablePartition* partition : partitions)
        archives.insert(archives.end(), {partition->getHardwarePlatformFile(), partition->getHardwareEmulationPlatformFile()});
    return archives;
}

/// The first archive with a fault and what it is, as one text; the path itself is not named again.
std::string findFaultyArchive(const std::string& path) {
    for (const std::string& archive : getArchives(path))
        if (const std::string fault = describeArchive(archive); !fault.empty())
            return archive == path ? fault : archive + ": " + fault;
    return "";
}

} // namespace

Session::Session() : out_(std::cout.rdbuf(std::cerr.rdbuf())) {
    earlierSink_ = HostMsgMgr::getGlobal().setSink([this](const HostMsg& message) { messages_.push_back(message); });
}

Session::~Session() {
    HostMsgMgr::getGlobal().setSink(std::move(earlierSink_));
    std::cout.rdbuf(out_.rdbuf());
}

void Session::finish() {
    forwardMessages();
    if (!out_.flush())
        throw Unusable("the result could not be written to standard output");
}

void Session::say(const std::string& severity, const std::string& text) {
    std::cerr << "hzep: " << severity << ": " << text << std::endl;
}

bool Session::isTerminal() {
    return isatty(STDOUT_FILENO) == 1;
}

void Session::forwardMessages() {
    for (const HostMsg& message : std::exchange(messages_, {}))
        if (const std::string text = HostMsgMgr::getText(message); said_.insert(text).second)
            say(HostMsgMgr::getSeverityName(message.severityMask), text);
}

std::vector<HostMsg> Session::takeErrors() {
    const auto errors = std::stable_partition(messages_.begin(), messages_.end(),
                                              [](const HostMsg& message) { return message.severityMask < HostMsgMgr::Error; });
    std::vector<HostMsg> taken(std::make_move_iterator(errors), std::make_move_iterator(messages_.end()));
    messages_.erase(errors, messages_.end());
    return taken;
}

void Session::ask(const std::string& path, const std::function<bool()>& question) {
    if (path.empty())
        throw Unusable("the path is empty");
    if (!HostFile::exists(path))
        throw Unusable(path + ": no such file");
    if (HostFile::isDir(path))
        throw Unusable(path + ": is a directory; a platform file, an archive or a software file was expected");
    try {
        const bool isAnswered = question();
        if (isAnswered &&
            std::none_of(messages_.begin(), messages_.end(), [](const HostMsg& message) { return message.key == kNotLoaded; }))
            return forwardMessages();
    } catch (const lmx60::c_lmx_exception& error) {
        throw Unusable(describeFailure(path, error.what()));
    } catch (const std::exception& error) {
        throw Unusable(describeFailure(path, error.what()));
    }
    throw Unusable(describeFailure(path, "it could not be read"));
}

std::shared_ptr<HZEPPlatform> Session::load(const std::string& path, PlatformLoader::HwMetadataMode mode) {
    std::shared_ptr<HZEPPlatform> platform;
    ask(path, [&] { return (platform = PlatformLoader(path, mode).load()) != nullptr; });
    return platform;
}

PlatformLoader Session::open(const std::string& path, PlatformLoader::HwMetadataMode mode) {
    std::optional<PlatformLoader> loader;
    ask(path, [&] { return loader.emplace(path, mode).load() != nullptr; });
    return *std::move(loader);
}

std::string Session::getDocument(const std::string& path, bool isShort) {
    std::string document;
    ask(path, [&] {
        char* const text = isShort ? hzep_get_short_platform_json(path.c_str()) : hzep_get_platform_json(path.c_str());
        const std::unique_ptr<char, decltype(&hzep_free_json_string)> owner(text, &hzep_free_json_string);
        if (text)
            document = text;
        return text != nullptr;
    });
    return document;
}

// One line out of what was gathered: path, line, the causes in the order they were met, then what they led to.
std::string Session::describeFailure(const std::string& path, const std::string& conclusion) {
    std::erase_if(messages_, isMissingXml);
    std::string place = path;
    std::string result = conclusion;
    std::vector<std::string> causes;
    for (const HostMsg& message : std::exchange(messages_, {})) {
        if (message.key == kNotLoaded)
            result = message.args.front();
        else if (message.key == kPlatformFileFault)
            place += ":" + message.args.back();
        else
            causes.push_back(HostMsgMgr::getText(message));
    }
    if (causes.empty() && place == path)
        if (std::string fault = findFaultyArchive(path); !fault.empty())
            causes.push_back(std::move(fault));
    messages_.clear();
    return place + ": " + (causes.empty() ? result : join(causes) + " (" + result + ")");
}
