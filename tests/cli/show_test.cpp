// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors

#include "CommandLine.h"

#include "hzep_c_api.h"

#include <gtest/gtest.h>

namespace {

class ShowExample : public testing::TestWithParam<std::string> {};

TEST_P(ShowExample, PrintsWhatTheCFunctionReturns) {
    const std::string path = getExamples() + "/" + GetParam();
    for (const bool isShort : {false, true}) {
        char* text = isShort ? hzep_get_short_platform_json(path.c_str()) : hzep_get_platform_json(path.c_str());
        ASSERT_NE(text, nullptr);
        const CommandResult shown = runCommand(getExamples(), "hzep show " + quote(path) + (isShort ? " --short" : ""));
        EXPECT_EQ(shown.status, 0) << shown.err;
        EXPECT_EQ(shown.out, text);
        EXPECT_EQ(shown.err, "");
        hzep_free_json_string(text);
    }
}

INSTANTIATE_TEST_SUITE_P(All, ShowExample,
                         testing::Values("kestrel/kestrel.zpfm", "minnow/minnow.zpfm", "trellis/trellis.zpfm", "pebble/pebble.zpfm",
                                         "kestrel/hw/kestrel.kar", "minnow/sw/minnow.spfm", "heron/heron.zpfm", "heron/hw/heron.dsa",
                                         "osprey/osprey.zpfm"));

} // namespace
