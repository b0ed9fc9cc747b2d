// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "../hardware/AsciiCase.h"
#include "HZEPHardwareFeatureRom.h"
#include "LintHolders.h"
#include "LintNumbers.h"
#include "LintText.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <exception>
#include <limits>

namespace {

using lint::Findings;
using lint::Kind;
using lint::Node;
using lint::Rule;

/// Fastest clock that is believed, in MHz.
constexpr double kMaxFrequency = 10'000;
/// How far a period may be from what its frequency says, as a part of it.
constexpr double kPeriodTolerance = 0.005;
/// The year 2100, in seconds since 1970.
constexpr double kLatestTime = 4'102'444'800;

struct Row : lint::Holder {
    const char* key;
    void (*check)(const Node& holder, const Node& value, Findings& findings);
};

std::string describe(const Node& node) {
    return lint::quote(node.name) + ": " + lint::quote(node.value);
}

void checkFrequency(const Node&, const Node& value, Findings& findings) {
    if (const auto number = lint::toDecimalNumber(value.value)) {
        if (*number <= 0 || *number > kMaxFrequency)
            findings.add(Rule::FrequencyRange, value.spot(), describe(value) + " is no likely frequency in MHz",
                         {"more than 0 and at most 10000", "", {}});
        return;
    }
    const std::size_t end = std::min(value.value.find_first_not_of("0123456789."), value.value.size());
    const std::size_t unit = std::min(value.value.find_first_not_of(' ', end), value.value.size());
    const bool isMegahertz =
        ascii::equalsIgnoringCase(value.value.substr(unit), "MHz") && lint::toDecimalNumber(value.value.substr(0, end));
    findings.add(Rule::FrequencyForm, value.spot(), describe(value) + " is no number of MHz",
                 {"a number such as \"300.000\"", isMegahertz ? value.value.substr(0, end) : "", {}});
}

void checkPeriod(const Node& clock, const Node& value, Findings& findings) {
    const Node* frequency = clock.find("frequency");
    const auto mhz = frequency ? lint::toDecimalNumber(frequency->value) : std::nullopt;
    const auto ns = lint::toDecimalNumber(value.value);
    if (!ns) {
        findings.add(Rule::FrequencyForm, value.spot(), describe(value) + " is no number of ns", {"a number such as \"3.333333\"", "", {}});
    } else if (mhz && *mhz > 0 && *mhz <= kMaxFrequency && std::abs(*ns * *mhz - 1000) > 1000 * kPeriodTolerance) {
        const std::string right = std::to_string(1000 / *mhz);
        findings.add(Rule::PeriodDiffers, value.spot(), describe(value) + " is not the period of " + lint::quote(frequency->value) + " MHz",
                     {'"' + right + '"', "", findings.at(frequency->spot())});
    }
}

void checkWidth(const Node&, const Node& value, Findings& findings) {
    const auto number = lint::toWhole(value.value);
    if (number && *number != 0 && (*number < 8 || *number > 4096 || (*number & (*number - 1)) != 0))
        findings.add(Rule::DataWidth, value.spot(), describe(value) + " is no usual width of a bus",
                     {"a power of two from 8 to 4096", "", {}});
}

void checkPortNumber(const Node&, const Node& value, Findings& findings) {
    lint::checkNumber(value, 0, std::numeric_limits<int>::max(), findings);
}

void checkPortWidth(const Node& port, const Node& value, Findings& findings) {
    checkPortNumber(port, value, findings);
    checkWidth(port, value, findings);
}

bool isHex(const std::string& text) {
    const std::size_t prefix = text.starts_with("0x") || text.starts_with("0X") ? 2 : 0;
    return text.size() > prefix && text.find_first_not_of("0123456789abcdefABCDEF", prefix) == std::string::npos;
}

void checkHexText(const Node&, const Node& value, Findings& findings) {
    if (!isHex(value.value))
        findings.add(Rule::HexForm, value.spot(), describe(value) + " is no number in base 16", {"a text such as \"0x1ee4\"", "", {}});
}

void checkAddress(const Node&, const Node& value, Findings& findings) {
    if (!lint::toAddress(value.value))
        findings.add(Rule::AddressForm, value.spot(), describe(value) + " is no address", {"a text such as \"0x40000000\"", "", {}});
}

void checkUuid(const Node&, const Node& value, Findings& findings) {
    try {
        HZEPHardwareFeatureRom().setUUID(value.value);
    } catch (const std::exception&) {
        findings.add(Rule::UuidForm, value.spot(), describe(value) + " is no UUID",
                     {"a text such as \"5d1f0c7e-8a34-4d0b-9c5e-2f6b7a1e9d43\"", "", {}});
    }
}

void checkTime(const Node&, const Node& value, Findings& findings) {
    if (const auto seconds = lint::toDecimalNumber(value.value); seconds && *seconds > kLatestTime)
        findings.add(Rule::TimeRange, value.spot(), describe(value) + " lies behind the year 2100", {"seconds since 1970", "", {}});
}

void checkVersion(const Node&, const Node& value, Findings& findings) {
    if (!lint::toVersion(value.value))
        findings.add(Rule::VersionForm, value.spot(), describe(value) + " is no version of a tool", {"a text such as \"2021.1\"", "", {}});
}

void checkClockId(const Node&, const Node& value, Findings& findings) {
    if (value.value.starts_with('-'))
        findings.add(Rule::ClockId, value.spot(), describe(value) + " is no number of a clock", {"a number from 0", "", {}});
}

/// The names stand as "name" or "Name" beside the value.
void checkParameter(const Node& parameter, const Node& value, Findings& findings) {
    static const std::vector<std::string> kNumeric = {"TIMEPERIOD_PS", "DATA_WIDTH", "CAS_LATENCY", "CAS_WRITE_LATENCY", "BURST_LENGTH"};
    const std::string& name = parameter.get("name").empty() ? parameter.get("Name") : parameter.get("name");
    if (std::find(kNumeric.begin(), kNumeric.end(), name) != kNumeric.end() && !lint::toDecimalNumber(value.value))
        findings.add(Rule::ParameterNumber, value.spot(),
                     "parameter " + lint::quote(name) + ": " + lint::quote(value.value) + " is no number", {"a number alone", "", {}});
}

constexpr Row kRows[] = {
    {{Kind::ArchiveJson, "systemClocks", ""}, "frequency", &checkFrequency},
    {{Kind::ArchiveJson, "scalableSystemClocks", ""}, "frequency", &checkFrequency},
    {{Kind::ArchiveXml, "SystemClock"}, "Frequency", &checkFrequency},
    {{Kind::ArchiveXml, "Port"}, "Frequency", &checkFrequency},
    {{Kind::ArchiveXml, "Core"}, "ClockFreq", &checkFrequency},
    {{Kind::HardwareFile, "clock"}, "frequency", &checkFrequency},
    {{Kind::ArchiveJson, "systemClocks", ""}, "period", &checkPeriod},
    {{Kind::HardwareFile, "clock"}, "period", &checkPeriod},
    {{Kind::ArchiveJson, "systemClocks", ""}, "id", &checkClockId},
    {{Kind::ArchiveJson, "busInterfaces", ""}, "dataWidth", &checkWidth},
    {{Kind::HardwareFile, "busInterface"}, "dataWidth", &checkWidth},
    {{Kind::ArchiveXml, "Port"}, "DataWidth", &checkPortWidth},
    {{Kind::ArchiveXml, "Port"}, "IdWidth", &checkPortNumber},
    {{Kind::ArchiveXml, "Port"}, "UserWidth", &checkPortNumber},
    {{Kind::ArchiveXml, "Port"}, "AddressWidth", &checkPortNumber},
    {{Kind::ArchiveXml, "Port"}, "MaxBurstLength", &checkPortNumber},
    {{Kind::ArchiveXml, "Port"}, "Base", &checkAddress},
    {{Kind::ArchiveXml, "Port"}, "Range", &checkAddress},
    {{Kind::ArchiveXml, "Port"}, "AddressOffset", &checkAddress},
    {{Kind::ArchiveXml, "Port"}, "AddressRange", &checkAddress},
    {{Kind::ArchiveXml, "AddressSegment"}, "Base", &checkAddress},
    {{Kind::ArchiveXml, "AddressSegment"}, "Range", &checkAddress},
    {{Kind::PropertyFile, "DdrBanks", ""}, "BASE", &checkAddress},
    {{Kind::ArchiveJson, lint::kRoot}, "idCode", &checkHexText},
    {{Kind::ArchiveJson, lint::kRoot}, "extendedIdCode", &checkHexText},
    {{Kind::ArchiveJson, "flash"}, "offsetAddress", &checkHexText},
    {{Kind::ArchiveJson, "pcie"}, "vendor", &checkHexText},
    {{Kind::ArchiveJson, "pcie"}, "device", &checkHexText},
    {{Kind::ArchiveJson, "pcie"}, "subsystem", &checkHexText},
    {{Kind::ArchiveJson, "pcie"}, "featureId", &checkHexText},
    {{Kind::ArchiveXml, "PCIeId"}, "Vendor", &checkHexText},
    {{Kind::ArchiveXml, "PCIeId"}, "Device", &checkHexText},
    {{Kind::ArchiveXml, "PCIeId"}, "Subsystem", &checkHexText},
    {{Kind::ArchiveXml, "PCIeId"}, "FeatureId", &checkHexText},
    {{Kind::ArchiveJson, "featureRoms", ""}, "uuid", &checkUuid},
    {{Kind::ArchiveXml, "FeatureRom"}, "UUID", &checkUuid},
    {{Kind::ArchiveJson, "featureRoms", ""}, "timeSinceEpoch", &checkTime},
    {{Kind::ArchiveXml, "FeatureRom"}, "TimeSinceEpoch", &checkTime},
    {{Kind::ArchiveXml, "DSA"}, "FeatureRomTimestamp", &checkTime},
    {{Kind::ArchiveJson, "configParams", ""}, "value", &checkParameter},
    {{Kind::ArchiveXml, "Param"}, "Value", &checkParameter},
    {{Kind::ArchiveJson, lint::kRoot}, "generatedVersion", &checkVersion},
    {{Kind::ArchiveXml, "GenAppInfo"}, "Version", &checkVersion},
};

/// What a feature ROM says of the memories, of which those count whose type begins with "ddr".
void checkRom(const Node& rom, const char* countKey, const char* sizeKey, const std::vector<const Node*>& memories, const char* type,
              const char* size, Findings& findings) {
    long number = 0;
    long gigabytes = 0;
    for (const Node* memory : memories)
        if (ascii::toUpper(memory->get(type)).starts_with("DDR")) {
            ++number;
            gigabytes = std::strtol(memory->get(size).c_str(), nullptr, 10);
        }
    const auto compare = [&](const char* key, long right, const std::string& what) {
        const Node* value = rom.find(key);
        const auto told = value ? lint::toWhole(value->value) : std::nullopt;
        if (told && right > 0 && *told != static_cast<unsigned long>(right))
            findings.add(Rule::RomMemories, value->spot(), describe(*value) + ", and there are " + what + " " + std::to_string(right),
                         {'"' + std::to_string(right) + '"', "", {}});
    };
    compare(countKey, number, "DDR memories:");
    if (number > 0 && std::all_of(memories.begin(), memories.end(), [&](const Node* memory) {
            return !ascii::toUpper(memory->get(type)).starts_with("DDR") || memory->get(size) == std::to_string(gigabytes) + "GB";
        }))
        compare(sizeKey, gigabytes, "DDR memories of GB:");
}

void checkRoms(const Node& root, Kind kind, Findings& findings) {
    std::vector<const Node*> memories;
    const auto take = [&memories](const Node& memory) { memories.push_back(&memory); };
    if (kind == Kind::ArchiveJson) {
        forEachItem(root.find("memories"), "", take);
        forEachItem(root.find("featureRoms"), "",
                    [&](const Node& rom) { checkRom(rom, "ddrChannelCount", "ddrChannelSize", memories, "type", "size", findings); });
    } else if (const Node* platform = root.find("DSA")) {
        if (const Node* board = platform->find("Board"))
            forEachItem(board->find("Memories"), "Memory", take);
        if (const Node* rom = platform->find("FeatureRom"))
            checkRom(*rom, "DDRChannelCount", "DDRChannelSize", memories, "Type", "Size", findings);
    }
}

} // namespace

