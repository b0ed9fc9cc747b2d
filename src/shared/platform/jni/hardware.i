// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors

%{
#include "HPLPlatform.h"
#include "HostHwDb.h"
%}

%rename(ZEPHardwarePlatform) HZEPHardwarePlatform;
%rename(ZEPHardwareBusInterface) HZEPHardwareBusInterface;
%rename(ZEPHardwareAddressSegment) HZEPHardwareAddressSegment;
%rename(ZEPHardwareIPParam) HZEPHardwareIPParam;
%rename(ZEPHardwareNocConnectivity) HZEPHardwareNocConnectivity;
%rename(ZEPHardwareFeatureRom) HZEPHardwareFeatureRom;
%rename(ZEPReconfigPartition) HZEPReconfigPartition;
%rename(ZEPDesignIPInstance) HZEPDesignIPInstance;
%rename(ZEPDesignIntentStorage) HZEPDesignIntentStorage;
%rename(ZEPPfmFileTypes) HZEPPfmFileTypes;
%rename(ZEPDevice) HZEPDevice;

// Maps by enumerators: every value has its name through toString.
%ignore HZEPPfmFileTypes::getFileTypeMap;
%ignore HZEPPfmFileTypes::getTclFileTypeMap;
%ignore HZEPVceHardware::getArchMap;
// The bytes of names and ids are told as text.
%ignore HZEPHardwareFeatureRom::getRomHeader;
%ignore HZEPHardwareFeatureRom::setFPGAPartName(const unsigned char (&)[64]);
%ignore HZEPHardwareFeatureRom::setVBNVName(const unsigned char (&)[64]);
%ignore HZEPHardwareFeatureRom::setUUID(const unsigned char (&)[16]);
%include "HZEPPfmFileTypes.h"
%include "HZEPDesignIntentStorage.h"
%include "HZEPReconfigPartition.h"
%include "HZEPVceHardware.h"
%include "HZEPVcePartition.h"
%include "HZEPDesignIPInstance.h"
%include "HZEPHardwareIPParam.h"
%include "HZEPHardwareFeatureRom.h"
%include "HZEPHardwareAddressSegment.h"
%include "HZEPHardwareBusInterface.h"
%include "HZEPHardwareNocConnectivity.h"
%nodefaultctor HZEPDevice;
%ignore HZEPDevice::HZEPDevice;
%include "HZEPDevice.h"

// Streams and pairs of iterators are no script's: the text, and the list. What is ignored takes along whatever has its name, so the
// replacements get theirs by a renaming.
%ignore HZEPHardwarePlatform::issueNormalizeMemoryBanksMessage;
%ignore HZEPHardwarePlatform::getFeatureRomVecRange;
%ignore HZEPHardwarePlatform::FeatureRomRange;
%ignore HZEPHardwarePlatform::getDevice;
%rename(issueNormalizeMemoryBanksMessage) HZEPHardwarePlatform::tellNormalizeMemoryBanksMessage;
%rename(getFeatureRomVecRange) HZEPHardwarePlatform::listFeatureRoms;
%rename(getDevice) HZEPHardwarePlatform::findDevice;
%newobject HZEPHardwarePlatform::create;
%extend HZEPHardwarePlatform {
    /// A new and empty one.
    static HZEPHardwarePlatform* create() { return new HPLPlatform; }
    HZEPDevice* findDevice(const std::string& name) const { return $self->getDevice(name); }
    std::string tellNormalizeMemoryBanksMessage() const {
        std::ostringstream text;
        $self->issueNormalizeMemoryBanksMessage(text);
        return text.str();
    }
    std::vector<HZEPHardwareFeatureRom*> listFeatureRoms() const {
        const auto [first, last] = $self->getFeatureRomVecRange();
        const std::vector<HZEPHardwareFeatureRom*> roms(first, last);
        hzep_script::handOut(&roms);
        return roms;
    }
}

/// A hardware database, which belongs to the host's manager.
class HostHwDb {
public:
    const std::string& getName() const;
    const std::string& getPlatformFile() const;
    std::size_t getInstanceCount() const;
    ~HostHwDb();

private:
    HostHwDb();
};
%include "HZEPHardwarePlatform.h"
