// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "NativeCatalogService.h"

#include "HZEPEnv.h"
#include "HZEPHardwarePlatform.h"
#include "HZEPJSONText.h"
#include "HZEPPlatform.h"
#include "HZEPReconfigurablePartition.h"
#include "HostEnv.h"
#include "HostFile.h"
#include "HostMsgMgr.h"
#include "HostXpStreams.h"
#include "HostZipStreams.h"
#include "NativeObjectService.h"
#include "PlatformLoader.h"

#include <boost/algorithm/string/classification.hpp>
#include <boost/algorithm/string/split.hpp>
#include <boost/filesystem/path.hpp>
#include <boost/property_tree/ptree.hpp>

#include <exception>
#include <iostream>
#include <iterator>
#include <optional>
#include <stdexcept>
#include <utility>
#include <vector>

using boost::property_tree::ptree;

namespace zep::platform {

namespace {

constexpr const char* kNotLoaded = "Error: failed to load platform";
constexpr const char* kVersionless = "Critical Warning: the current tool is versionless, please set the appropriate product name/version";
constexpr const char* kVersionlessPreSynth = ". Setting a default value of 2020.1 for the major and minor version.";
constexpr const char* kNotUnified =
    "' is not a unified platform. By policy, non-unified platforms are not supported by the current tool version";

void send(HostMsgMgr::Severity severity, const char* key, const std::string& argument) {
    HostMsgMgr::getGlobal().send("platform", severity, key, {argument});
}

std::string fileNameOf(const HZEPPlatform& platform) {
    return boost::filesystem::path(platform.getPlatformFile()).filename().string();
}

bool isInScope(const HZEPPlatform& platform) {
    return platform.getDesignIntentDataCenter() || platform.getDesignIntentServerManaged() || platform.getDesignIntentExternalHost();
}

/// Year and release within it.
using Version = std::pair<int, int>;

std::vector<std::string> splitVersion(const std::string& text) {
    std::vector<std::string> parts;
    boost::split(parts, text, boost::is_any_of("."), boost::token_compress_on);
    return parts;
}

int toNumber(const std::string& part, const std::string& version) {
    try {
        return std::stoi(part);
    } catch (const std::invalid_argument&) {
        throw std::invalid_argument("the version '" + version + "' is not of the form MAJOR.MINOR");
    } catch (const std::out_of_range&) {
        throw std::out_of_range("the version '" + version + "' has a number that is too large");
    }
}

Version parsePlatformVersion(const std::string& text) {
    const std::vector<std::string> parts = splitVersion(text);
    const int major = toNumber(parts[0], text);
    return {major, toNumber(parts.size() > 1 ? parts[1] : "", text)};
}

Version parseToolVersion(const std::string& text, const Version& ofVersionless, const std::string& warning) {
    const std::vector<std::string> parts = splitVersion(text);
    if (parts.size() > 1 && !parts[0].empty() && !parts[1].empty())
        return parsePlatformVersion(text);
    std::cout << warning << std::endl;
    return ofVersionless;
}

Version parseWarrantyVersion(const std::string& text) {
    const std::vector<std::string> parts = splitVersion(text);
    const int major = toNumber(parts[0], text);
    return {major, parts.size() > 1 ? toNumber(parts[1], text) : 0};
}

/// Texts and numbers of the two releases that a decision compares.
struct Versions {
    Versions(const HZEPPlatform& of, const NativeCatalogService& service, const Version& ofVersionless, const std::string& warning)
        : platformText(of.getHardwarePlatform()->getGeneratedVersion()), toolText(service.getCompilerVersion_()),
          platform(parsePlatformVersion(platformText)), tool(parseToolVersion(toolText, ofVersionless, warning)) {}

    std::string unsupported() const {
        return " (version " + platformText + ") is not supported by the current tool version (" + toolText + "). By policy, ";
    }
    bool isNewer() const { return platform > tool; }

    std::string platformText;
    std::string toolText;
    Version platform;
    Version tool;
};

/// The platform's document, made when somebody asks for it: rendering and parsing it is most of a decision's cost.
class Document {
public:
    Document(PlatformLoader* loader, const HZEPPlatform& platform) : loader_(loader), platform_(platform) {}

    bool isWarrantyExtendedTo(const Version& tool) {
        static const std::string path = "hardwarePlatform.extensions.extended_warranty";
        if (!mayHaveWarranty() || !objects_.getChildOptional(getTree(), path))
            return false;
        bool ok = false;
        const std::string extension = objects_.getObjectsByPath_(getText(), path, ok);
        const ptree versions = objects_.getNodeByPath(extension, "extended_warranty", ok);
        if (!ok)
            send(HostMsgMgr::Warning, "@74-79@%s", extension);
        for (const auto& [key, version] : versions)
            if (parseWarrantyVersion(version.data()) == tool)
                return true;
        return false;
    }

