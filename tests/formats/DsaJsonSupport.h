// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "HPLPlatform.h"
#include "HZEPDsaJsonReader.h"
#include "JSONObjectWriter.h"
#include "MessageLog.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>

inline std::string render(const HPLPlatform& platform) {
    zep_platform::JSONObjectWriter writer;
    platform.toJSON(writer);
    std::ostringstream out;
    writer.write(out);
    return out.str();
}

/// What a fresh platform writes after it has read the document.
inline std::string readAndRender(const std::string& document) {
    HPLPlatform platform;
    EXPECT_TRUE(HZEPDsaJsonReader(&platform).parseJsonString(document));
    return render(platform);
}
