// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors

#pragma once

#include "HZEPPlatform.h"
#include "HostMsgMgr.h"
#include "PlatformLoader.h"

#include <functional>
#include <memory>
#include <ostream>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

/// The answer is no: not found, not supported. Exit status 1.
class Negative : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// The answer is a list of findings, already printed; the text counts them.
class Findings : public Negative {
public:
    using Negative::Negative;
};

/// The answer is no, and is printed already.
class Answered : public Negative {
public:
    Answered() : Negative("") {}
};

/// Wrong usage, or input that can't be read. Exit status 2.
class Unusable : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// One run of the program: results go to stdout, all that the library says on the way to stderr.
class Session {
public:
    Session();
    ~Session();
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    /// Where the result goes.
    std::ostream& out() { return out_; }

    /// Flushes the result; raises Unusable when it could not be written whole.
    void finish();

    /// One line on stderr, of the form "hzep: severity: text".
    static void say(const std::string& severity, const std::string& text);

    /// The platform at the path. Raises Unusable with the path, the place and the cause.
    std::shared_ptr<HZEPPlatform>
    load(const std::string& path, zep_platform::PlatformLoader::HwMetadataMode mode = zep_platform::PlatformLoader::PreferAlternateJson);

    /// The same with its loader, for services that ask one.
    zep_platform::PlatformLoader
    open(const std::string& path, zep_platform::PlatformLoader::HwMetadataMode mode = zep_platform::PlatformLoader::PreferAlternateJson);

    /// Asks the library about the file at the path. Raises Unusable as load does when the question answers false or raises, or when
    /// a loader said meanwhile that it failed.
    void ask(const std::string& path, const std::function<bool()>& question);

    /// What the C entry point returns for the path. Raises Unusable as load does.
    std::string getDocument(const std::string& path, bool isShort);

    /// What the library has sent so far as an error; it is not said again.
    std::vector<HostMsg> takeErrors();

    /// stdout is a terminal.
    static bool isTerminal();

private:
    std::string describeFailure(const std::string& path, const std::string& conclusion);
    void forwardMessages();

    std::ostream out_;
    HostMsgMgr::Sink earlierSink_;
    std::vector<HostMsg> messages_;
    std::set<std::string> said_; // a warning that every platform of a list gives is said once
};
