// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "HostErrors.h"
#include "HostTclTasks.h"
#include "TempDir.h"

#include <gtest/gtest.h>

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <sstream>
#include <thread>
#include <utility>
#include <vector>

using host::tcltasks::task_manager;

namespace {

/// The result, "! " and the error, and what was printed, of one evaluation.
std::string eval(const std::string& script) {
    std::ostringstream printed;
    std::streambuf* const before = std::cout.rdbuf(printed.rdbuf());
    std::string result;
    try {
        result = task_manager::eval_in_tcl(script, std::chrono::seconds(1));
    } catch (const HostError& error) {
        result = std::string("! ") + error.what();
    }
    std::cout.rdbuf(before);
    return result + (printed.str().empty() ? "" : "|" + printed.str());
}

TEST(TclTasks, GiveAResultOrOneError) {
    const TempDir dir;
    const std::string file = dir.write("x.tcl", "set a 1\nproc p {} {\n\n  nothing here\n}\nset b 2\nnonsense\n");
    const std::string overTime = "! Tcl: ended after 1 s, the longest that a script may take";
    const std::pair<std::string, std::string> cases[] = {
        {"", ""},
        {"expr {6 * 7}", "42"},
        {"puts ü; puts -nonewline b; set x c", "c|ü\nb"},
        {"set a 1\nerror {no such thing}", "! Tcl: no such thing (line 2)"},
        {"set x {", "! Tcl: missing close-brace (line 1)"},
        {"source " + file + "\n", "! Tcl: invalid command name \"nonsense\" (file \"" + file + "\" line 7)"},
        {"catch {source " + file + "}; p", "! Tcl: invalid command name \"nothing\" (procedure \"p\" line 3)"},
        {"source absent.tcl", "! Tcl: couldn't read file \"absent.tcl\": no such file or directory (line 1)"},
        {"while 1 {}", overTime},
        {"while 1 {catch {while 1 {set x 1}}}", overTime},
        {"vwait forever", overTime},
    };
    for (const auto& [script, expected] : cases)
        EXPECT_EQ(eval(script), expected) << script;
}

TEST(TclTasks, SurviveExit) {
    const std::string calls[] = {"exit",
                                 "exit 3",
                                 "catch {exit}",
                                 "catch {catch {exit 1} a b} c",
                                 "eval {uplevel #0 exit}",
                                 "set f catch; $f {$f exit}",
                                 "rename exit leave; leave",
                                 "proc p {} {try {exit} finally {puts no}}; p",
                                 "interp create a; a eval exit",
                                 "interp create a; catch {a eval {catch exit}}",
                                 "interp create {a}; interp create {a b}; interp eval {a b} exit",
                                 "interp create a; a eval {interp create b; b eval exit}",
                                 "interp create -safe a; interp invokehidden a exit",
                                 "after 1 exit; vwait forever",
                                 "apply {{} {coroutine c apply {{} {yield; exit}}; c}}"};
    for (const std::string& call : calls) {
        EXPECT_EQ(eval(call + "; puts no"), "") << call;
        EXPECT_EQ(eval("if 1 {" + call + "\nputs no}\nputs no"), "") << call;
    }
    EXPECT_EQ(eval("exit much"), "! Tcl: expected integer but got \"much\" (line 1)");
    EXPECT_EQ(eval("exit 1 2"), "! Tcl: wrong # args: should be \"exit ?returnCode?\" (line 1)");
}

TEST(TclTasks, RunOnAnyThread) {
    std::string result;
    std::thread([&] { result = eval("puts a; string repeat b 3"); }).join();
    EXPECT_EQ(result, "bbb|a\n");
}

TEST(TclTasks, LeaveNothingBehind) {
    const TempDir dir;
    const auto here = std::filesystem::current_path();
    ::setenv("HZEP_KEPT", "old", 1);
    ::setenv("HZEP_GONE", "old", 1);
    EXPECT_EQ(
        eval("set ::a 1; proc p {} {}; cd " + dir.path() + "; set env(HZEP_KEPT) new; set env(HZEP_NEW) x; unset env(HZEP_GONE); pwd"),
        dir.path());
    EXPECT_EQ(std::filesystem::current_path(), here);
    EXPECT_EQ(eval("list [info exists ::a] [info procs p] $env(HZEP_KEPT) $env(HZEP_GONE) [info exists env(HZEP_NEW)] [pwd]"),
              "0 {} old old 0 " + here.string());
    EXPECT_STREQ(std::getenv("HZEP_KEPT"), "old");
    EXPECT_EQ(std::getenv("HZEP_NEW"), nullptr);
    struct sigaction brokenPipe {};
    ::sigaction(SIGPIPE, nullptr, &brokenPipe);
    EXPECT_EQ(brokenPipe.sa_handler, SIG_DFL);
}

} // namespace
