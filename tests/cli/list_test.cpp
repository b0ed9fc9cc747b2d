// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors

#include "CommandLine.h"

#include "NativeCatalogService.h"

#include <gtest/gtest.h>

namespace {

TEST(ListVerb, PrintsTheDocumentOfTheService) {
    const std::string dirs = getExamples() + "/kestrel:" + getExamples() + "/trellis";
    for (const bool all : {false, true}) {
        const CommandResult listed =
            runCommand(getExamples(), "hzep list kestrel trellis --no-defaults --json" + std::string(all ? " --all" : ""));
        EXPECT_EQ(listed.status, 0) << listed.err;
        EXPECT_EQ(listed.out, zep::platform::NativeCatalogService().getAllAsJsonStr(dirs, all, false));
    }
}

} // namespace