    /// What getObjectsByPath answers.
    std::string getObjects(const std::string& path) {
        bool ok = false;
        if (path.empty())
            return "";
        if (NativeObjectService::pathHasBoostArray(path))
            return objects_.getObjectsByPath_(getText(), path, ok);
        const auto node = objects_.getChildOptional(getTree(), path);
        if (!node || node->empty())
            return node ? node->data() : "";
        return objects_.getObjectsByPath_(getText(), path, ok);
    }

private:
    /// Looks into the extension metadata alone, which is small: only what stands there gets into the document.
    bool mayHaveWarranty() const {
        const auto mayHave = [](const HZEPHardwarePlatform* hardware) {
            ptree extensions;
            if (hardware)
                hardware->getExtMetaJsonAsPtree(extensions);
            return extensions.find("extended_warranty") != extensions.not_found();
        };
        if (mayHave(platform_.getHardwarePlatform()))
            return true;
        std::vector<HZEPReconfigurablePartition*> partitions;
        platform_.getReconfigurablePartitions(partitions);
        for (const HZEPReconfigurablePartition* partition : partitions)
            if (mayHave(partition->getHardwarePlatform()))
                return true;
        return false;
    }

    const std::string& getText() {
        if (!text_)
            text_ = objects_.getAsJsonStr(loader_);
        return *text_;
    }

    const ptree& getTree() {
        if (!tree_) {
            ptree tree;
            HZEPJSONText::read(getText(), tree);
            tree_.emplace().swap(tree);
        }
        return *tree_;
    }

    PlatformLoader* loader_;
    const HZEPPlatform& platform_;
    NativeObjectService objects_;
    std::optional<std::string> text_;
    std::optional<ptree> tree_;
};

struct Decision {
    bool isSupported;
    std::string reason;
};

/// The file with decisions on single platforms. The first look-up settles where it is and for which product, for good.
class DecisionList {
public:
    DecisionList() : file_(root() + separator() + "platforms" + separator() + "achromatic") { product(); }

    /// The first decision that matches.
    std::optional<Decision> find(Document& document) const {
        const ptree lists = read();
        if (lists.empty()) {
            send(HostMsgMgr::Warning, "@74-49@%s", file_);
            return std::nullopt;
        }
        for (const auto& [name, list] : lists) {
            const bool isWhite = name == "white_list";
            if (!isWhite && name != "black_list")
                return complain();
            for (const auto& [key, element] : list) {
                const auto products = element.get_child_optional("products");
                if (!key.empty() || !products)
                    return complain();
                if (isFor(*products) && matches(element, document))
                    return Decision{isWhite, element.get("reason", "")};
            }
        }
        return std::nullopt;
    }

private:
    static const std::string& root() {
        static const std::string kept = HostEnv::getHostAppRoot();
        return kept;
    }
    static const std::string& product() {
        static const std::string kept = HZEPEnv::getProductName();
        return kept;
    }
    static const std::string& separator() {
        static const std::string kept = HostFile::getDirSeparator();
        return kept;
    }

    ptree read() const {
        namespace streams = hoststream::iostreams;
        ptree tree;
        if (!HostFile::isRegularFile(file_) || !streams::xp::is_xp_format(file_))
            return tree;
        try {
            streams::filtering_stream stream;
            stream.push(streams::xp_autodetect());
            stream.push(streams::device::file_source(file_, std::ios::in | std::ios::binary));
            HZEPJSONText::read(std::string(std::istreambuf_iterator<char>(stream), {}), tree);
        } catch (const std::exception&) {
            // An unreadable list is an unusable one; the caller tells.
        }
        return tree;
    }

    std::nullopt_t complain() const {
        send(HostMsgMgr::Warning, "@74-50@%s", file_);
        return std::nullopt;
    }

    static bool isFor(const ptree& products) {
        for (const auto& [key, name] : products)
            if (name.data() == product())
                return true;
        return false;
    }

    static bool matches(const ptree& element, Document& document) {
        const std::string value = element.get("value", "");
        return !value.empty() && document.getObjects(element.get("key", "")) == value;
    }

