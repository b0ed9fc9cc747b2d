// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "HostMsgMgr.h"

#include <cstdio>
#include <map>
#include <string_view>

extern const char hostMessageCatalog[];

namespace {

using Catalog = std::map<std::string, std::string, std::less<>>;

const Catalog& catalog() {
    static const Catalog* const parsed = [] {
        auto* result = new Catalog;
        std::string_view rest = hostMessageCatalog;
        while (!rest.empty()) {
            const auto end = rest.find('\n');
            const std::string_view line = rest.substr(0, end);
            rest.remove_prefix(end == rest.npos ? rest.size() : end + 1);
            constexpr std::string_view separator = " = ";
            const auto at = line.find(separator);
            if (line.empty() || line[0] == '#' || at == line.npos)
                continue;
            result->emplace(line.substr(0, at), line.substr(at + separator.size()));
        }
        return result;
    }();
    return *parsed;
}

void printToStderr(const HostMsg& message) {
    const std::string line = HostMsgMgr::getSeverityName(message.severityMask) + ": " + HostMsgMgr::getText(message) + "\n";
    std::fwrite(line.data(), 1, line.size(), stderr);
}

thread_local bool sinkRuns = false;

struct SinkRun {
    SinkRun() { sinkRuns = true; }
    ~SinkRun() { sinkRuns = false; }
};

} // namespace

HostMsgMgr::HostMsgMgr() : sink_(printToStderr) {}

HostMsgMgr& HostMsgMgr::getGlobal() {
    // Never destroyed: objects that go at exit may still send.
    static HostMsgMgr* const global = new HostMsgMgr;
    return *global;
}

HostMsgMgr::Sink HostMsgMgr::setSink(Sink sink) {
    std::swap(sink_, sink);
    return sink;
}

void HostMsgMgr::send(const std::string& topic, unsigned severityMask, const std::string& key, std::vector<std::string> args,
                      HostFault fault) {
    const HostMsg message{topic, severityMask, key, std::move(args), std::move(fault)};
    if (sinkRuns) {
        printToStderr(message);
        return;
    }
    // A copy, since the sink may replace itself.
    if (const Sink sink = sink_) {
        SinkRun run;
        sink(message);
    }
}

std::string HostMsgMgr::getText(const HostMsg& message) {
    const auto found = catalog().find(message.key);
    if (found == catalog().end()) {
        std::string text = message.key;
        for (const std::string& arg : message.args)
            text += " " + arg;
        return text;
    }
    const std::string& words = found->second;
    std::string text;
    for (std::size_t i = 0; i < words.size(); ++i) {
        const char next = i + 1 < words.size() ? words[i + 1] : '\0';
        if (words[i] != '%' || next < '1' || next > '9') {
            text += words[i];
            continue;
        }
        const std::size_t index = static_cast<std::size_t>(next - '1');
        if (index < message.args.size())
            text += message.args[index];
        ++i;
    }
    return text;
}

std::string HostMsgMgr::getSeverityName(unsigned severityMask) {
    if (severityMask >= Error)
        return "error";
    if (severityMask >= CriticalWarning)
        return "critical warning";
    return severityMask >= Warning ? "warning" : "info";
}

std::vector<std::string> HostMsgMgr::getCatalogKeys() {
    std::vector<std::string> keys;
    for (const auto& entry : catalog())
        keys.push_back(entry.first);
    return keys;
}
