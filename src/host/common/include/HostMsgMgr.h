// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "HostExport.h"
#include "HostFault.h"

#include <functional>
#include <string>
#include <vector>

/// One message as sent: `key` is the catalog key with its format, for example "@74-60@%s".
struct HostMsg {
    std::string topic;
    unsigned severityMask;
    std::string key;
    std::vector<std::string> args;
    HostFault fault = {}; ///< what a program may want to know beside the text
};

/// The host's message service. One sink takes every message; by default it prints readable text to stderr.
class HOST_EXPORT HostMsgMgr {
public:
    /// Severity masks in rising order.
    enum Severity : unsigned {
        Info = 0x4000000,
        Warning = 0x8000000,
        CriticalWarning = 0x10000000,
        Error = 0x20000000,
    };

    using Sink = std::function<void(const HostMsg&)>;

    static HostMsgMgr& getGlobal();

    /// Replaces the sink and returns the one before. An empty sink drops messages.
    Sink setSink(Sink sink);

    /// Hands one message to the sink. What a sink itself sends is printed to stderr; what it raises goes on to the sender.
    void send(const std::string& topic, unsigned severityMask, const std::string& key, std::vector<std::string> args = {},
              HostFault fault = {});

    /// The catalog's words for a message, its arguments filled in; a key that the catalog lacks gives the key and the arguments.
    static std::string getText(const HostMsg& message);

    /// "info", "warning", "critical warning" or "error".
    static std::string getSeverityName(unsigned severityMask);

    /// Every key of the catalog, sorted.
    static std::vector<std::string> getCatalogKeys();

private:
    HostMsgMgr();
    Sink sink_;
};
