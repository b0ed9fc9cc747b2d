// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "../formats/DsaJsonKeys.h"

/// The keys of emulation metadata, for its reader and for a checker.
namespace emulation_json {

using dsa_json::KeyInfo;
using dsa_json::Shape;

inline constexpr char kVersion[] = "pfm_metadata_version";
inline constexpr char kEmulations[] = "emulations";
inline constexpr char kName[] = "name";
inline constexpr char kFiles[] = "files";
inline constexpr char kType[] = "type";
inline constexpr char kInstPath[] = "inst_path";

inline constexpr KeyInfo kFileKeys[] = {{kType, Shape::Text}, {kName, Shape::Text}, {kInstPath, Shape::Text}};
inline constexpr KeyInfo kEmulationKeys[] = {{kName, Shape::Text}, {kFiles, Shape::List, &dsa_json::membersOf<kFileKeys>}};
inline constexpr KeyInfo kRootKeys[] = {{kVersion, Shape::Text}, {kEmulations, Shape::List, &dsa_json::membersOf<kEmulationKeys>}};

} // namespace emulation_json
