// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "FreshProcess.h"
#include "PackText.h"
#include "PlatformOnDisk.h"

#include "HostEnv.h"
#include "NativeCatalogService.h"
#include "PlatformLoader.h"

#include <gtest/gtest.h>

#include <boost/algorithm/string/replace.hpp>

namespace {

using zep::platform::NativeCatalogService;
using zep_platform::PlatformLoader;

enum Question { Warranty, Dsa, PreSynth, Reasons };

/// One platform, one tool, one list of decisions, and the answer: the verdict and its reason, what was printed, what was sent.
struct Case {
    std::string name;
    PlatformOnDisk platform;
    std::string tool;
    std::string list = {};
    std::vector<std::string> answer;
    Question question = Warranty;
};

void PrintTo(const Case& row, std::ostream* out) {
    *out << row.name;
}

const std::string kVersionless = "Critical Warning: the current tool is versionless, please set the appropriate product name/version";
const std::string kNoList = "warning|@74-49@%s|ROOT/platforms/achromatic";
const std::string kBadList = "warning|@74-50@%s|ROOT/platforms/achromatic";
const std::string kNotUnified =
    "' is not a unified platform. By policy, non-unified platforms are not supported by the current tool version";

std::string notNewer(const std::string& tool) {
    return "info|@74-78@%s|" + tool;
}

std::string refused(const std::string& version, const std::string& tool, const std::string& policy) {
    return "no: Platform 'p.zpfm' (version " + version + ") is not supported by the current tool version (" + tool + "). By policy, " +
           policy;
}

const std::string kNewer = "the platform version can not be newer than the current tool version";
const std::string kTooOld = "the platform version can not be older than 2017.4";
const std::string kCalendar =
    "platforms are supported for the remainder of the calendar year release plus the following calendar year release";

std::string preSynth(const std::string& version, const std::string& tool, const std::string& policy) {
    return "no: Platform 'p.zpfm' (version " + version + ") is a PRE_SYNTH platform and is not supported by the current tool version (" +
           tool + "). By policy, " + policy;
}

std::string element(const std::string& more, const std::string& products = R"("zep", "ferro")") {
    return R"({"products": [)" + products + R"(], "key": "hardwarePlatform.name", "value": "heron")" + more + "}";
}

std::string black(const std::string& items) {
    return "\"black_list\": [" + items + "]";
}
std::string white(const std::string& items) {
    return "\"white_list\": [" + items + "]";
}

PlatformOnDisk of(const std::string& version) {
    return {.version = version};
}
PlatformOnDisk withWarranty(const std::string& versions) {
    return {.version = "2018.3", .extensions = R"({"extended_warranty": )" + versions + "}"};
}
PlatformOnDisk inPreSynth(const std::string& version) {
    return {.version = version, .intents = "embedded", .state = "pre_synth"};
}

const std::string kBlack = "no: Platform 'p.zpfm' has been marked unsupported due to known issues.";
const std::string kWhite = "yes: Platform 'p.zpfm' has been explicitly enabled for this release.";
const std::string kExtended = "yes: Platform 'p.zpfm' has been explicitly enabled for this release with an extended warranty.";
const std::string kTooOldOn2020 = refused("2018.3", "2020.1", kCalendar);

const Case kCases[] = {
    {"NotUnified", {.version = "x", .isUnified = false}, "2020.1", "", {"no: Platform 'p.zpfm" + kNotUnified}},
    {"EmbeddedPassesAtOnce", {.version = "x", .intents = "embedded"}, "2020.1", "", {"yes"}},
    {"NewerRelease", of("2018.3"), "2018.2", "", {refused("2018.3", "2018.2", kNewer)}},
    {"NewerYear", {.version = "2021.1", .intents = "externalHost"}, "2020.2", "", {refused("2021.1", "2020.2", kNewer)}},
    {"SameRelease", {.version = "2020.1.7", .intents = "serverManaged"}, "2020.1", "", {"yes", notNewer("2020.1"), kNoList}},
    {"OneYearOlder", of("2019.1"), "2020.2", "", {"yes", notNewer("2020.2"), kNoList}},
    {"TwoYearsOlder", of("2018.3"), "2020.1", "", {kTooOldOn2020, notNewer("2020.1"), kNoList}},
    {"Before2017_4", of("2017.3"), "2017.4", "", {refused("2017.3", "2017.4", kTooOld), notNewer("2017.4"), kNoList}},
    {"SameReleaseBefore2017_4", of("2017.1"), "2017.1", "", {refused("2017.1", "2017.1", kTooOld), notNewer("2017.1"), kNoList}},
    {"From2017_4", of("2017.4"), "2018.3", "", {"yes", notNewer("2018.3"), kNoList}},
    {"VersionlessIs2019_1", of("2019.2"), ".", "", {refused("2019.2", ".", kNewer), "said: " + kVersionless}},
    {"HalfAVersionIsNone", of("2018.9"), "2020.", "", {"yes", "said: " + kVersionless, notNewer("2020."), kNoList}},

    {"ExtendedBeforeBlack", withWarranty(R"(["2019.2", "2020.1"])"), "2020.1", black(element("")), {kExtended, notNewer("2020.1")}},
    {"ExtendedByYearIsRelease0", withWarranty(R"(["2020"])"), "2020.0", "", {kExtended, notNewer("2020.0")}},
    {"ExtendedByYearOnly", withWarranty(R"(["2020"])"), "2020.1", "", {kTooOldOn2020, notNewer("2020.1"), kNoList}},
    {"ExtendedIsNoList",
     withWarranty(R"({"to": "2020.1"})"),
     "2020.1",
     "",
     {kTooOldOn2020, notNewer("2020.1"), "warning|@74-79@%s|{\n    \"to\": \"2020.1\"\n}\n", kNoList}},
    {"ExtendedIsEmpty", withWarranty("[]"), "2020.1", "", {kTooOldOn2020, notNewer("2020.1"), kNoList}},
    {"ExtendedIsNoVersion",
     withWarranty(R"(["2020.1b", "then"])"),
     "2020.2",
     "",
     {"raised: the version 'then' is not of the form MAJOR.MINOR", notNewer("2020.2")}},

    {"BlackFirst",
     of("2020.1"),
     "2020.1",
     black(element(R"(, "reason": "It smokes.")")) + "," + white(element("")),
     {kBlack + " Reason: It smokes.", notNewer("2020.1")}},
    {"WhiteFirst", of("2018.3"), "2020.1", white(element("")) + "," + black(element("")), {kWhite, notNewer("2020.1")}},
    {"ListObjectByItsText",
     of("2018.3"),
     "2020.1",
     white(R"({"products": ["ferro"], "key": "hardwarePlatform.designIntent.embedded",
               "value": "{\n    \"value\": \"false\",\n    \"explicit\": \"true\"\n}\n"})"),
     {kWhite, notNewer("2020.1")}},
    {"ListOfAnotherProduct", of("2020.1"), "2020.1", black(element("", R"("zep", "Ferro", "asked")")), {"yes", notNewer("2020.1")}},
    {"ListWithoutValueOrKey",
     of("2020.1"),
     "2020.1",
     black(R"({"products": ["ferro"], "key": "boardName"}, {"products": ["ferro"], "value": "heron"},
              {"products": ["ferro"], "key": "name..x[1]", "value": "heron"})"),
     {"yes", notNewer("2020.1")}},
    {"ListOfUnknownKind", of("2020.1"), "2020.1", "\"grey_list\": []," + black(element("")), {"yes", notNewer("2020.1"), kBadList}},
    {"ListDecidedBeforeUnknownKind", of("2020.1"), "2020.1", black(element("")) + ", \"grey_list\": []", {kBlack, notNewer("2020.1")}},
    {"ListWithoutProducts", of("2020.1"), "2020.1", black(R"({"key": "name", "value": "heron"})"), {"yes", notNewer("2020.1"), kBadList}},
    {"ListAsObject", of("2020.1"), "2020.1", "\"black_list\": {\"a\": " + element("") + "}", {"yes", notNewer("2020.1"), kBadList}},

