// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "HostMsgMgr.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

/// Keeps what is sent while it lives, in place of the sink before: "severity|key|argument|argument".
class MessageLog {
public:
    MessageLog() {
        before_ = HostMsgMgr::getGlobal().setSink([this](const HostMsg& message) {
            EXPECT_EQ(message.topic, "platform");
            std::string line = HostMsgMgr::getSeverityName(message.severityMask) + "|" + message.key;
            for (const std::string& arg : message.args)
                line += "|" + arg;
            lines.push_back(line);
        });
    }
    ~MessageLog() { HostMsgMgr::getGlobal().setSink(before_); }
    MessageLog(const MessageLog&) = delete;
    MessageLog& operator=(const MessageLog&) = delete;

    std::vector<std::string> lines;

private:
    HostMsgMgr::Sink before_;
};
