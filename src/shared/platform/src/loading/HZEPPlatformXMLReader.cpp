// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "HZEPPlatformXMLReader.h"

#include "HZEPPlatform.h"
#include "HZEPReconfigurablePartition.h"
#include "HostErrors.h"
#include "HostFile.h"
#include "HostI18n.h"
#include "HostMsgMgr.h"
#include "HostPathUtils.h"
#include "LmxFileFailure.h"
#include "ZEPPlatformLMX.h"

#include <boost/filesystem/path.hpp>

namespace {

/// The number modulo 2^32, whatever its size.
std::uint32_t cutTo32Bits(const lmx60::c_big_int& number) {
    std::uint32_t value = 0;
    bool negative = false;
    for (const char c : number.get_as_string()) {
        if (c == '-')
            negative = true;
        else if (c >= '0' && c <= '9')
            value = value * 10 + static_cast<std::uint32_t>(c - '0');
    }
    return negative ? 0 - value : value;
}

} // namespace

HZEPPlatformXMLReader::HZEPPlatformXMLReader(std::string file, HZEPPlatform* platform) : platform_(platform), file_(std::move(file)) {
    if (file_.empty() || !HostPathUtils::exists(file_))
        throw HostFileNotFoundException(file_);
}

bool HZEPPlatformXMLReader::parseFile() {
    const auto failure =
        readLmxFile<ZEPPlatform::Platform>(file_, [this](const ZEPPlatform::Platform& platform) { parsePlatform_(platform); });
    if (failure) {
        errorMsg_ = failure->print("Error parsing platform file: ", file_) + "\n";
        fault_ = failure->toFault(file_);
        HostMsgMgr::getGlobal().send("platform", HostMsgMgr::Error, "@74-9@%s", {file_, std::to_string(failure->line)}, fault_);
        return false;
    }
    platform_->setPlatformFile(file_);
    return true;
}

void HZEPPlatformXMLReader::parsePlatform_(const ZEPPlatform::Platform& platform) {
    platform_->setVendor(HostI18n::toUtf8(platform.GetVendor()));
    platform_->setLibrary(HostI18n::toUtf8(platform.GetLibrary()));
    platform_->setName(HostI18n::toUtf8(platform.GetName()));
    platform_->setVersion(platform.GetVersion().get_as_string());
    platform_->setDescription(HostI18n::toUtf8(platform.GetDescription()));
    parseHardwarePlatforms_(platform.GetHardwarePlatforms());
    platform_->setSoftwarePlatformFile(memberPath_(platform.GetSoftwarePlatforms().GetSoftwarePlatform()));
}

void HZEPPlatformXMLReader::parseHardwarePlatforms_(const ZEPPlatform::HardwarePlatforms& platforms) {
    using Platforms = ZEPPlatform::HardwarePlatforms;
    switch (platforms.GetChoice()) {
    case Platforms::Choice_AnonHardwarePlatform: {
        const auto& group = platforms.GetAnonHardwarePlatform();
        platform_->setHardwarePlatformFile(canonicalMemberPath_(group.GetHardwarePlatform()));
        if (group.IssetHwEmuPlatform())
            platform_->setHardwareEmuPlatformFile(canonicalMemberPath_(group.GetHwEmuPlatform()));
        break;
    }
    case Platforms::Choice_HwEmuPlatform:
        platform_->setHardwareEmuPlatformFile(canonicalMemberPath_(platforms.GetHwEmuPlatform()));
        platform_->setHardwarePlatformFile(platform_->getHardwareEmuPlatformFile());
        break;
    case Platforms::Choice_ReconfigurablePartition:
        for (std::size_t i = 0; i < platforms.SizeReconfigurablePartition(); ++i)
            parseReconfigurablePartition_(platforms.GetReconfigurablePartition(i));
        if (platforms.IssetDefaultRP())
            platform_->setDefaultRPId(cutTo32Bits(platforms.GetDefaultRP()));
        break;
    default:
        break;
    }
}

void HZEPPlatformXMLReader::parseReconfigurablePartition_(const ZEPPlatform::ReconfigurablePartition& partition) {
    using Partition = ZEPPlatform::ReconfigurablePartition;
    auto made = std::make_unique<HZEPReconfigurablePartition>(cutTo32Bits(partition.GetId()));
    switch (partition.GetChoice()) {
    case Partition::Choice_AnonHardwarePlatform: {
        const auto& group = partition.GetAnonHardwarePlatform();
        made->setHardwarePlatformFile(canonicalMemberPath_(group.GetHardwarePlatform()));
        if (group.IssetHwEmuPlatform())
            made->setHardwareEmuPlatformFile(canonicalMemberPath_(group.GetHwEmuPlatform()));
        break;
    }
    case Partition::Choice_HwEmuPlatform:
        // The hardware file stays empty, unlike in a platform without partitions.
        made->setHardwareEmuPlatformFile(canonicalMemberPath_(partition.GetHwEmuPlatform()));
        break;
    default:
        break;
    }
    platform_->addReconfigurablePartition(made.release());
}

/// The attributes are joined as they stand; a platform file named without a directory is looked at from the root.
template <class Member>
std::string HZEPPlatformXMLReader::memberPath_(const Member& member) const {
    const std::string& separator = HostFile::getDirSeparator();
    return boost::filesystem::path(file_).parent_path().string() + separator + HostI18n::toUtf8(member.GetPath()) + separator +
           HostI18n::toUtf8(member.GetName());
}

template <class Member>
std::string HZEPPlatformXMLReader::canonicalMemberPath_(const Member& member) const {
    return HostFile::getCanonicalName(memberPath_(member));
}