    {"VersionWithoutPoint", of("2020"), "2020.1", "", {"raised: the version '2020' is not of the form MAJOR.MINOR"}},
    {"VersionTooLarge", of("2020.99999999999"), "2020.1", "", {"raised: the version '2020.99999999999' has a number that is too large"}},
    {"ToolVersionNoNumber", of("2020.1"), "a.b", "", {"raised: the version 'a.b' is not of the form MAJOR.MINOR"}},
    {"ReasonsTakeTheWords", of("soon"), "2020.1", "", {"no: before; the version 'soon' is not of the form MAJOR.MINOR"}, Reasons},
    {"ReasonsStayWithoutOne", of("2020.1"), "2020.1", "", {"yes: before", notNewer("2020.1"), kNoList}, Reasons},

    {"DsaNotUnified", {.isUnified = false}, "2020.1", "", {"no: DSA 'ROOT/../hw-p.kar" + kNotUnified}, Dsa},
    {"DsaOutOfScope", {.version = "x", .intents = ""}, "2020.1", "", {"yes"}, Dsa},
    {"DsaOld", of("2013.1"), "2020.1", "", {"yes"}, Dsa},
    {"DsaNewer",
     of("2019.2"),
     ".",
     "",
     {"no: DSA 'ROOT/../hw-p.kar' (version 2019.2) is not supported by the current tool version (.). By policy, the DSA version can not "
      "be newer than the current tool version",
      "said: " + kVersionless},
     Dsa},

