// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors

#pragma once

#include "HZEPPlatform.h"
#include "HostFault.h"
#include "HostMsgMgr.h"
#include "PlatformLoader.h"

#include <memory>
#include <ostream>
#include <set>
#include <sstream>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

/// Where and why, as far as the exception knows.
HostFault getFaultOf(const std::exception& error);

/// Ends a verb: what() is for the person, the fault for the program that asked with --json.
class Failure : public std::runtime_error {
public:
    explicit Failure(const std::string& text, HostFault fault = {}) : std::runtime_error(text), fault_(std::move(fault)) {}
    const HostFault& getFault() const { return fault_; }

private:
    HostFault fault_;
};

/// The answer is no: not supported, no such key or member. Exit status 1.
class Negative : public Failure {
public:
    using Failure::Failure;
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

/// Wrong usage, or input that isn't there or can't be read. Exit status 2.
class Unusable : public Failure {
public:
    using Failure::Failure;
    /// In the words of the library, with its fault.
    explicit Unusable(const std::exception& error) : Failure(error.what(), getFaultOf(error)) {}
};

/// One run of the program: results go to stdout, all that the library says on the way to stderr.
///
/// Where a platform is wanted an operand may be a path or the name of an installed platform: load, open and getDocument take both.
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

    enum class Verbosity { Quiet, Usual, Verbose };
    /// Quiet leaves out warnings, and only Verbose has messages for information.
    static void setVerbosity(Verbosity verbosity);
    /// From now on an error is a JSON object of one line.
    static void setJsonErrors(bool areJson);

    /// One line on stderr, of the form "hzep: severity: text", such that nothing in it steers a terminal; further lines of the text
    /// are indented.
    static void say(const std::string& severity, const std::string& text);

    /// What is wrong with the command line, and where to look.
    static void sayUsage(const std::string& text);

    /// Says an error, with what it tells of the place.
    static void report(const std::exception& error);

    /// The path that the operand stands for, to be shown and opened: the operand itself when a file is there or it looks like a path,
    /// else the platform file of the installed platform of that name. Raises Unusable when there is none.
    static std::string find(const std::string& operand);

    /// The same where an archive is wanted, which must be there: a path, or the hardware archive of an installed platform.
    static std::string findArchive(const std::string& operand);

    /// Raises Unusable unless a regular file is at the path; `what` was expected there.
    static void checkReadable(const std::string& path, const std::string& what);

    /// The path as the loader and the services that load by path are to be asked, since they look for the files of a platform file named
    /// without a directory at the root.
    static std::string resolve(const std::string& path);

    /// The platform that the operand stands for; its document shows the path as it was given. Raises Unusable with the path, the place
    /// and the cause.
    std::shared_ptr<HZEPPlatform>
    load(const std::string& operand, zep_platform::PlatformLoader::HwMetadataMode mode = zep_platform::PlatformLoader::PreferAlternateJson);

    /// The same with its loader, for services that ask one.
    zep_platform::PlatformLoader
    open(const std::string& operand, zep_platform::PlatformLoader::HwMetadataMode mode = zep_platform::PlatformLoader::PreferAlternateJson);

    /// The platform's document. Raises Unusable as load does.
    std::string getDocument(const std::string& operand, bool isShort);

    /// What the library has sent so far; it is not said again.
    std::vector<HostMsg> takeMessages();

    /// "MEMBER:LINE: CAUSE", as far as they are known.
    static std::string describe(const HostFault& fault);

    /// stdout is a terminal.
    static bool isTerminal();

private:
    [[noreturn]] void fail(const std::string& path, const zep_platform::PlatformParseException& failure);
    [[noreturn]] void fail(const std::string& path, const char* conclusion, HostFault fault);
    void forwardMessages();
    void forwardPrints();

    /// Standard output goes elsewhere as long as this lives, also when the rest of the session can't be made.
    class Redirection {
    public:
        explicit Redirection(std::streambuf& to);
        ~Redirection();
        Redirection(const Redirection&) = delete;
        Redirection& operator=(const Redirection&) = delete;
        std::streambuf* getBefore() const { return before_; }

    private:
        std::streambuf* const before_;
    };

    std::stringbuf printed_; // what the library prints to standard output
    Redirection prints_;
    std::ostream out_;
    HostMsgMgr::Sink earlierSink_;
    std::vector<HostMsg> messages_;
    std::set<std::string> said_; // a warning that every platform of a list gives is said once
};
