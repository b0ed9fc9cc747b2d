// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors

#include "Session.h"

#include "HZEPHardwarePlatform.h"
#include "HostErrors.h"
#include "HostFile.h"
#include "HostText.h"
#include "JSONObjectWriter.h"
#include "Repository.h"
#include "lmx60.h"

#include <boost/property_tree/json_parser/error.hpp>

#include <algorithm>
#include <filesystem>
#include <iostream>
#include <iterator>
#include <unistd.h>

using zep_platform::PlatformLoader;
using zep_platform::PlatformParseException;

namespace {

Session::Verbosity verbosity = Session::Verbosity::Usual;
bool areErrorsJson = false;

std::string join(const std::vector<std::string>& texts) {
    std::string joined;
    for (const std::string& text : texts)
        joined += (joined.empty() ? "" : "; ") + text;
    return joined;
}

bool contains(const std::string& text, const std::string& part) {
    return text.find(part) != text.npos;
}

bool isSame(const HostFault& a, const HostFault& b) {
    return a.file == b.file && a.member == b.member && a.line == b.line && a.column == b.column && a.cause == b.cause;
}

void sayLines(const std::string& heading, const std::string& text) {
    std::istringstream lines(text);
    std::string said = heading;
    bool isFirst = true;
    for (std::string line; std::getline(lines, line); isFirst = false)
        said += (isFirst ? "" : "\n  ") + HostText::makePrintable(line);
    std::cerr << said + "\n" << std::flush;
}

void sayJson(const std::string& text, const HostFault& fault) {
    zep_platform::JSONObjectWriter error;
    const auto add = [&](const char* name, const std::string& value) { error.addKey(name, HostText::toUtf8(value)); };
    add("message", text);
    add("file", fault.file);
    add("member", fault.member);
    add("line", fault.line > 0 ? std::to_string(fault.line) : "");
    add("column", fault.column > 0 ? std::to_string(fault.column) : "");
    add("cause", fault.cause);
    zep_platform::JSONObjectWriter root;
    root.addKey("error", std::move(error));
    std::stringstream document;
    root.write(document);
    // On one line, so that it is found among others; a line end within a text is an escape.
    std::string line;
    for (std::string part; std::getline(document, part);)
        line += (line.empty() ? "" : " ") + part.substr(std::min(part.find_first_not_of(' '), part.size()));
    std::cerr << line + "\n" << std::flush;
}

} // namespace

HostFault getFaultOf(const std::exception& error) {
    if (const auto* failure = dynamic_cast<const Failure*>(&error))
        return failure->getFault();
    if (const auto* host = dynamic_cast<const HostErrorBase*>(&error))
        return host->getFault();
    if (const auto* parse = dynamic_cast<const PlatformParseException*>(&error))
        return parse->getFault();
    if (const auto* json = dynamic_cast<const boost::property_tree::json_parser::json_parser_error*>(&error))
        return {json->filename(), "", json->line(), 0, json->message()};
    return {};
}

Session::Redirection::Redirection(std::streambuf& to) : before_(std::cout.rdbuf(&to)) {}

Session::Redirection::~Redirection() {
    std::cout.rdbuf(before_);
}

Session::Session() : prints_(printed_), out_(prints_.getBefore()) {
    earlierSink_ = HostMsgMgr::getGlobal().setSink([this](const HostMsg& message) { messages_.push_back(message); });
}

Session::~Session() {
    HostMsgMgr::getGlobal().setSink(std::move(earlierSink_));
}

void Session::finish() {
    forwardMessages();
    if (!out_.flush())
        throw Unusable("the result could not be written to standard output");
}

void Session::setVerbosity(Verbosity wanted) {
    verbosity = wanted;
}

void Session::setJsonErrors(bool areJson) {
    areErrorsJson = areJson;
}

void Session::say(const std::string& severity, const std::string& text) {
    if (severity == "error" && areErrorsJson)
        return sayJson(text, {});
    const bool isInfo = severity == "info";
    if ((isInfo && verbosity != Verbosity::Verbose) || (severity.ends_with("warning") && verbosity == Verbosity::Quiet))
        return;
    sayLines("hzep: " + severity + ": ", text);
}

void Session::sayUsage(const std::string& text) {
    if (areErrorsJson)
        return sayJson(text, {});
    sayLines("", text);
    sayLines("", "Run with --help for more information.");
}

void Session::report(const std::exception& error) {
    if (areErrorsJson)
        sayJson(error.what(), getFaultOf(error));
    else
        say("error", error.what());
}

std::string Session::find(const std::string& operand) {
    return findPlatform(operand);
}

std::string Session::findArchive(const std::string& operand) {
    const std::string path = find(operand);
    if (path == operand) {
        checkReadable(path, "an archive (.dsa, .kar)");
        return path;
    }
    std::string archive;
    try {
        archive = PlatformLoader(path).getHardwarePlatformFile();
    } catch (const std::exception& error) {
        throw Unusable(path + ": " + error.what(), getFaultOf(error));
    }
    if (archive.empty())
        throw Unusable(path + ": names no hardware archive of the whole platform");
    return archive;
}

void Session::checkReadable(const std::string& path, const std::string& what) {
    const auto refuse = [&](const std::string& cause) { throw Unusable(path + ": " + cause, {path, "", 0, 0, cause}); };
    std::error_code error;
    if (path.empty())
        throw Unusable("the path is empty");
    if (!HostFile::exists(path))
        refuse(std::filesystem::is_symlink(path, error) ? "is a link that leads nowhere" : "no such file");
    if (!HostFile::isRegularFile(path))
        refuse((HostFile::isDir(path) ? "is a directory; " : "is no regular file; ") + what + " was expected");
}

