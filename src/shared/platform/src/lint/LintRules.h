// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "HZEPMetadataLint.h"

#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace lint {

/// Numbers of the rules: their places in the table.
enum class Rule {
    // identity
    IdentityMissing,
    VendorDiffers,
    NameDiffers,
    VersionDiffers,
    BoardDiffers,
    PartDiffers,
    RomNameDiffers,
    ClocksDiffer,
    ResourcesDiffer,
    EmulationUnmarked,
    EmulationMarked,
    SameArchiveTwice,
    // words
    NotAFlag,
    PlatformState,
    HostWord,
    FileType,
    ClockStatus,
    BinaryContent,
    BusMode,
    BusType,
    BusCategory,
    MemoryType,
    SegmentAuto,
    RuntimeWord,
    RuntimeBlank,
    OperatingSystem,
    ImageType,
    ProcessingOrder,
    UsedIn,
    HypervisorFlag,
    PortWord,
    ResourceType,
    LabelWord,
    LabelFlag,
    IndexType,
    // numbers
    NotANumber,
    HexInDecimal,
    TooWide,
    MemorySize,
    PartForm,
    FrequencyForm,
    FrequencyRange,
    PeriodDiffers,
    DataWidth,
    HexForm,
    AddressForm,
    UuidForm,
    TimeRange,
    ParameterNumber,
    VersionForm,
    ClockId,
    RomMemories,
    LabelNumber,
    // references
    DanglingDefault,
    UnknownClock,
    UnknownMemory,
    UnknownRegion,
    PropertyClock,
    UnknownBar,
    UnknownPartition,
    UnusedMemory,
    // sets
    Schema,
    DuplicateKey,
    DuplicateName,
    NoDefaultClock,
    ClockIdGap,
    SegmentIndexTwice,
    NoDevice,
    EmptyList,
    ContentNotValid,
    NoHardware,
    NoProcessorGroup,
    // places
    AddressOrder,
    AddressOverlap,
    AddressSize,
    SegmentOverlap,
    SegmentLeavesPort,
    PblockSum,
    BankOverlap,
    EndpointOverlap,
    EndpointLeavesBar,
    // files
    Parse,
    TooLarge,
    NoMetadata,
    UnreadableMember,
    MissingMember,
    MissingFile,
    UnlistedMember,
    EmptyMember,
    ScriptSyntax,
    MemberKind,
    MemberName,
    FolderExpected,
    PathLeadsOut,
    ArchiveExtension,
    UnnamedFile,
    BoardFile,
    // ages
    XmlVersion,
    NewerTool,
    SchemaVersion,
    TwoMetadata,
    AlternateMetadata,
    StateTwice,
    EmulationVersion,
    IndexVersion,
    NotUnified,
    // lost
    UnknownKey,
    UnknownElement,
    UnknownAttribute,
    WrongShape,
    NoRoomInXml,
    TclText,
    SwitchName,
    RomNameLength,
    UnknownParameter,
    WrittenOnly,
    // lint
    MoreFindings,
    IgnoreForm,
    UnusedIgnore
};

/// A line and, where it is known, a column in a document.
struct Spot {
    std::size_t line = 1;
    std::size_t column = 0;
};

/// What a finding may tell beside its text.
struct Details {
    std::string expected;
    std::string fix;
    HZEPMetadataLint::Place other;
};

/// Gathers what is found in one document.
class Findings {
public:
    /// The names are of unknown origin.
    explicit Findings(std::string_view file = {}, std::string_view member = {});

    void add(Rule rule, std::size_t line, std::string text) { add(rule, Spot{line, 0}, std::move(text)); }
    void add(Rule rule, Spot spot, std::string text, Details details = {});

    /// No further finding is counted.
    bool isFull() const { return counted_ >= HZEPMetadataLint::kMaxCounted; }
    /// A further finding of the rule would only be counted; what is dear to work out needs not be.
    bool isFull(Rule rule) const;
    std::size_t count() const { return counted_; }
    bool has(Rule rule) const { return counts_.contains(rule); }

    /// A place in this document.
    HZEPMetadataLint::Place at(Spot spot) const { return {file_, member_, spot.line, spot.column}; }

    /// In the order of the lines, then of the finding. With the document's text they get their lines of it.
    std::vector<HZEPMetadataLint::Finding> take(std::string_view text = {});

private:
    std::string file_;
    std::string member_;
    std::vector<HZEPMetadataLint::Finding> found_;
    std::map<Rule, std::size_t> counts_;
    std::size_t counted_ = 0;
};

} // namespace lint
