// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "FacadeFixture.h"

#include "HZEPPlatformHelper.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <type_traits>

namespace {

using Helper = HZEPPlatformHelper;
using Platform = HZEPPlatform;
using Hw = HZEPHardwarePlatform;
using Sw = HZEPSoftwarePlatform;

template <class T>
std::string show(const T& value) {
    if constexpr (std::is_same_v<T, std::string>)
        return value;
    else if constexpr (std::is_pointer_v<T>)
        return value ? value->getName() : "";
    else
        return std::to_string(value);
}
std::string show(const Texts& list) {
    std::string text;
    for (const std::string& item : list)
        text += "[" + item + "]";
    return text;
}

/// The answer and what stands in the lists that were given empty, as one text; a null object gives the neutral one.
template <class Object, class Answer, class... Params, class... Args>
std::string ask(const Object* object, Answer (Object::*question)(Params...) const, Args... args) {
    std::string text;
    if constexpr (std::is_void_v<Answer>) {
        if (object)
            (object->*question)(args...);
    } else {
        text = show(object ? std::remove_cvref_t<Answer>((object->*question)(args...)) : std::remove_cvref_t<Answer>());
    }
    (..., [&] {
        if constexpr (std::is_same_v<Args, Texts>)
            text += show(args);
    }());
    return text;
}

template <class Part>
const Part* partOf(const Platform& platform) {
    if constexpr (std::is_same_v<Part, Platform>)
        return &platform;
    else if constexpr (std::is_same_v<Part, Hw>)
        return platform.getHardwarePlatform();
    else
        return platform.getSoftwarePlatform();
}

struct Row {
    const char* name;
    std::function<std::string(const Helper&)> facade;
    std::function<std::string(const Platform&)> own;
    std::string neutral;
};

template <class OfHelper, class Part, class Answer, class... Params, class... Args>
Row row(const char* name, OfHelper ofHelper, Answer (Part::*ofPart)(Params...) const, Args... args) {
    return {name, [=](const Helper& helper) { return ask(&helper, ofHelper, args...); },
            [=](const Platform& platform) { return ask(partOf<Part>(platform), ofPart, args...); },
            ask(static_cast<const Part*>(nullptr), ofPart, args...)};
}

#define SAME(PART, NAME, ...) row(#NAME, &Helper::NAME, &PART::NAME __VA_OPT__(, ) __VA_ARGS__)

const std::string kType = "HBM", kClock = "clk_kernel2", kConfig = "standalone_r5";

const Row kRows[] = {
    row("isUnifiedPlatform", &Helper::isUnifiedPlatform, &Platform::isUnified),
    row("isExpandablePlatform", &Helper::isExpandablePlatform, &Platform::isExpandable),
    row("isFixedPlatform", &Helper::isFixedPlatform, &Platform::isFixed),
    row("isPartialPlatform", &Helper::isPartialPlatform, &Platform::isPartial),
    SAME(Platform, isUnified),
    SAME(Platform, hasSimContent),
    SAME(Platform, getVendor),
    SAME(Platform, getLibrary),
    SAME(Platform, getName),
    SAME(Platform, getVersion),
    SAME(Platform, getPlatformDir),
    SAME(Platform, getPlatformFile),
    SAME(Platform, getDeviceName),
    SAME(Platform, getTargetCategories, Texts()),
    SAME(Platform, getDescription),
    SAME(Platform, getSoftwarePlatformFile),
    SAME(Platform, getUniqueName),
    SAME(Platform, getPlatformBaseName),
    SAME(Platform, hasDimmConnectors),
    SAME(Platform, getDimmConnectors, Texts()),
    SAME(Hw, getHostArch),
    SAME(Hw, getInterfaceDesc),
    SAME(Hw, getBoardId),
    row("getPlatformBoardRepo", &Helper::getPlatformBoardRepo, &Hw::getBoardRepo),
    SAME(Hw, getBRAMCount),
    SAME(Hw, getDSPCount),
    SAME(Hw, getFFCount),
    SAME(Hw, getLUTCount),
    SAME(Hw, getNumDDRs),
    SAME(Hw, getNumComputeUnits),
    SAME(Hw, getMemType),
    SAME(Hw, getMemSize),
    SAME(Hw, getClockFrequency, kClock),
    SAME(Hw, getDefaultClockFrequency),
    SAME(Hw, getDefaultClockId),
    SAME(Hw, getFpgaDevice),
    SAME(Hw, getPlatformFrequency, 1),
    SAME(Hw, getClockId, kClock),
    SAME(Hw, getAllClockFrequencies, Texts(), Texts()),
    SAME(Hw, getCpuClockNames, Texts()),
    SAME(Hw, getAllResources, Texts(), Texts()),
    SAME(Hw, getSystemClockNames, Texts()),
    SAME(Hw, getBoardImgZipEntries, Texts()),
    SAME(Hw, getValidSLRNames, Texts()),
    SAME(Hw, isMemoryResourceIndexed),
    SAME(Hw, getUniqueMemoryTypeCount),
    SAME(Hw, getUniqueMemoryTypeStrings, Texts()),
    SAME(Hw, getMemoryTypeCount, kType),
    SAME(Hw, getMemoryIndex, kType, 1U),
    SAME(Hw, getMemorySize, kType, 1U),
    SAME(Hw, getMemorySLR, kType, 1U),
    SAME(Sw, getDefaultSystemConfig),
    SAME(Sw, getSystemConfigByName, kConfig),
    row("getSysConfigNames", &Helper::getSysConfigNames, &Sw::getSystemConfigNames, Texts(), std::string("static")),
    SAME(Sw, isSystemConfigSupported, kConfig),
    SAME(Sw, isRuntimeSupported, std::string("OCL")),
};

TEST(Facade, AnswersNeutrallyWithoutAPlatformAndAsThePlatformWithOne) {
    TempDir dir;
    const Helper none(nullptr), loaded(writeKestrel(dir), {});
    ASSERT_TRUE(loaded.isValid());
    auto* hardware = dynamic_cast<HPLPlatform*>(loaded.getPlatform()->getHardwarePlatform());
    ASSERT_TRUE(hardware);
    hardware->getBoard().addDimmConnector("d0", "D 0", "DIMM", "", "", false, false);
    hardware->addFile("SIM_BINARY", "sim");
    hardware->addFile("BOARD_REPO_PATH", "board");
    Built other;
    other.hardware->setExpandable(false);
    other.platform.setPartial(true);
    HZEPHardwareBusInterface* memory = other.hardware->addBusInterface();
    memory->setMemPort("memss");
    memory->setSPTag("HBM");
    for (const unsigned index : {7U, 8U}) {
        HZEPHardwareAddressSegment* bank = memory->addAddressSegment();
        bank->setIndex(index);
        bank->setSlr("SLR" + std::to_string(index));
    }
    const Helper fixed(&other.platform);

    for (const Row& row : kRows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(row.facade(none), row.neutral);
        EXPECT_EQ(row.facade(loaded), row.own(*loaded.getPlatform()));
        EXPECT_EQ(row.facade(fixed), row.own(other.platform));
        EXPECT_TRUE(row.facade(loaded) != row.neutral || row.facade(fixed) != row.neutral) << "neither platform tells";
    }
}

} // namespace
