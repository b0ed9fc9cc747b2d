// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "HPLPlatform.h"

#include "AsciiCase.h"
#include "EntryName.h"
#include "HPLScriptCaches.h"
#include "HZEPJSONText.h"
#include "HostEnv.h"
#include "HostFile.h"
#include "HostZip.h"
#include "HostZipSession.h"
#include "ModelJson.h"

#include <boost/property_tree/ptree.hpp>

#include <algorithm>
#include <cstdlib>
#include <iterator>
#include <limits>
#include <sstream>
#include <string_view>

using zep_platform::JSONObjectWriter;

template class host::pyinfra::py_native_cache<HPLPlatform*>;
template class host::tcltasks::native_cache<HPLPlatform*>;

namespace {

/// In the order of the enumerations; the last one stands for everything else.
constexpr const char* kHostArchNames[] = {"x86_64", "armv7l", "ppc64le", "aarch64", "unknown"};
constexpr const char* kHostInterfaceNames[] = {"pcie", "axi", "unknown"};

template <std::size_t Size>
std::size_t findName(const char* const (&names)[Size], const std::string& name) {
    const auto found =
        std::find_if(std::begin(names), std::end(names) - 1, [&name](const char* known) { return ascii::equalsIgnoringCase(known, name); });
    return static_cast<std::size_t>(found - std::begin(names));
}

template <std::size_t Size>
std::string getNameOf(const char* const (&names)[Size], int value) {
    return names[value >= 0 && static_cast<std::size_t>(value) < Size ? static_cast<std::size_t>(value) : Size - 1];
}

void addOnce(std::vector<std::string>& texts, std::unordered_set<std::string>& present, const std::string& text) {
    if (present.insert(text).second)
        texts.push_back(text);
}

std::string join(const std::vector<std::string>& texts) {
    std::string joined;
    for (const std::string& text : texts) {
        if (&text != &texts.front())
            joined += ',';
        joined += text;
    }
    return joined;
}

constexpr bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

/// What replacing "([0-9]+).*GB" by "$1" makes of one line. By hand, since standard expressions recurse once a character.
std::string reduceToNumber(const std::string& line) {
    const auto begin = std::find_if(line.begin(), line.end(), isDigit);
    const auto end = std::find_if_not(begin, line.end(), isDigit);
    const auto digits = static_cast<std::size_t>(end - line.begin());
    const std::size_t unit = line.rfind("GB");
    if (begin == end || unit == std::string::npos || unit < digits)
        return line;
    return line.substr(0, digits) + line.substr(unit + 2);
}

std::string reduceToNumbers(const std::string& text) {
    constexpr const char* lineEnds = "\n\r";
    std::string reduced;
    std::size_t begin = 0;
    for (std::size_t at = text.find_first_of(lineEnds); at != std::string::npos; at = text.find_first_of(lineEnds, begin)) {
        reduced += reduceToNumber(text.substr(begin, at - begin)) + text[at];
        begin = at + 1;
    }
    return reduced + reduceToNumber(text.substr(begin));
}

} // namespace

HPLPlatform::HPLPlatform() = default;
HPLPlatform::~HPLPlatform() {
    host::pyinfra::py_native_cache<HPLPlatform*>::nativeDied(this);
    host::tcltasks::native_cache<HPLPlatform*>::nativeDied(this);
}

void HPLPlatform::toJSON(JSONObjectWriter& writer) const {
    writer.addKey("versionMajor", std::to_string(versionMajor_));
    writer.addKey("versionMinor", std::to_string(versionMinor_));
    if (usesPR()) {
        writer.addKey("hostArchitecture", getHostArch());
        writer.addKey("hostInterface", getHostInterface());
    }
    writer.addKey("usesPR", usesPR());
    writer.addKey("platformState", getPlatformState());
    writer.addKey("topModuleName", topModuleName_);
    writer.addKey("acceleratorBinaryFormat", acceleratorBinaryFormat_);
    writer.addKey("acceleratorBinaryContent", acceleratorBinaryContent_);
    writer.addKey("validAcceleratorBinaryContentValues", getValidBinaryContentValuesAsStr());
    model_json::addTexts(writer, "bvlcCompileXPSwitches", bvlcCompileXpSwitches_);
    model_json::addTexts(writer, "bvlcLinkXPSwitches", bvlcLinkXpSwitches_);
    writer.addKey("dcpFunctionStripped", dcpFuncStripped_);
    writer.addKey("dcpEncrypted", dcpEncrypt_);
    writer.addKey("defaultOutputType", defaultOutputType_);
    getDesignIntent().toJSON(writer);
    writer.addKey("board", &board_);
    model_json::addObjects(writer, "devices", devices_);
    model_json::addObjects(writer, "interfaces", interfaces_);
    model_json::addObjects(writer, "memories", memories_);
    model_json::addObjects(writer, "files", files_);
    boost::property_tree::ptree extensions;
    getExtMetaJsonAsPtree(extensions);
    writer.addKey("extensions", std::move(extensions));
    HZEPHardwarePlatform::toJSON(writer);
}