    {"NotPreSynth", of("2020.1"), "2020.1", "", {"no: Platform 'ROOT/../p.zpfm' is not a PRE_SYNTH platform"}, PreSynth},
    {"PreSynthNotUnified", {.state = "pre_synth", .isUnified = false}, "2020.1", "", {"no: Platform 'p.zpfm" + kNotUnified}, PreSynth},
    {"PreSynthSame", inPreSynth("2020.1"), "2020.1", "", {"yes"}, PreSynth},
    {"PreSynthNewer", inPreSynth("2020.2"), "2020.1", "", {preSynth("2020.2", "2020.1", kNewer)}, PreSynth},
    {"PreSynthOlder",
     inPreSynth("2019.2"),
     ".",
     "",
     {preSynth("2019.2", ".", "platforms are only supported on the same tool release on which the platform was created."),
      "said: " + kVersionless + ". Setting a default value of 2020.1 for the major and minor version."},
     PreSynth},
};

std::string join(const std::vector<std::string>& lines) {
    std::string text;
    for (const std::string& line : lines)
        text += line + "\n";
    return text;
}

bool ask(const NativeCatalogService& catalog, Question question, const std::string& file, std::string& reason) {
    if (question == Reasons) {
        std::vector<std::string> reasons = {"before"};
        const bool isSupported = catalog.isUnderWarranty(file, reasons, "");
        for (const std::string& text : reasons)
            reason += (reason.empty() ? "" : "; ") + text;
        return isSupported;
    }
    // The product asked for becomes the host's, and never that of the list.
    return question == Dsa        ? catalog.canDsaBeOpened(boost::replace_all_copy(file, "p.zpfm", "hw-p.kar"), reason)
           : question == PreSynth ? catalog.isPreSynthPlatformSupported(file, reason)
                                  : catalog.isUnderWarranty(file, reason, "asked");
}

std::string answer(const Case& row, const TempDir& dir, const std::string& root) {
    const std::string file = row.platform.write(dir);
    const MessageLog log;
    const Heard heard;
    NativeCatalogService catalog;
    catalog.setTestCompilerVersion_(row.tool);
    std::string reason, verdict;
    try {
        verdict = ask(catalog, row.question, file, reason) ? "yes" : "no";
        verdict += reason.empty() ? "" : ": " + reason;
    } catch (const std::exception& error) {
        verdict = std::string("raised: ") + error.what();
    }
    std::string text = verdict + "\n" + (heard.text().empty() ? "" : "said: " + heard.text()) + join(log.lines);
    boost::replace_all(text, root, "ROOT");
    boost::replace_all(text, dir.path() + "/", "ROOT/../");
    return text;
}

class Policy : public testing::TestWithParam<Case> {};

TEST_P(Policy, Decides) {
    const TempDir dir;
    const std::string root = dir.path("Ferro"); // the product word that stands last in a path is the product
    const std::string list = "{" + GetParam().list + "}";
    for (const std::string& bytes : {list, packText(list)}) {
        const bool hasList = !GetParam().list.empty();
        if (hasList)
            dir.write("Ferro/platforms/achromatic", bytes);
        EXPECT_EQ(inFreshProcess([&] {
                      HostEnv::setHostAppRootList({root});
                      return answer(GetParam(), dir, root);
                  }),
                  join(GetParam().answer));
        if (!hasList)
            break;
    }
}

