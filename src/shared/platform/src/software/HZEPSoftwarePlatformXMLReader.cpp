// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "HZEPSoftwarePlatformXMLReader.h"

#include "../loading/LmxFileFailure.h"
#include "HZEPBootImg.h"
#include "HZEPProcessorGroup.h"
#include "HZEPSoftwarePlatform.h"
#include "HZEPSystemConfig.h"
#include "HostErrors.h"
#include "HostI18n.h"
#include "HostMsgMgr.h"
#include "HostPathUtils.h"
#include "ZEPSoftwarePlatformLMX.h"

#include <boost/algorithm/string/predicate.hpp>

HZEPSoftwarePlatformXMLReader::HZEPSoftwarePlatformXMLReader(std::string file, HZEPSoftwarePlatform* platform)
    : platform_(platform), file_(std::move(file)) {
    if (platform_ && !HostPathUtils::exists(file_))
        throw HostFileNotFoundException(file_);
}

bool HZEPSoftwarePlatformXMLReader::parseFile() {
    using Root = ZEPSoftwarePlatform::Platform;
    const auto failure = readLmxFile<Root>(file_, [this](const Root& platform) { parsePlatform_(platform); });
    if (!failure)
        return true;
    errorMsg_ = failure->print("Error parsing software platform file: ", file_);
    fault_ = failure->toFault(file_);
    HostMsgMgr::getGlobal().send("platform", HostMsgMgr::Error, "@74-51@%s%d", {failure->text, std::to_string(failure->line)}, fault_);
    return false;
}

void HZEPSoftwarePlatformXMLReader::parsePlatform_(const ZEPSoftwarePlatform::Platform& platform) {
    if (platform_)
        parseSystemConfigurations_(platform.GetSystemConfigurations());
}

void HZEPSoftwarePlatformXMLReader::parseSystemConfigurations_(const ZEPSoftwarePlatform::SystemConfigurations& configurations) {
    platform_->setDefaultConfigName(HostI18n::toUtf8(configurations.GetDefaultConfiguration()));
    for (std::size_t i = 0; i < configurations.SizeConfiguration(); ++i)
        parseConfiguration_(configurations.GetConfiguration(i));
}

void HZEPSoftwarePlatformXMLReader::parseConfiguration_(const ZEPSoftwarePlatform::Configuration& configuration) {
    HZEPSystemConfig& config = *platform_->addSystemConfig();
    config.setName(HostI18n::toUtf8(configuration.GetName()));
    config.setPrettyName(HostI18n::toUtf8(configuration.GetDisplayName()));
    config.setDesc(HostI18n::toUtf8(configuration.GetDescription()));
    if (configuration.IssetPrebuilt())
        config.setPrebuiltData(HostI18n::toUtf8(configuration.GetPrebuilt().GetData()));
    if (configuration.IssetDefaultProcessorGroup())
        config.setDefaultProcGrpName(HostI18n::toUtf8(configuration.GetDefaultProcessorGroup()));
    if (configuration.IssetRuntimes()) {
        const std::string runtimes = HostI18n::toUtf8(configuration.GetRuntimes());
        for (std::size_t start = 0, end; start != std::string::npos; start = end == std::string::npos ? end : end + 1) {
            end = runtimes.find(',', start);
            config.addRuntime(runtimes.substr(start, end - start));
        }
    }
    if (configuration.IssetBootImages())
        parseBootImages_(configuration.GetBootImages(), config);
    for (std::size_t i = 0; i < configuration.SizeProcessorGroup(); ++i) {
        const ZEPSoftwarePlatform::ProcessorGroup& group = configuration.GetProcessorGroup(i);
        config.addProcessorGroup(HostI18n::toUtf8(group.GetName()));
        parseProcessorGroup_(group, *config.addProcessorGroup());
    }
}

void HZEPSoftwarePlatformXMLReader::parseBootImages_(const ZEPSoftwarePlatform::BootImages& images, HZEPSystemConfig& config) {
    config.setDefaultBootImgName(HostI18n::toUtf8(images.GetDefault()));
    HZEPBootImg& image = *config.addBootImg();
    const ZEPSoftwarePlatform::Image& source = images.GetImage();
    image.setName(HostI18n::toUtf8(source.GetName()));
    image.setType(HostI18n::toUtf8(source.GetType()));
    image.setBif(HostI18n::toUtf8(source.GetBif()));
    image.setImgData(HostI18n::toUtf8(source.GetImageData()));
    image.setBootMode(HostI18n::toUtf8(source.GetBootmode()));
    image.setRootFS(HostI18n::toUtf8(source.GetRootfs()));
    image.setMountPath(HostI18n::toUtf8(source.GetMountPath()));
    image.setReadMe(HostI18n::toUtf8(source.GetReadme()));
    image.setQemuDevTree(HostI18n::toUtf8(source.GetQemuDevicetree()));
    image.setQemuBoot(HostI18n::toUtf8(source.GetQemuBoot()));
    image.setQemuArgs(HostI18n::toUtf8(source.GetQemuArguments()));
    image.setHwBootBin(HostI18n::toUtf8(source.GetHwBootBin()));
    if (source.IssetQemuArguments() || source.IssetQemuBoot() || source.IssetQemuDevicetree())
        config.setSupportsQemu(true);
}

void HZEPSoftwarePlatformXMLReader::parseProcessorGroup_(const ZEPSoftwarePlatform::ProcessorGroup& group, HZEPProcessorGroup& into) {
    into.setName(HostI18n::toUtf8(group.GetName()));
    into.setPrettyName(HostI18n::toUtf8(group.GetDisplayName()));
    into.setCpuType(HostI18n::toUtf8(group.GetCpuType()));
    into.setArch(HostI18n::toUtf8(group.GetArchitecture()));
    into.setCpuInstance(HostI18n::toUtf8(group.GetCpuInstance()));
    const ZEPSoftwarePlatform::Os& os = group.GetOs();
    into.setOSName(HostI18n::toUtf8(os.GetName()));
    into.setOSPrettyName(HostI18n::toUtf8(os.GetDisplayName()));
    if (boost::algorithm::iequals(HostI18n::toUtf8(os.GetHypervisorGuest()), "yes"))
        into.setHypervisorGuest(true);
    into.setIncludePaths(HostI18n::toUtf8(os.GetIncludePaths()));
    into.setLibraryPaths(HostI18n::toUtf8(os.GetLibraryPaths()));
    into.setSysRoot(HostI18n::toUtf8(os.GetSysRoot()));
    into.setBSPLibraryPaths(HostI18n::toUtf8(os.GetBspLibraryPaths()));
    into.setBSPIncludePaths(HostI18n::toUtf8(os.GetBspIncludePaths()));
    into.setCompilerOptions(HostI18n::toUtf8(os.GetCompilerOptions()));
    into.setLinkerOptions(HostI18n::toUtf8(os.GetLinkerOptions()));
}