std::string HPLPlatform::getBoardPart() const {
    return board_.getBoardPart();
}

std::string HPLPlatform::getBoardConnectionsString() const {
    return board_.getBoardConnectionsString();
}

std::string HPLPlatform::getLockedBoardConnectionsString() const {
    return board_.getLockedBoardConnectionsString();
}

std::string HPLPlatform::getUnlockedBoardConnectionsString() const {
    return board_.getUnlockedBoardConnectionsString();
}

bool HPLPlatform::hasDimmConnectors() const {
    return board_.hasDimmConnectors();
}

void HPLPlatform::getDimmConnectors(std::vector<std::string>& out) const {
    board_.getDimmConnectors(out);
}

void HPLPlatform::getLockedDimmConnectors(std::vector<std::string>& out) const {
    board_.getLockedDimmConnectors(out);
}

void HPLPlatform::getConnectedDimmConnectors(std::vector<std::string>& names, std::vector<std::string>& connectedNames) const {
    board_.getConnectedDimmConnectors(names, connectedNames);
}

std::string HPLPlatform::getConnectorDisplayName(const std::string& name) const {
    return board_.getConnectorDisplayName(name);
}

void HPLPlatform::getBoardImgZipEntries(std::vector<std::string>& out) const {
    out.insert(out.end(), {board_.getImgFileLdpi(), board_.getImgFileMdpi(), board_.getImgFileHdpi()});
}

std::string HPLPlatform::getBoardRepo() const {
    const std::string archive = getPlatformFile();
    if (!HostFile::exists(archive))
        return "";
    const std::string entry = getFile("BOARD_REPO_PATH");
    if (entry.empty() || !staysBelowDirectory(entry))
        return "";
    const std::string directory = HostEnv::getHostTmpDir();
    HostFile::ensureWritableDirectory(directory);
    HostZip::uncompressDir(archive, entry, directory, 1);
    const std::string repository = directory + HostFile::getDirSeparator() + entry;
    return HostFile::exists(repository) ? repository : "";
}

std::string HPLPlatform::getVersion() const {
    return std::to_string(versionMajor_) + "." + std::to_string(versionMinor_);
}

std::string HPLPlatform::getVBNVAsStr(const std::string& vendor, const std::string& boardId, const std::string& name,
                                      const std::string& version) {
    return vendor + ":" + boardId + ":" + name + ":" + version;
}

std::string HPLPlatform::getVBNV() const {
    return getVBNVAsStr(getVendor(), getBoardId(), getName(), getVersion());
}

std::string HPLPlatform::getUniqueName() const {
    return getVBNV();
}

std::string HPLPlatform::getDeviceName() const {
    return getVendor() + "_" + getBoardId() + "_" + getName() + "_" + std::to_string(versionMajor_) + "_" + std::to_string(versionMinor_);
}

std::string HPLPlatform::getPrettyName() const {
    return getDesignIntent().getEmbedded() ? getName() : ascii::toUpper(getBoardId()) + " (" + getName() + ")";
}

std::string HPLPlatform::getInterfaceDesc() const {
    if (!getDesignIntent().getServerManaged() && !getDesignIntent().getExternalHost())
        return "";
    if (!interfaces_.empty()) {
        const HPLInterface& first = *interfaces_.items().front();
        if (!first.getName().empty() && !first.getType().empty())
            return first.getName() + " " + first.getType();
    }
    return ascii::equalsIgnoringCase(getFpgaDevice(), "tlv9pz") ? "PCIe gen3x16" : "PCIe gen3x8";
}

unsigned HPLPlatform::getNumDDRs() const {
    return static_cast<unsigned>(memories_.size());
}

