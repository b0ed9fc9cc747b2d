// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors

// Lists that operations fill, and iterators that they make. `vectors.i` is each language's own form of a list.

%include "vectors.i"

template <class T>
class HostFwdIter {
public:
    virtual ~HostFwdIter();
    virtual bool hasNext() const = 0;
    virtual T next() = 0;
};

// The iterator that a script gets belongs to it, and walks a copy of the list.
%define HZEP_ITER(name, type)
HZEP_DETACHED_ITER(HostFwdIter< type >)
%template(name) HostFwdIter< type >;
%enddef

%define HZEP_LIST(class, vectorName, iterName)
%template(vectorName) std::vector< class * >;
HZEP_ITER(iterName, class *)
%enddef

%template(StringVector) std::vector< std::string >;
HZEP_ITER(StringIter, std::string)
HZEP_LIST(HZEPPlatform, ZEPPlatformVector, ZEPPlatformIter)
HZEP_LIST(HZEPHardwarePlatform, ZEPHardwarePlatformVector, ZEPHardwarePlatformIter)
HZEP_LIST(HZEPSoftwarePlatform, ZEPSoftwarePlatformVector, ZEPSoftwarePlatformIter)
HZEP_LIST(HZEPSystemConfig, ZEPSystemConfigVec, ZEPSystemConfigIter)
HZEP_LIST(HZEPSystemClock, ZEPSystemClockVec, ZEPSystemClockIter)
HZEP_LIST(HZEPProcessorGroup, ZEPProcessorGroupVec, ZEPProcessorGroupIter)
HZEP_LIST(HZEPBootImg, ZEPBootImgVec, ZEPBootImgIter)
HZEP_LIST(HZEPReconfigurablePartition, ZEPReconfigurablePartitionVec, ZEPReconfigurablePartitionIter)
// Beyond the classic set: what the hardware platform's own lists need.
HZEP_LIST(HZEPHardwareBusInterface, ZEPHardwareBusInterfaceVector, ZEPHardwareBusInterfaceIter)
HZEP_LIST(HZEPHardwareIPParam, ZEPHardwareIPParamVector, ZEPHardwareIPParamIter)
HZEP_LIST(HZEPHardwareNocConnectivity, ZEPHardwareNocConnectivityVector, ZEPHardwareNocConnectivityIter)
HZEP_LIST(HZEPHardwareFeatureRom, ZEPHardwareFeatureRomVector, ZEPHardwareFeatureRomIter)
HZEP_LIST(HZEPDevice, ZEPDeviceVector, ZEPDeviceIter)
%template(ZEPHardwareAddressSegmentVector) std::vector< HZEPHardwareAddressSegment * >;
%template(ZEPReconfigPartitionVector) std::vector< HZEPReconfigPartition * >;
%template(ZEPDesignIPInstanceVector) std::vector< HZEPDesignIPInstance * >;
%template(HZEPVcePartitionVector) std::vector< HZEPVcePartition >;
%template(StringMap) std::map< std::string, std::string >;
%template(StringSet) std::set< std::string >;
