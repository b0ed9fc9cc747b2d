// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "HPLPlatform.h"
#include "HZEPDsaJsonReader.h"
#include "HostMsgMgr.h"
#include "JSONObjectWriter.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

/// Keeps what is sent while it lives: "key|argument|argument". The mask and topic are the same for all of the reader's messages.
class MessageLog {
public:
    MessageLog() {
        before_ = HostMsgMgr::getGlobal().setSink([this](const HostMsg& message) {
            EXPECT_EQ(message.topic, "platform");
            EXPECT_EQ(message.severityMask, 0x10000000u);
            std::string line = message.key;
            for (const std::string& arg : message.args)
                line += "|" + arg;
            lines.push_back(line);
        });
    }
    ~MessageLog() { HostMsgMgr::getGlobal().setSink(before_); }

    std::vector<std::string> lines;

private:
    HostMsgMgr::Sink before_;
};

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