std::string HPLPlatform::getMemType() const {
    return memories_.empty() ? "ddr4" : memories_.items().front()->getType();
}

std::string HPLPlatform::getMemSize() const {
    const int total = getTotalMemSizeInGb();
    return std::to_string(total == 0 ? 8 : total) + " GB";
}

int HPLPlatform::getTotalMemSizeInGb() const {
    long long total = 0;
    for (std::size_t i = 0; i < memories_.size(); ++i)
        total += getMemSizeInGb(i);
    using Limits = std::numeric_limits<int>;
    return static_cast<int>(std::clamp<long long>(total, Limits::min(), Limits::max()));
}

int HPLPlatform::getMemSizeInGb(std::size_t index) const {
    if (memories_.empty())
        return 0;
    const std::string& size = memories_.items().at(index)->getSize();
    const std::string number = reduceToNumbers(size);
    return number == size && !size.empty() ? 0 : std::stoi(number);
}

void HPLPlatform::getTargetCategories(std::vector<std::string>& out) const {
    out.push_back("Acceleration");
}

void HPLPlatform::getDevices(std::vector<HZEPDevice*>& out) const {
    out.insert(out.end(), devices_.begin(), devices_.end());
}

HPLDevice* HPLPlatform::getDevice(const std::string& name) const {
    const auto found =
        std::find_if(devices_.begin(), devices_.end(), [&name](const HPLDevice* device) { return device->getName() == name; });
    return found == devices_.end() ? nullptr : *found;
}

const HPLCore* HPLPlatform::getFirstCore_() const {
    const HPLDevice* device = getDevice("fpga0");
    return device ? &device->getReadOnlyCore() : nullptr;
}

int HPLPlatform::getRegisterCount() const {
    const HPLCore* core = getFirstCore_();
    return core ? static_cast<int>(std::strtol(core->getRegisterCount().c_str(), nullptr, 10)) : 0;
}

unsigned HPLPlatform::getNumComputeUnits() const {
    return devices_.empty() ? 10 : devices_.items().back()->getReadOnlyCore().getNumComputeUnits();
}

std::size_t HPLPlatform::getOCLRegionCount() const {
    return devices_.size();
}

std::string HPLPlatform::getOclInstPath() const {
    const HPLCore* core = getFirstCore_();
    return core ? core->getInstPath() : "";
}

bool HPLPlatform::usesExpandedPR() const {
    const HPLCore* core = getFirstCore_();
    return core && !core->getParentRMInstPath().empty();
}

void HPLPlatform::getValidSLRNames(std::vector<std::string>& out) const {
    if (const HPLCore* core = getFirstCore_())
        core->getValidSLRNames(out);
}

std::string HPLPlatform::getHostArch() const {
    return getHostArchAsStr(hostArch_);
}

HPLPlatform::HostArchType HPLPlatform::getHostArchType(const std::string& name) {
    return static_cast<HostArchType>(findName(kHostArchNames, name));
}

HPLPlatform::HostInterfaceType HPLPlatform::getHostInterfaceType(const std::string& name) {
    return static_cast<HostInterfaceType>(findName(kHostInterfaceNames, name));
}

std::string HPLPlatform::getHostArchAsStr(HostArchType type) {
    return getNameOf(kHostArchNames, type);
}

std::string HPLPlatform::getHostInterfaceAsStr(HostInterfaceType type) {
    return getNameOf(kHostInterfaceNames, type);
}

std::vector<std::string> HPLPlatform::getHostArchTypesAsStr() {
    return {std::begin(kHostArchNames), std::end(kHostArchNames)};
}

void HPLPlatform::addValidBinaryContentValue(const std::string& value) {
    addOnce(validBinaryContentValues_, binaryContentValuesPresent_, value);
}

void HPLPlatform::addValidOutputTypeValue(const std::string& value) {
    addOnce(validOutputTypeValues_, outputTypeValuesPresent_, value);
}

std::string HPLPlatform::getValidBinaryContentValuesAsStr() const {
    return join(validBinaryContentValues_);
}

std::string HPLPlatform::getValidOutputTypeValuesAsStr() const {
    return join(validOutputTypeValues_);
}

void HPLPlatform::getBvlcCompileXpSwitches(std::vector<std::string>& out) const {
    out.insert(out.end(), bvlcCompileXpSwitches_.begin(), bvlcCompileXpSwitches_.end());
}