std::string Session::resolve(const std::string& path) {
    const std::string extension = std::filesystem::path(path).extension().string();
    const bool isPlatformFile = !HZEPHardwarePlatform::isValidPlatformExt(extension) && extension != ".spfm";
    return isPlatformFile && !path.empty() && !contains(path, "/") ? "./" + path : path;
}

std::string Session::describe(const HostFault& fault) {
    std::string place = fault.member;
    if (fault.line > 0)
        place += (place.empty() ? "line " : ":") + std::to_string(fault.line);
    return place + (place.empty() ? "" : ": ") + fault.cause;
}

bool Session::isTerminal() {
    return isatty(STDOUT_FILENO) == 1;
}

void Session::forwardPrints() {
    if (const std::string text = printed_.str(); !text.empty())
        sayLines("", text);
    printed_.str("");
}

void Session::forwardMessages() {
    forwardPrints();
    for (const HostMsg& message : std::exchange(messages_, {}))
        if (const std::string text = HostMsgMgr::getText(message); said_.insert(text).second)
            say(HostMsgMgr::getSeverityName(message.severityMask), text);
}

std::vector<HostMsg> Session::takeMessages() {
    return std::exchange(messages_, {});
}

std::shared_ptr<HZEPPlatform> Session::load(const std::string& operand, PlatformLoader::HwMetadataMode mode) {
    return open(operand, mode).load();
}

PlatformLoader Session::open(const std::string& operand, PlatformLoader::HwMetadataMode mode) {
    const std::string path = find(operand);
    checkReadable(path, "a platform file, an archive or a software file");
    forwardMessages();
    const std::string resolved = resolve(path);
    try {
        PlatformLoader loader(resolved, mode);
        const auto platform = loader.load();
        if (!platform)
            fail(path, *loader.getFailure());
        if (resolved != path)
            platform->setPlatformFile(path);
        forwardMessages();
        return loader;
    } catch (const Failure&) {
        throw;
    } catch (const std::bad_alloc&) {
        throw;
    } catch (const PlatformParseException& error) {
        fail(path, error);
    } catch (const lmx60::c_lmx_reader_exception& error) {
        fail(path, error.what(), {path, "", static_cast<std::size_t>(std::max(0, error.get_line())), 0, error.what()});
    } catch (const lmx60::c_lmx_exception& error) {
        fail(path, error.what(), {path, "", 0, 0, error.what()});
    } catch (const std::exception& error) {
        fail(path, error.what(), getFaultOf(error));
    }
}

std::string Session::getDocument(const std::string& operand, bool isShort) {
    std::ostringstream text;
    zep_platform::JSONObjectWriter writer;
    {
        // It goes before the text is laid out: a large document is never held in all three forms.
        const auto platform = load(operand);
        if (isShort) {
            writer.addKey("uniqueName", platform->getUniqueName());
            writer.addKey("file", platform->getPlatformFile());
            writer.addKey("description", platform->getDescription());
        } else {
            writer.writeObject(*platform);
        }
    }
    writer.write(text);
    std::string document = std::move(text).str();
    return HostText::isUtf8(document) ? document : HostText::toUtf8(document);
}

/// One line: the path, the place, the cause in the words of the message about it if there is one, then what it led to.
void Session::fail(const std::string& path, const PlatformParseException& failure) {
    HostFault fault = failure.getFault();
    const std::string conclusion = failure.what();
    std::string words;
    for (HostMsg& message : std::exchange(messages_, {}))
        if (isSame(message.fault, fault) && !contains(HostMsgMgr::getText(message), conclusion))
            words = HostMsgMgr::getText(message);
        else if (message.fault.file != fault.file || fault.file.empty())
            messages_.push_back(std::move(message));
    // The readers print the cause as well.
    if (!fault.cause.empty())
        printed_.str("");
    forwardMessages();

    const bool isOwn = fault.file == path || fault.file == resolve(path);
    if (isOwn)
        fault.file = path;
    const std::string file = isOwn || fault.file.empty() || contains(conclusion, fault.file) ? "" : fault.file + ": ";
    std::string text;
    if (fault.cause.empty() || contains(conclusion, fault.cause))
        text = path + ": " + file + conclusion;
    else if (isOwn && fault.member.empty())
        text = path + (fault.line > 0 ? ":" + std::to_string(fault.line) : "") + ": " + fault.cause + " (" + conclusion + ")";
    else
        text =
            path + ": " + (contains(words, fault.file) ? "" : file) + (words.empty() ? describe(fault) : words) + " (" + conclusion + ")";
    throw Unusable(text, fault);
}

/// The same for what a reader let escape: the messages tell the causes.
void Session::fail(const std::string& path, const char* conclusion, HostFault fault) {
    std::vector<std::string> causes;
    for (const HostMsg& message : std::exchange(messages_, {}))
        if (message.severityMask >= HostMsgMgr::CriticalWarning) {
            causes.push_back(HostMsgMgr::getText(message));
            if (!message.fault.cause.empty())
                fault = message.fault;
        }
    forwardPrints();
    const std::string text = causes.empty() ? conclusion : join(causes) + " (" + conclusion + ")";
    throw Unusable(text.starts_with(path + ":") ? text : path + ": " + text, std::move(fault));
}
