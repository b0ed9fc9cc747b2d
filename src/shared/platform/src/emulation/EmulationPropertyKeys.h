// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

/// The keys of property files, for their reader, the generator and a checker. All other keys of the root are properties too.
namespace emulation_properties {

inline constexpr char kBanks[] = "DdrBanks";
inline constexpr char kTag[] = "SP_TAG";
inline constexpr char kBankPrefix[] = "bank";
inline constexpr char kInstances[] = "DesignIpInstances";
inline constexpr char kVlnv[] = "VLNV";
inline constexpr char kConfiguration[] = "Configuration";
inline constexpr char kClocks[] = "SystemClocks";
inline constexpr char kUserIpRepository[] = "UserIpRepoPath";
inline constexpr char kStreaming[] = "UseStreaming";
inline constexpr char kMemorySubsystem[] = "UseZepMemss";
inline constexpr char kCustomScript[] = "CustomScriptPath";

/// Types of the files in an archive's emulation file.
inline constexpr char kFileType[] = "PROP_JSON";
inline constexpr char kUserFileType[] = "USER_PROP_JSON";

} // namespace emulation_properties
