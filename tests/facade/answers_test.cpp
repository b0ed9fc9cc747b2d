// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "Documents.h"
#include "FacadeFixture.h"
#include "HZEPBootImg.h"
#include "HZEPPlatformHelper.h"
#include "HZEPProcessorGroup.h"
#include "PlatformLoader.h"
#include "WholePlatform.h"

#include <boost/preprocessor/seq/for_each.hpp>
#include <boost/preprocessor/stringize.hpp>
#include <boost/preprocessor/variadic/to_seq.hpp>

#include <type_traits>

namespace {

template <class T>
std::string show(const T& value) {
    if constexpr (std::is_convertible_v<T, std::string>)
        return value;
    else if constexpr (std::is_pointer_v<T>)
        return value ? value->getName() : "";
    else
        return std::to_string(value);
}

std::string joined(const Texts& list) {
    std::string text;
    for (const std::string& item : list)
        text += (text.empty() ? "" : ",") + item;
    return text;
}

const TempDir& folder() {
    static const TempDir dir;
    return dir;
}

/// Each question and its answer; what is nothing is left out.
class Answers {
public:
    explicit Answers(std::string head) : head_(std::move(head)) {}
    template <class T>
    void add(const char* question, const T& answer) {
        std::string text = show(answer);
        if (const std::size_t at = text.find(folder().path()); at != text.npos)
            text.replace(at, folder().path().size(), "DIR");
        if (text.find_first_not_of("0/") != text.npos)
            words_.push_back(std::string(question) + "=" + text);
    }
    std::string print() const { return wrapped(head_ + ":", words_); }

private:
    std::string head_;
    std::vector<std::string> words_;
};

#define ASK_ONE(r, object, question) answers.add(BOOST_PP_STRINGIZE(question), (object).question());
#define ASK_LIST(r, object, question)                                                                                                      \
    answers.add(BOOST_PP_STRINGIZE(question), joined(listOf([&](Texts& out) { (object).question(out); })));
#define ASK_WITH(object, question, ...) answers.add(#question, (object).question(__VA_ARGS__))
#define ASK(object, ...) BOOST_PP_SEQ_FOR_EACH(ASK_ONE, object, BOOST_PP_VARIADIC_TO_SEQ(__VA_ARGS__))
#define ASK_LISTS(object, ...) BOOST_PP_SEQ_FOR_EACH(ASK_LIST, object, BOOST_PP_VARIADIC_TO_SEQ(__VA_ARGS__))
#define ASK_TWO(object, question)                                                                                                          \
    do {                                                                                                                                   \
        Texts first, second;                                                                                                               \
        (object).question(first, second);                                                                                                  \
        answers.add(#question, joined(first) + "/" + joined(second));                                                                      \
    } while (false)

// clang-format off
template <class Object>
void askAsFacade(Answers& answers, const Object& object) {
    ASK(object, getVendor, getName, getVersion, getPlatformFile, getDeviceName, getDescription, getUniqueName, hasDimmConnectors, hasSimContent)
    ASK_LISTS(object, getTargetCategories, getDimmConnectors)
}

template <class Object>
void askAsHardware(Answers& answers, const Object& object) {
    ASK(object, getHostArch, getInterfaceDesc, getBoardId, getFpgaDevice, getBRAMCount, getDSPCount, getFFCount, getLUTCount, getNumDDRs,
        getNumComputeUnits, getDefaultClockFrequency, getDefaultClockId, getMemType, getMemSize, isMemoryResourceIndexed, getUniqueMemoryTypeCount,
        getFpgaPart, getBoardConnectionsString, getLockedBoardConnectionsString, getUnlockedBoardConnectionsString)
    ASK_LISTS(object, getBoardImgZipEntries, getValidSLRNames, getCpuClockNames, getSystemClockNames, getUniqueMemoryTypeStrings, getLockedDimmConnectors)
    ASK_TWO(object, getAllResources);
    ASK_TWO(object, getAllClockFrequencies);
    ASK_TWO(object, getConnectedDimmConnectors);
    for (const char* clock : {"clk_kernel2", "t70"}) {
        ASK_WITH(object, getClockFrequency, clock);
        ASK_WITH(object, getClockId, clock);
    }
    ASK_WITH(object, getPlatformFrequency, 1);
    for (const char* type : {"HBM", "HBM[1]"}) {
        ASK_WITH(object, getMemoryTypeCount, type);
        ASK_WITH(object, getMemoryIndex, type, std::string(type) == "HBM");
        ASK_WITH(object, getMemorySize, type, std::string(type) == "HBM");
        ASK_WITH(object, getMemorySLR, type, std::string(type) == "HBM");
    }
}

void askPlatform(std::string& text, const std::string& name, const HZEPPlatform& platform) {
    Answers answers(name);
    askAsFacade(answers, platform);
    ASK(platform, getLibrary, getHardwarePlatformFile, getSoftwarePlatformFile, getHardwareEmuPlatformFile, isZpfm, isPartial, isComplete, isBad,
        getBadReason, hasReconfigurablePartitions, getDefaultRPId, hasHWEmulationPlatform, hasDistinctHardwareEmulationPlatform,
        hasRPHardwareEmulationPlatform, supportsHardware, supportsSWEmulation, supportsHWEmulation, supportsTwoHwEmuBd, isHWEmuPlatform,
        isExpandable, isUnified, isFixed, getDesignIntentDataCenter, getDesignIntentEmbedded, getDesignIntentExternalHost,
        getDesignIntentServerManaged, getPlatformDir, getPlatformBaseName, isHidden, getTypeString, getTypePrettyString)
    text += answers.print();
}

void askHelper(std::string& text, const std::string& name, const HZEPPlatformHelper& helper) {
    Answers answers(name);
    askAsFacade(answers, helper);
    askAsHardware(answers, helper);
    ASK(helper, isValid, isUnified, isUnifiedPlatform, isExpandablePlatform, isFixedPlatform, isPartialPlatform, getLibrary, getPlatformDir,
        getPlatformBaseName, getSoftwarePlatformFile, getFpgaPartAsFields, supportsMultipleRuntimes,
        isProcessorGroupRelevant, isLinuxRootFSPathRelevant, hasBootImg, getDefaultSystemConfig)
    const std::string config = "standalone_r5";
    ASK_WITH(helper, getSystemConfigByName, config);
    ASK_WITH(helper, isSystemConfigSupported, config);
    ASK_WITH(helper, isRuntimeSupported, "OCL");
    ASK_WITH(helper, isQemuSupported, config);
    ASK_WITH(helper, getNumRuntimes, config);
    answers.add("getSysConfigNames", joined(listOf([&](Texts& out) { helper.getSysConfigNames(out, "static"); })));
    text += answers.print();
}

void askHardware(std::string& text, const std::string& name, const HPLPlatform& platform) {
    Answers answers(name);
    askAsFacade(answers, platform);
    askAsHardware(answers, platform);
    ASK(platform, getBoardPart, getBoardRepo, getDetailedDescription, getPrettyName, getPartName, getDefaultClockName, getRegisterCount,
        getHpfmString, getHwDbName, getGeneratedName, getGeneratedVersion, getGeneratedChangeList, getGeneratedIpChangeList,
        getGeneratedSharedDataChangeList, getGeneratedTimestamp, isGeneratedByLink, getIdCode, getExtendedIdCode, supportsHardware,
        supportsSWEmulation, supportsHWEmulation, supportsTwoHwEmuBd, supportsMemoryResourceIndex, usesNIFD, isExpandable, isUnifiedPlatform,
        isHWEmuPlatform, isChildHardwareEmuPlatform, getMemoryResourceIndexState, usesPR, getPlatformState, getDefaultClkId,
        getFlashInterfaceType, getFlashOffsetAddress, getFlashSize, isGeneratedBySwEmuLink, hasExternalSources, hasMDAContent, isStatic, isRM,
        getDrBdInstName, getNormalizeMemoryBanks, getDesignID, getParentID, getNodeID, getFunctionID, getVCENodeID, getVCEUniqueID, getVCEPuID)
    ASK(platform, getState, isPreSynthFlatShell, isSynthFlatShell, isFlatShell, getReconfigModuleName, hasScalableClocks,
        hasUserDefinedScalableClocks, hasFixedClocks, getBusInterfaceMaxDataWidth, getMaxAXIMMManagers, getMaxAXIMMSubordinates,
        getMaxInterrupts, isHBMPresent, getHBMBankCount, getHBMDefaultBankCount, getHBMInstanceName, getPlatformExt, getJsonFileName,
        getAltJsonFileName, getXmlFileName, getHwEmuJsonFileName, getAltHwEmuJsonFileName, getHwEmuXmlFileName,
        getVCEPlInterfaceIDAsString, getTotalMemSizeInGb, getVBNV, getVersionMajor, getVersionMinor, getTopModuleName,
        getAcceleratorBinaryFormat, getAcceleratorBinaryContent, getDefaultOutputType, isDcpFuncStripped, isDcpEncrypt, getXmlFile,
        getDirectory, getOldFeatureRomTime, getHostInterface, getHostArchAsEnum, getHostInterfaceAsEnum,
        getValidBinaryContentValuesAsStr, getValidOutputTypeValuesAsStr, getNumFiles)
    ASK(platform, getOCLRegionCount, getOclInstPath, usesExpandedPR)
    ASK_LISTS(platform, getBvlcCompileXpSwitches, getBvlcLinkXpSwitches)
    ASK_WITH(platform, getConnectorDisplayName, "own");
    const HZEPDesignIntentStorage& intent = platform.getDesignIntent();
    ASK(intent, getDataCenter, getEmbedded, getExternalHost, getServerManaged)
    for (const HPLDevice* device : elementsOf(platform.createDeviceIter())) {
        ASK(*device, getName, getType, getFpgaPart, getPartName, getPartArch, getPartDevice, getPartPackage, getPartSpeed, getPartTempGrade,
            getPartStaPower, getPartRevision, getNumSLRs, getAddrWidth)
        const HPLCore& core = device->getReadOnlyCore();
        ASK(core, getName, getType, getVlnv, getSourceViewInstPath, getInstPath, getParentRMInstPath, getReconfigModuleName, getDRBaseAddress,
            getDRBDName, getClockFreq, getNumComputeUnits, getMaxAddrWidth, getMaxDataWidth, getBRAMCount, getDSPCount, getLUTCount,
            getRegisterCount, hasResourceInfo)
    }
    text += answers.print();
}
// clang-format on

TEST(Facade, AnswersEachQuestion) {
    std::string text;
    askHelper(text, "facade of nothing", HZEPPlatformHelper(nullptr));
    const HZEPPlatformHelper loaded(writeKestrel(folder()), {});
    auto* hardware = dynamic_cast<HPLPlatform*>(loaded.getPlatform()->getHardwarePlatform());
    ASSERT_TRUE(hardware);
    hardware->getBoard().addDimmConnector("d0", "D 0", "DIMM", "m0", "", true, false);
    hardware->getBoard().addDimmConnector("d1", "D 1", "DIMM", "m1", "", true, true);
    hardware->addFile("SIM_BINARY", "sim");
    hardware->addFile("BOARD_REPO_PATH", "board");
    askHelper(text, "facade of kestrel", loaded);
    askPlatform(text, "kestrel", *loaded.getPlatform());
    zep_platform::PlatformLoader loader(folder().path("kestrel.zpfm"));
    ASSERT_TRUE(loader.load());
    Answers answers("loader of kestrel");
    ASK(loader, getVersion, getFilePath, getBaseName, getName, getVendor, getDescription, getHardwarePlatformFile,
        getHardwareEmuPlatformFile, getSoftwarePlatformFile)
    text += answers.print();

    Built other;
    other.platform.setPartial(true);
    fillWhole(*other.hardware);
    other.hardware->getBoard().addDimmConnector("own", "Own", "DIMM", "module", "Module", true, true);
    other.hardware->addValidOutputTypeValue("type");
    other.hardware->setSupportsTwoHwEmuBd(true);
    other.hardware->setExpandable(false);
    other.hardware->setOldFeatureRomTime(1234);
    other.hardware->setXmlFile("/xml/folder/x.xml");
    other.hardware->updateHBMBankInfo("hbm", true);
    other.hardware->setState(HZEPHardwarePlatform::pre_synth);
    for (const auto& [type, mode, count] : {std::tuple{"aximm", "slave", 2}, {"interrupt", "", 3}})
        for (int i = 0; i < count; ++i) {
            HZEPHardwareBusInterface* bus = other.hardware->addBusInterface();
            bus->setBusTypeRef(type);
            bus->setMode(mode);
        }
    askHelper(text, "facade of the whole", HZEPPlatformHelper(&other.platform));
    Built banks;
    HZEPHardwareBusInterface* memory = banks.hardware->addBusInterface();
    memory->setMemPort("memss");
    memory->setSPTag("HBM");
    for (const unsigned index : {7U, 8U}) {
        HZEPHardwareAddressSegment* bank = memory->addAddressSegment();
        bank->setIndex(index);
        bank->setSlr("SLR" + std::to_string(index));
    }
    askHelper(text, "facade of two banks", HZEPPlatformHelper(&banks.platform));
    askPlatform(text, "the whole", other.platform);
    askHardware(text, "hardware of the whole", *other.hardware);
    askPlatform(text, "fresh platform", HZEPPlatform());
    askHardware(text, "fresh hardware", HPLPlatform());
    EXPECT_TRUE(loaded.getPlatformBoardRepo().ends_with("/board"));
    expectTestFile("facade/answers.txt", text);
}

} // namespace