namespace lint {

std::optional<double> toDecimalNumber(const std::string& text) {
    if (text.empty() || text.find_first_not_of("0123456789.+-") != std::string::npos)
        return std::nullopt;
    // Digits and a point read the same in every locale only without the library's help.
    double number = 0;
    const std::size_t start = text[0] == '+' || text[0] == '-' ? 1 : 0;
    const std::size_t point = std::min(text.find('.'), text.size());
    if (text.find_first_of("+-", start) != std::string::npos || text.find('.', point + 1) != std::string::npos || text.size() == start ||
        (point == start && point + 1 >= text.size()))
        return std::nullopt;
    for (std::size_t i = start; i < point; ++i)
        number = number * 10 + (text[i] - '0');
    double unit = 1;
    for (std::size_t i = point + 1; i < text.size(); ++i)
        number += (unit /= 10) * (text[i] - '0');
    return text[0] == '-' ? -number : number;
}

std::optional<unsigned long> toWhole(const std::string& text) {
    constexpr std::size_t kMaxDigits = 19; // fits whatever they are
    if (text.empty() || text.size() > kMaxDigits || text.find_first_not_of("0123456789") != std::string::npos)
        return std::nullopt;
    return std::strtoul(text.c_str(), nullptr, 10);
}

std::optional<unsigned long> toAddress(const std::string& text) {
    const bool isHexText = text.starts_with("0x") || text.starts_with("0X");
    if (!isHexText)
        return toWhole(text);
    constexpr std::size_t kMaxDigits = 16;
    return isHex(text) && text.size() - 2 <= kMaxDigits ? std::optional(std::strtoul(text.c_str(), nullptr, 16)) : std::nullopt;
}

std::optional<std::pair<unsigned long, unsigned long>> toVersion(const std::string& text) {
    const std::size_t point = text.find('.');
    if (point == std::string::npos)
        return std::nullopt;
    const std::size_t end = std::min(text.find_first_not_of("0123456789", point + 1), text.size());
    const auto major = toWhole(text.substr(0, point));
    const auto minor = toWhole(text.substr(point + 1, end - point - 1));
    if (!major || !minor)
        return std::nullopt;
    return std::pair(*major, *minor);
}

void checkForms(const Node& root, Kind kind, Findings& findings) {
    static const ByHolder<Row> rows(kRows);
    forEachHolder(root, [&](const Node& holder) {
        rows.apply(kind, root, holder, [&](const Row& row, const Node& thing) {
            const Node* value = thing.find(row.key);
            if (value && value->form == Node::Text && !value->value.empty())
                row.check(thing, *value, findings);
        });
    });
    if (kind == Kind::ArchiveJson || kind == Kind::ArchiveXml)
        checkRoms(root, kind, findings);
}

} // namespace lint