    const std::string file_;
};

} // namespace

std::string NativeCatalogService::getCompilerVersion_() const {
    return testCompilerVersion_.empty() ? HostEnv::getMajor() + "." + HostEnv::getMinor() : testCompilerVersion_;
}

void NativeCatalogService::setTestCompilerVersion_(const std::string& version) {
    testCompilerVersion_ = version;
}

bool NativeCatalogService::isUnderWarranty(PlatformLoader* loader, std::string& reason, std::string productName) const {
    if (!loader)
        return false;
    if (!productName.empty())
        HostEnv::setProductName(productName);
    const auto platform = loader->load();
    if (!platform) {
        std::cout << kNotLoaded << std::endl;
        return false;
    }
    const std::string subject = "Platform '" + fileNameOf(*platform);
    if (!platform->isUnified()) {
        reason = subject + kNotUnified;
        return false;
    }
    if (!isInScope(*platform))
        return true;
    const Versions versions(*platform, *this, {2019, 1}, kVersionless);
    if (versions.isNewer()) {
        reason = subject + "'" + versions.unsupported() + "the platform version can not be newer than the current tool version";
        return false;
    }
    send(HostMsgMgr::Info, "@74-78@%s", versions.toolText);

    Document document(loader, *platform);
    if (versions.tool.first != 0 && document.isWarrantyExtendedTo(versions.tool)) {
        reason = subject + "' has been explicitly enabled for this release with an extended warranty.";
        return true;
    }
    if (const auto decision = DecisionList().find(document)) {
        reason = subject + "' has been " +
                 (decision->isSupported ? "explicitly enabled for this release." : "marked unsupported due to known issues.");
        if (!decision->reason.empty())
            reason += " Reason: " + decision->reason;
        return decision->isSupported;
    }
    if (versions.platform < Version(2017, 4)) {
        reason = subject + "'" + versions.unsupported() + "the platform version can not be older than 2017.4";
        return false;
    }
    if (versions.tool.first - versions.platform.first <= 1)
        return true;
    reason = subject + "'" + versions.unsupported() +
             "platforms are supported for the remainder of the calendar year release plus the following calendar year release";
    return false;
}

bool NativeCatalogService::isUnderWarranty(const std::string& platformFile, std::string& reason, std::string productName) const {
    PlatformLoader loader(platformFile, PlatformLoader::PreferAlternateJson);
    return isUnderWarranty(&loader, reason, std::move(productName));
}

bool NativeCatalogService::isUnderWarranty(const std::string& platformFile, HostVector<std::string>& reasons,
                                           std::string productName) const {
    std::string reason;
    bool isSupported = false;
    try {
        isSupported = isUnderWarranty(platformFile, reason, std::move(productName));
    } catch (const std::exception& error) {
        reason = error.what();
    } catch (...) {
        reason = "Unknown exception trying to determine if platform " + platformFile + "is supported";
    }
    if (!reason.empty())
        reasons.push_back(reason);
    return isSupported;
}

bool NativeCatalogService::canDsaBeOpened(PlatformLoader* loader, std::string& reason) const {
    const auto platform = loader ? loader->load() : nullptr;
    if (!platform)
        return false;
    const std::string subject = "DSA '" + platform->getPlatformFile();
    if (!platform->isUnified()) {
        reason = subject + kNotUnified;
        return false;
    }
    if (!isInScope(*platform))
        return true;
    const Versions versions(*platform, *this, {2019, 1}, kVersionless);
    if (!versions.isNewer())
        return true;
    reason = subject + "'" + versions.unsupported() + "the DSA version can not be newer than the current tool version";
    return false;
}

bool NativeCatalogService::canDsaBeOpened(const std::string& platformFile, std::string& reason) const {
    PlatformLoader loader(platformFile, PlatformLoader::PreferAlternateJson);
    return canDsaBeOpened(&loader, reason);
}

bool NativeCatalogService::isPreSynthPlatform(PlatformLoader* loader) const {
    if (!loader) {
        std::cout << "Error: failed to acquire a platform loader." << std::endl;
        return false;
    }
    const auto platform = loader->load();
    if (!platform) {
        std::cout << "Error: failed to load platform." << std::endl;
        return false;
    }
    const HZEPHardwarePlatform* hardware = platform->getHardwarePlatform();
    if (!hardware) {
        std::cout << "Error: failed to load the hardware platform." << std::endl;
        return false;
    }
    return hardware->getState() == HZEPHardwarePlatform::pre_synth;
}

bool NativeCatalogService::isPreSynthPlatformSupported(PlatformLoader* loader, std::string& reason) const {
    if (!loader)
        return false;
    if (!isPreSynthPlatform(loader)) {
        reason = "Platform '" + loader->getFilePath() + "' is not a PRE_SYNTH platform";
        return false;
    }
    const auto platform = loader->load();
    if (!platform) {
        std::cout << kNotLoaded << "." << std::endl;
        reason = "Failed to load the platform. Can not continue with establishing platform support with respect to the tool flow.";
        return false;
    }
    const std::string subject = "Platform '" + fileNameOf(*platform);
    if (!platform->isUnified()) {
        reason = subject + kNotUnified;
        return false;
    }
    const Versions versions(*platform, *this, {2020, 1}, std::string(kVersionless) + kVersionlessPreSynth);
    if (versions.platform == versions.tool)
        return true;
    reason = subject + "' (version " + versions.platformText +
             ") is a PRE_SYNTH platform and is not supported by the current tool version (" + versions.toolText + "). By policy, " +
             (versions.isNewer() ? "the platform version can not be newer than the current tool version"
                                 : "platforms are only supported on the same tool release on which the platform was created.");
    return false;
}

bool NativeCatalogService::isPreSynthPlatformSupported(const std::string& platformFile, std::string& reason) const {
    PlatformLoader loader(platformFile, PlatformLoader::PreferAlternateJson);
    return isPreSynthPlatformSupported(&loader, reason);
}

} // namespace zep::platform
