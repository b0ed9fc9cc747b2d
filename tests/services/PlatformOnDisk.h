// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "../loading/LoadingFixture.h"

#include <iostream>

/// What a platform is made of; writes real files.
struct PlatformOnDisk {
    std::string version = "2019.2"; // of the tool that generated it
    std::string intents = "dataCenter";
    std::string state = "impl";
    bool isUnified = true;
    std::string extensions = {}; // JSON text
    std::string more = {};       // further members of the metadata

    /// The path of the platform file.
    std::string write(const TempDir& dir, const std::string& name = "p") const {
        std::string text = R"(, "generatedVersion": ")" + version + R"(", "platformState": ")" + state + R"(", "unifiedPlatform": ")" +
                           (isUnified ? "true" : "false") + "\"" + more + R"(, "designIntent": {)";
        for (const std::string intent : {"dataCenter", "embedded", "externalHost", "serverManaged"})
            text += (intent == "dataCenter" ? "\"" : ", \"") + intent + R"(": {"explicit": "true", "value": ")" +
                    (intents.find(intent) == intents.npos ? "false" : "true") + "\"}";
        text += R"(}, "devices": [{"name": "fpga0", "fpgaPart": "a:b:c:-1", "core": {}}])";
        ZipBuilder archive(dir.path("hw-" + name + ".kar"));
        if (!extensions.empty()) {
            text += R"(, "files": [{"type": "HPFM", "name": "p.hpfm"}, {"type": "EXT_META_JSON", "name": "ext.json"}])";
            archive.add("ext.json", extensions);
        }
        archive.add("kar.json", hardwareJson("heron", text)).write();
        dir.write("sw/p.spfm", kSoftwareFile);
        return dir.write(name + ".zpfm", platformFile(hardwareElement("hw-" + name + ".kar", ".")));
    }
};

/// Keeps the standard output while it lives.
class Heard {
public:
    Heard() : before_(std::cout.rdbuf(text_.rdbuf())) {}
    ~Heard() { std::cout.rdbuf(before_); }
    Heard(const Heard&) = delete;
    Heard& operator=(const Heard&) = delete;
    std::string text() const { return text_.str(); }

private:
    std::ostringstream text_;
    std::streambuf* before_;
};
