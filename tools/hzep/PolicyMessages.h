// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors

#pragma once

#include "HostFile.h"
#include "HostMsgMgr.h"

/// While it lives, a list of platform decisions that isn't installed is told for information alone: nobody needs one. One that can't be
/// read stays a warning.
class PolicyMessages {
public:
    PolicyMessages() {
        before_ = HostMsgMgr::getGlobal().setSink([this](HostMsg message) {
            if (message.key == "@74-49@%s" && !HostFile::exists(message.args.front()))
                message.severityMask = HostMsgMgr::Info;
            before_(message);
        });
    }
    ~PolicyMessages() { HostMsgMgr::getGlobal().setSink(before_); }
    PolicyMessages(const PolicyMessages&) = delete;
    PolicyMessages& operator=(const PolicyMessages&) = delete;

private:
    HostMsgMgr::Sink before_;
};
