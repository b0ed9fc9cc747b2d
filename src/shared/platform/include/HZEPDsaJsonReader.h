// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "HZEPExport.h"
#include "HostFault.h"
#include "PlatformLoader.h"

#include <boost/property_tree/ptree_fwd.hpp>

#include <string>

class HPLPlatform;

/// Fills a hardware platform from the JSON metadata of its archive. A reader serves one platform, once, on one thread.
///
/// No key of a document is required, save the "core" of a device; unknown keys are skipped, numbers are read in base 10 as far as
/// their digits go. What a document does wrong is told to the message service under the topic "platform" where an operation says so;
/// the platform may then be partly filled.
class HZEP_EXPORT HZEPDsaJsonReader {
public:
    using HwMetadataMode = zep_platform::PlatformLoader::HwMetadataMode;

    /// The platform stays the caller's and must outlive the reader.
    explicit HZEPDsaJsonReader(HPLPlatform* platform);

    /// Whether the archive has JSON metadata for this mode; `entry` is then the member's name. A path where nothing stands is told as
    /// "@74-66@%s". Unless the mode excludes JSON, the platform learns the archive's canonical path, also when the answer is false.
    bool canParse(const std::string& archive, HwMetadataMode mode, std::string& entry);

    /// The same for the child hardware emulation platform, whose primary member goes before the alternate one. `entry` is "" when there is
    /// none.
    bool canParseHwEmu(const std::string& archive, HwMetadataMode mode, std::string& entry);

    /// Reads the metadata of the archive. False without a word when there is none or it is empty; a member or document that can't be
    /// read is told as "@74-64@%s%s%s" (member, archive, cause) or "@74-63@%s%s" (member, archive).
    bool parseDSA(const std::string& archive, HwMetadataMode mode);

    /// The same for the child hardware emulation platform, which is marked as such once it is read. A member that does not open is
    /// told as "@74-67@%s%s" (archive, member).
    bool parseHwEmuKAR(const std::string& archive, HwMetadataMode mode);

    /// Reads a plain file. False, without a word, for whatever goes wrong.
    bool parseFile(const std::string& jsonPath);

    /// Reads a document. False for an empty text. Raises what the parser, the tree or a setter of the model raises.
    bool parseJsonString(const std::string& text);

    /// The archive, member, line and cause of what was last said no to or raised in an archive; nothing without one.
    const HostFault& getFault() const { return fault_; }

    /// The member's name when the archive given to canParse holds it, else "".
    std::string getHwEmuJsonFileNameIfExist() const;
    std::string getAltHwEmuJsonFileNameIfExist() const;

    /// The hardware platform file that the platform lists, when the archive given to canParse holds it, and its text; else "".
    std::string getHpfmFile() const;
    std::string getHpfmStr() const;

    /// Take one list out of the text of a hardware platform file. False for an empty text; raise lmx60::c_lmx_exception for one that
    /// isn't valid.
    bool readHpfmBusInterfaces(const std::string& hpfmText);
    bool readHpfmNocConnectivity(const std::string& hpfmText);

private:
    bool parseMember_(const std::string& archive, const std::string& entry);
    /// What the emulation metadata of the archive says about the platform; of two forms the JSON one counts.
    void scanEmulations_();
    std::string getEntryIfExists_(const std::string& entry) const;

    HPLPlatform* platform_;
    std::string archive_;
    HostFault fault_;
};
