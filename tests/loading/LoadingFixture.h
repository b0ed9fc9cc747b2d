// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "Documents.h"
#include "MessageLog.h"
#include "TempDir.h"
#include "ZipBuilder.h"

#include <string>

inline std::string renderJson(const zep_platform::JSONSerializable& object) {
    return documentOf(object);
}

/// A platform file with the content of "zep:hardwarePlatforms" and its attributes; the software file is sw/p.spfm.
inline std::string platformFile(const std::string& hardware, const std::string& attributes = "") {
    return R"(<?xml version="1.0" encoding="UTF-8"?>
<zep:platform xmlns:zep="urn:tolvan:zep" zep:vendor="orrin" zep:library="boards" zep:name="heron" zep:version="1.50">
<zep:description>A heron</zep:description>
<zep:hardwarePlatforms)" +
           attributes + ">" + hardware + R"(</zep:hardwarePlatforms>
<zep:softwarePlatforms>
<zep:softwarePlatform zep:path="sw" zep:name="p.spfm"/>
</zep:softwarePlatforms>
</zep:platform>
)";
}

inline std::string hardwareElement(const std::string& file, const std::string& directory = "hw") {
    return "<zep:hardwarePlatform zep:path=\"" + directory + "\" zep:name=\"" + file + "\"/>";
}

inline std::string emulationElement(const std::string& file, const std::string& directory = "hw") {
    return "<zep:hwEmuPlatform zep:path=\"" + directory + "\" zep:name=\"" + file + "\"/>";
}

inline std::string partitionElement(const std::string& id, const std::string& content) {
    return "<zep:reconfigurablePartition zep:id=\"" + id + "\">" + content + "</zep:reconfigurablePartition>";
}

inline const char* kSoftwareFile = R"(<?xml version="1.0"?>
<zep:platform xmlns:zep="urn:tolvan:zep" zep:vendor="orrin" zep:library="boards" zep:name="sw" zep:version="1">
<zep:description/>
<zep:systemConfigurations>
<zep:configuration zep:name="linux" zep:displayName="Linux" zep:runtimes="ocl">
<zep:description>A system</zep:description>
<zep:processorGroup zep:name="a53" zep:displayName="A53" zep:cpuType="cortex-a53">
<zep:os zep:name="linux" zep:displayName="Linux"/>
</zep:processorGroup>
</zep:configuration>
</zep:systemConfigurations>
</zep:platform>
)";

/// Hardware metadata of a name that tests can tell apart.
inline std::string hardwareJson(const std::string& name, const std::string& more = "") {
    return R"({"vendor": "orrin", "boardId": "b1", "versionMajor": "1", "versionMinor": "2", "name": ")" + name + "\"" + more + "}";
}

/// One archive with primary metadata.
inline std::string writeArchive(const TempDir& dir, const std::string& file, const std::string& name) {
    return ZipBuilder(dir.path(file)).add("kar.json", hardwareJson(name)).write();
}
