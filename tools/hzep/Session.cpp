// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors

#include "Session.h"

#include "HZEPHardwarePlatform.h"
#include "HostErrors.h"
#include "HostFile.h"
#include "HostZip.h"
#include "PlatformLoader.h"
#include "hzep_c_api.h"
#include "lmx60.h"

#include <iostream>
#include <unistd.h>

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

/// What can be told about an archive that no reader had a word for.
std::string describeArchive(const std::string& archive) {
    if (archive.empty() || !HostFile::exists(archive))
        return "";
    if (HostFile::isDir(archive))
        return archive + ": is a directory, not an archive";
    const std::string ext = HostFile(archive).getExt();
    if (!HZEPHardwarePlatform::isValidPlatformExt("." + ext))
        return "";
    if (const std::string fault = HostZip::getFault(archive); !fault.empty())
        return archive + ": " + fault;
    for (const char* prefix : {"alt_", ""}) {
        const std::string entry = prefix + ext + ".json";
        if (HostZip::containsFile(archive, entry))
            return archive + ": " + entry + ": the metadata is empty";
    }
    return archive + ": holds no metadata: no entry \"" + ext + ".json\" or \"" + ext + ".xml\"";
}

/// The archive that loading the path reads.
std::string getHardwareFile(const std::string& path) {
    const std::string named = PlatformLoader(path, PlatformLoader::PreferAlternateJson).getHardwarePlatformFile();
    return named.empty() ? path : named;
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
    for (const HostMsg& message : messages_)
        say(HostMsgMgr::getSeverityName(message.severityMask), HostMsgMgr::getText(message));
    messages_.clear();
}

template <class Read>
auto Session::read(const std::string& path, Read read) {
    if (path.empty())
        throw Unusable("the path is empty");
    if (!HostFile::exists(path))
        throw Unusable(path + ": no such file");
    if (HostFile::isDir(path))
        throw Unusable(path + ": is a directory; a platform file, an archive or a software file was expected");
    try {
        if (auto result = read()) {
            forwardMessages();
            return result;
        }
    } catch (const lmx60::c_lmx_exception& error) {
        throw Unusable(describeFailure(path, error.what()));
    } catch (const std::exception& error) {
        throw Unusable(describeFailure(path, error.what()));
    }
    std::erase_if(messages_, isMissingXml);
    const bool isUnexplained = messages_.size() == 1;
    const std::string failure = describeFailure(path, "it could not be read");
    const std::string cause = isUnexplained ? describeArchive(getHardwareFile(path)) : "";
    throw Unusable(cause.empty() ? failure : failure + ": " + cause);
}

std::shared_ptr<HZEPPlatform> Session::load(const std::string& path) {
    return read(path, [&] { return PlatformLoader(path, PlatformLoader::PreferAlternateJson).load(); });
}

std::string Session::getDocument(const std::string& path, bool isShort) {
    const auto document = read(path, [&] {
        char* text = isShort ? hzep_get_short_platform_json(path.c_str()) : hzep_get_platform_json(path.c_str());
        return std::unique_ptr<char, decltype(&hzep_free_json_string)>(text, &hzep_free_json_string);
    });
    return document.get();
}

// One line out of what was gathered: path, line, the causes in the order they were met, then what they led to.
std::string Session::describeFailure(const std::string& path, const std::string& conclusion) {
    std::string place = path;
    std::string result = conclusion;
    std::vector<std::string> causes;
    for (const HostMsg& message : messages_) {
        if (message.key == kNotLoaded)
            result = message.args.empty() ? "" : message.args.front();
        else if (message.key == kPlatformFileFault && message.args.size() > 1)
            place += ":" + message.args[1];
        else
            causes.push_back(HostMsgMgr::getText(message));
    }
    messages_.clear();
    if (causes.empty())
        return place + ": " + result;
    return place + ": " + join(causes) + (result.empty() ? "" : " (" + result + ")");
}