void HPLPlatform::getBvlcLinkXpSwitches(std::vector<std::string>& out) const {
    out.insert(out.end(), bvlcLinkXpSwitches_.begin(), bvlcLinkXpSwitches_.end());
}

HPLDevice* HPLPlatform::addDevice() {
    return devices_.add();
}

HostFwdIter<HPLDevice*>* HPLPlatform::createDeviceIter() const {
    return devices_.createIter();
}

HPLMemory* HPLPlatform::addMemory() {
    return memories_.add();
}

HostFwdIter<HPLMemory*>* HPLPlatform::createMemoryIter() const {
    return memories_.createIter();
}

HPLInterface* HPLPlatform::addInterface() {
    return interfaces_.add();
}

HostFwdIter<HPLInterface*>* HPLPlatform::createInterfaceIter() const {
    return interfaces_.createIter();
}

HPLFile* HPLPlatform::addFile(const std::string& type, const std::string& name) {
    HPLFile* file = files_.add();
    file->setType(type);
    file->setName(name);
    return file;
}

HPLFile* HPLPlatform::findFile(const std::string& type) const {
    const auto found = std::find_if(files_.begin(), files_.end(), [&type](const HPLFile* file) { return file->getType() == type; });
    return found == files_.end() ? nullptr : *found;
}

void HPLPlatform::removeFile(HPLFile* file) {
    files_.remove(file);
}

void HPLPlatform::removeFileType(const std::string& type) {
    files_.removeIf([&type](const HPLFile& file) { return file.getType() == type; });
}

HostFwdIter<HPLFile*>* HPLPlatform::createFileVecIter() const {
    return files_.createIter();
}

HPLPlatform::FileVecRange HPLPlatform::getFileVecRange() const {
    return {files_.begin(), files_.end()};
}

std::string HPLPlatform::getFile(const std::string& type) const {
    const std::vector<HPLFile*>& files = files_.items();
    const auto found = std::find_if(files.rbegin(), files.rend(),
                                    [&type](const HPLFile* file) { return ascii::equalsIgnoringCase(file->getType(), type); });
    return found == files.rend() ? "" : (*found)->getName();
}

std::string HPLPlatform::getFile(HZEPPfmFileTypes::FileType type) const {
    return getFile(HZEPPfmFileTypes::toString(type));
}

bool HPLPlatform::hasFile(const std::string& type) const {
    return !getFile(type).empty();
}

bool HPLPlatform::hasFile(HZEPPfmFileTypes::FileType type) const {
    return !getFile(type).empty();
}

/// The member with the extension metadata.
static std::string getExtMetaEntry(const HPLPlatform& platform) {
    const std::string entry = platform.getFile("META_JSON");
    return entry.empty() ? platform.getFile("EXT_META_JSON") : entry;
}

std::string HPLPlatform::getExtMetaJsonAsString() const {
    const std::string entry = getExtMetaEntry(*this);
    return entry.empty() ? "" : readEntry_(entry);
}

void HPLPlatform::getExtMetaJsonAsPtree(boost::property_tree::ptree& tree) const {
    const std::string text = getExtMetaJsonAsString();
    if (text.empty())
        return;
    try {
        HZEPJSONText::read(text, tree);
    } catch (const HZEPJSONTextError& error) {
        throw error.in(getPlatformFile(), getExtMetaEntry(*this));
    }
}

void HPLPlatform::setComputedDesignIntent(HZEPDesignIntentStorage::Key key, bool value) {
    getDesignIntent().setComputedValue(key, value);
}

void HPLPlatform::setExplicitDesignIntent(HZEPDesignIntentStorage::Key key, bool value) {
    getDesignIntent().setExplicitValue(key, value);
}

std::string HPLPlatform::getXmlFile() const {
    return HostFile(xmlFile_).getCanonicalName();
}

std::string HPLPlatform::getDirectory() const {
    return HostFile(xmlFile_).getParent();
}

bool HPLPlatform::isEquals(const HPLPlatform& other) const {
    const auto render = [](const HPLPlatform& platform) {
        JSONObjectWriter writer;
        platform.toJSON(writer);
        std::ostringstream text;
        writer.write(text);
        return std::move(text).str();
    };
    return ascii::equalsIgnoringCase(render(*this), render(other));
}
