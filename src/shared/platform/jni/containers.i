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

%define HZEP_VECTOR(class, vectorName)
%typemap(argout) std::vector< class * > & "hzep_script::handOut($1);"
%typemap(check) std::vector< class * > &, const std::vector< class * > & {
    if (!hzep_script::hasLiveItems(*$1))
        HZEP_REFUSE_HANDLE("the object of an item in this list is gone")
}
%template(vectorName) std::vector< class * >;
%enddef
%define HZEP_LIST(class, vectorName, iterName)
HZEP_VECTOR(class, vectorName)
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
HZEP_VECTOR(HZEPHardwareAddressSegment, ZEPHardwareAddressSegmentVector)
HZEP_VECTOR(HZEPReconfigPartition, ZEPReconfigPartitionVector)
HZEP_VECTOR(HZEPDesignIPInstance, ZEPDesignIPInstanceVector)
%template(HZEPVcePartitionVector) std::vector< HZEPVcePartition >;
%template(StringMap) std::map< std::string, std::string >;
%template(StringSet) std::set< std::string >;
