// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "HZEPEmulationUtils.h"

#include "EmulationPropertyKeys.h"
#include "HPLPlatform.h"
#include "HZEPDsaXmlReader.h"
#include "HZEPEmulationXMLReader.h"
#include "HZEPEmulationXMLWriter.h"
#include "HZEPEmulations.h"
#include "HZEPTmpDirObject.h"
#include "HostEnv.h"
#include "HostErrors.h"
#include "HostFile.h"
#include "HostMsgMgr.h"
#include "HostTclTasks.h"
#include "HostZip.h"
#include "HostZipUpdate.h"
#include "PropertyOrigins.h"

#include <algorithm>
#include <filesystem>
#include <fstream>

namespace fs = std::filesystem;
namespace keys = emulation_properties;

namespace {

constexpr const char* kPropertyFolder = "hw_emu_prop";
constexpr const char* kPropertyScript = "hw_emu_prop.tcl";
constexpr const char* kUpdateScript = "emu_update_dsa.tcl";
constexpr const char* kOverlay = "overlay";
constexpr const char* kPreLinkScript = "dynamic_pre_sys_link.tcl";
constexpr const char* kPostLinkScript = "dynamic_post_sys_link.tcl";
constexpr const char* kEmulationName = "hw_emu";
constexpr const char* kDesign = "emu.bd";
constexpr const char* kDesignFolder = "emu";

void send(unsigned severity, const char* key, std::vector<std::string> args = {}, HostFault fault = {}) {
    HostMsgMgr::getGlobal().send("platform", severity, key, std::move(args), std::move(fault));
}

std::string getBaseName(const std::string& archive) {
    return fs::path(archive).stem().string();
}

std::string getPropertyScript(const std::string& outDir, const std::string& propName) {
    const fs::path name = propName;
    // Below a folder a name that begins with "/" stays below it.
    const fs::path folder = outDir.empty() ? name : fs::path(outDir) / name.relative_path();
    return (folder / kPropertyScript).string();
}

/// An executable file of what `write` puts into the stream.
template <class Write>
void writeScript(const std::string& path, const Write& write) {
    std::ofstream out(path, std::ios_base::binary | std::ios_base::trunc);
    if (out)
        write(out);
    out.close();
    std::error_code error;
    if (out)
        fs::permissions(path, fs::perms::owner_exec | fs::perms::group_exec | fs::perms::others_exec, fs::perm_options::add, error);
    if (!out || error)
        throw HostUserException("the script '" + path + "' cannot be written");
}

/// The tool's properties for the archive, or else those for all; "" when there are none.
std::string findDefaultProperties(const std::string& dsaName) {
    const fs::path folder = fs::path(HostEnv::getHostAppRoot()) / "data" / "emulation" / "hw_em" / "platform_config";
    const std::string fallback = (folder / "default_prop.json").string();
    for (const std::string& path : {(folder / (dsaName + ".json")).string(), fallback})
        if (HostFile::exists(path))
            return path;
    send(HostMsgMgr::CriticalWarning, "@74-56@%s", {fallback});
    return "";
}

/// Where the script puts the block design, and where it ends up when the folder that it is copied into stands already.
std::vector<std::string> getDesigns(const std::string& overlayDir, bool dynamicRegion) {
    const fs::path folder = dynamicRegion ? fs::path(overlayDir) / kDesignFolder : fs::path(overlayDir);
    return {(folder / kDesign).string(), (folder / kDesignFolder / kDesign).string()};
}

void describeOverlay(const std::string& overlayDir, const std::string& hpfmName, bool dynamicRegion) {
    HZEPEmulations emulations;
    HZEPEmulation& emulation = *emulations.createEmulation();
    emulation.setName(kEmulationName);
    if (dynamicRegion)
        emulation.createFile("TOP_BD", "pfm_dynamic/pfm_dynamic.bd");
    emulation.createFile("EMU_DR_BD", dynamicRegion ? "emu/emu.bd" : kDesign);
    emulation.createFile("EMU_HPFM", hpfmName.c_str());
    emulation.createFile("POST_SYS_LINK_TCL", kPostLinkScript);
    emulation.createFile("PRE_SYS_LINK_TCL", kPreLinkScript);
    HZEPEmulationXMLWriter(&emulations, overlayDir + "/emu.xml").writeXml();
}

} // namespace

bool HZEPEmulationUtils::generateDsaEmu(const std::string& dsa, std::string outDir, std::string propName) {
    if (!HostFile::exists(dsa)) {
        send(HostMsgMgr::CriticalWarning, "@74-32@%s", {dsa}, {dsa, "", 0, 0, "does not exist"});
        return false;
    }
    if (!HostFile::isRegularFile(dsa)) {
        send(HostMsgMgr::CriticalWarning, "@74-36@%s", {dsa}, {dsa, "", 0, 0, "is no file"});
        return false;
    }
    const bool updatesArchive = outDir.empty();
    if (updatesArchive)
        propName = kPropertyFolder;
    const std::string overlay = (fs::path(outDir) / kOverlay).string();
    if (!generateEmuPropDict(dsa, outDir, false, propName) ||
        !generateDsaEmuScripts(getBaseName(dsa), getPropertyScript(outDir, propName), overlay, false))
        return false;
    if (updatesArchive)
        updateDsa(HostFile(dsa), HostFile(overlay));
    return true;
}