INSTANTIATE_TEST_SUITE_P(All, Policy, testing::ValuesIn(kCases), [](const auto& row) { return row.param.name; });

TEST(PolicyList, UnusableFilesCountAsNone) {
    for (const char* text : {"", "{", "{}", "plain words", "[]", "\"black_list\"", "HZXP\1"}) {
        const TempDir dir;
        const std::string root = dir.path("Ferro");
        dir.write("Ferro/platforms/achromatic", text);
        EXPECT_EQ(inFreshProcess([&] {
                      HostEnv::setHostAppRootList({root});
                      return answer({"", of("2020.1"), "2020.1", "", {}}, dir, root);
                  }),
                  join({"yes", notNewer("2020.1"), kNoList}))
            << text;
    }
    const TempDir dir;
    dir.write("Ferro/platforms/achromatic/folder", "");
    EXPECT_EQ(inFreshProcess([&] {
                  HostEnv::setHostAppRootList({dir.path("Ferro")});
                  return answer({"", of("2020.1"), "2020.1", "", {}}, dir, dir.path("Ferro"));
              }),
              join({"yes", notNewer("2020.1"), kNoList}));
}

TEST(PolicyList, TheFirstLookUpSettlesFileAndProduct) {
    const TempDir dir;
    dir.write("Ferro/platforms/achromatic", "{" + black(element("")) + "}");
    EXPECT_EQ(inFreshProcess([&] {
                  HostEnv::setHostAppRootList({dir.path("Ferro")});
                  const Case row{"", of("2020.1"), "2020.1", "", {}};
                  const std::string first = answer(row, dir, "");
                  HostEnv::setHostAppRootList({dir.path("Druvel")});
                  return (first == answer(row, dir, "") ? first : "changed") + HostEnv::getProductName();
              }),
              join({kBlack, notNewer("2020.1")}) + "asked");
}

TEST(PolicyFailures, AreToldAndNeverRaised) {
    const TempDir dir;
    const MessageLog log;
    const NativeCatalogService catalog;
    std::string reason = "kept";
    PlatformLoader* const none = nullptr;
    const Heard heard;
    EXPECT_FALSE(catalog.isUnderWarranty(none, reason, ""));
    EXPECT_FALSE(catalog.canDsaBeOpened(none, reason));
    EXPECT_FALSE(catalog.isPreSynthPlatformSupported(none, reason));
    EXPECT_FALSE(catalog.isPreSynthPlatform(none));
    const std::string broken = dir.write("p.zpfm", platformFile(hardwareElement("missing.kar")));
    EXPECT_FALSE(catalog.isUnderWarranty(broken, reason, ""));
    EXPECT_FALSE(catalog.canDsaBeOpened(broken, reason));
    EXPECT_EQ(reason, "kept");
    EXPECT_FALSE(catalog.isPreSynthPlatformSupported(broken, reason));
    EXPECT_EQ(reason, "Platform '" + broken + "' is not a PRE_SYNTH platform");
    EXPECT_FALSE(catalog.isPreSynthPlatformSupported(dir.write("no.kar", "no zip"), reason));
    EXPECT_EQ(reason, "Platform '" + dir.path("no.kar") + "' is not a PRE_SYNTH platform");
    PlatformLoader failed(broken), software(dir.write("p.spfm", kSoftwareFile));
    EXPECT_FALSE(catalog.isPreSynthPlatform(&failed));
    EXPECT_FALSE(catalog.isPreSynthPlatform(&software));
    EXPECT_EQ(heard.text(),
              "Error: failed to acquire a platform loader.\nError: failed to load platform\nError: failed to load platform.\n"
              "Error: failed to load platform.\nError: failed to load platform.\nError: failed to load the hardware platform.\n");
    std::vector<std::string> reasons;
    EXPECT_FALSE(catalog.isUnderWarranty(dir.path("missing.zpfm"), reasons, ""));
    EXPECT_EQ(reasons, std::vector<std::string>{dir.path("missing.zpfm")});
}

} // namespace
