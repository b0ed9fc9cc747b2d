// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors

%{
#include "PlatformLoader.h"
%}

%rename(ZEPPlatform) HZEPPlatform;

// What a platform takes over must have belonged to the script until then.
%apply SWIGTYPE *DISOWN { HZEPHardwarePlatform *platform, HZEPSoftwarePlatform *platform, HZEPReconfigurablePartition *partition };
%ignore HZEPPlatform::keepPartitionHardware;
%include "HZEPReconfigurablePartition.h"
%include "HZEPPlatform.h"
%clear HZEPHardwarePlatform *platform, HZEPSoftwarePlatform *platform, HZEPReconfigurablePartition *partition;

// The mode is an opaque value to every script; these are the three.
%{
namespace hzep_script {
class HwMetadataModes {
public:
    static zep_platform::PlatformLoader::HwMetadataMode preferAlternateJson() { return zep_platform::PlatformLoader::PreferAlternateJson; }
    static zep_platform::PlatformLoader::HwMetadataMode primaryJsonOnly() { return zep_platform::PlatformLoader::PrimaryJsonOnly; }
    static zep_platform::PlatformLoader::HwMetadataMode xmlOnly() { return zep_platform::PlatformLoader::XmlOnly; }
};
} // namespace hzep_script
%}
namespace hzep_script {
class HwMetadataModes {
public:
    static zep_platform::PlatformLoader::HwMetadataMode preferAlternateJson();
    static zep_platform::PlatformLoader::HwMetadataMode primaryJsonOnly();
    static zep_platform::PlatformLoader::HwMetadataMode xmlOnly();
};
} // namespace hzep_script

namespace zep_platform {

class PlatformLoader {
public:
    explicit PlatformLoader(const std::string& path);
    PlatformLoader(const std::string& path, zep_platform::PlatformLoader::HwMetadataMode mode);
    void attachHardwarePlatform();
    void attachHardwareEmulationPlatform();
    void attachSoftwarePlatform();
    std::string getVersion() const;
    std::string getFilePath() const;
    std::string getBaseName() const;
    std::string getName() const;
    std::string getVendor() const;
    std::string getDescription() const;
    std::string getHardwarePlatformFile() const;
    std::string getHardwareEmuPlatformFile() const;
    std::string getSoftwarePlatformFile() const;
    %extend {
        /// The platform with everything attached, which lives as long as the loader; null when a step failed.
        HZEPPlatform* load() { return $self->load().get(); }
    }
};

} // namespace zep_platform