bool HZEPEmulationUtils::generateEmuPropDict(const std::string& dsa, const std::string& outDir, bool flag, const std::string& propName) {
    HPLPlatform platform;
    if (!HZEPDsaXmlReader(dsa, &platform).parseDSA())
        return false;
    HZEPEmulations emulations;
    const std::string archive = platform.getPlatformFile();
    if (const std::string member = getEmuXmlFile(&platform); HostZip::containsFile(archive, member))
        HZEPEmulationXMLReader::parseFromDsa(archive, member, &emulations);

    const HZEPTmpDirObject folder("emu_prop");
    PropertyOrigins origins(dsa);
    const std::string prop = folder.get() + "/temp_prop.json";
    const std::string userProp = folder.get() + "/temp_user_prop.json";
    for (const HZEPEmulation* emulation : emulations.getEmulations())
        for (const HZEPEmulationFile* file : emulation->getFiles())
            if (file->getType() == keys::kFileType || file->getType() == keys::kUserFileType) {
                const std::string& extracted = file->getType() == keys::kFileType ? prop : userProp;
                platform.extractFileFromPlatform(file->getName(), extracted);
                origins.add(extracted, file->getName());
            }

    const std::string script = getPropertyScript(outDir, propName);
    if (const std::string parent = HostFile(script).getParent(); !parent.empty())
        HostFile(parent).mkDirRecursive();
    const std::string dsaName = getBaseName(dsa);
    const std::string defaultProp = findDefaultProperties(dsaName);
    writeScript(script, [&](std::ofstream& out) {
        std::string customScript;
        writeEmuPropertiesDict(&platform, prop, userProp, defaultProp, out, dsaName, flag, customScript);
    });
    return true;
}

bool HZEPEmulationUtils::generateDsaEmuScripts(const std::string& dsaName, const std::string& propTcl, const std::string& overlayDir,
                                               bool dynamicRegion) {
    const std::string hpfmName = dsaName + "_emu.hpfm";
    writeScript(kUpdateScript, [&](std::ofstream& out) {
        writeEmuUpdateDsa(out, propTcl, overlayDir, hpfmName, kPreLinkScript, kPostLinkScript, dynamicRegion);
    });
    const std::vector<std::string> designs = getDesigns(overlayDir, dynamicRegion);
    // One of an earlier run must not pass for that of a run that failed.
    for (const std::string& design : designs)
        HostFile(design).rm();
    std::string command = "source ";
    command.append(kUpdateScript).append("\n");
    host::tcltasks::task_manager::eval_in_tcl(command);
    if (std::none_of(designs.begin(), designs.end(), [](const std::string& design) { return HostFile::exists(design); })) {
        send(HostMsgMgr::Error, "@74-33@", {}, {designs.front(), "", 0, 0, "the build did not make it"});
        return false;
    }
    describeOverlay(overlayDir, hpfmName, dynamicRegion);
    return true;
}

bool HZEPEmulationUtils::generateEmuDir(const std::string& dsaName, const std::string& propTcl, std::string outDir) {
    if (outDir.empty()) {
        send(HostMsgMgr::CriticalWarning, "@74-57@");
        return false;
    }
    return generateDsaEmuScripts(dsaName, propTcl, (fs::path(outDir) / kOverlay).string(), true);
}

void HZEPEmulationUtils::updateDsa(const HostFile& dsa, const HostFile& dir) {
    std::vector<std::string> names;
    getAllRelativeInDir(dir.getPath(), names);
    HostZipUpdate update(dsa.getPath());
    for (const std::string& name : names) {
        const std::string path = dir.getPath() + "/" + name;
        if (!fs::is_regular_file(fs::symlink_status(path)))
            throw HostError(path + ": cannot be put into an archive: is a link or a special file");
        update.putFile(name, path);
    }
    update.attachDigest();
    update.commit();
}

std::string HZEPEmulationUtils::getTolvanIPPath() {
    bool isSet = false;
    const std::string path = HostEnv::getEnv("TOLVAN_DRUVEL", &isSet);
    if (!isSet)
        send(HostMsgMgr::CriticalWarning, "@74-35@");
    return path;
}

std::string HZEPEmulationUtils::getPlomeIPPath() {
    for (const char* name : {"TOLVAN_PLOME", "TOLVAN_ZEP"}) {
        bool isSet = false;
        const std::string root = HostEnv::getEnv(name, &isSet);
        if (isSet)
            return root + HostFile::getDirSeparator() + "platforms";
    }
    return "";
}

std::string HZEPEmulationUtils::getEmuXmlFile(HPLPlatform* platform) {
    const std::string name = platform->getFile("EMU_XML");
    return name.empty() ? "emu/emu.xml" : name;
}

void HZEPEmulationUtils::getAllRelativeInDir(const std::string& dir, std::vector<std::string>& out) {
    std::vector<std::string> names;
    std::error_code error;
    fs::recursive_directory_iterator at(dir, error);
    for (; !error && at != fs::recursive_directory_iterator(); at.increment(error))
        if (!fs::is_directory(at->symlink_status()))
            names.push_back(at->path().lexically_relative(dir).string());
    if (error)
        throw HostError("cannot read the directory '" + dir + "': " + error.message());
    std::sort(names.begin(), names.end());
    out.insert(out.end(), names.begin(), names.end());
}
