// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "HZEPExport.h"

#include <iosfwd>
#include <map>
#include <set>
#include <string>
#include <vector>

class HPLPlatform;
class HostFile;

/// Makes a hardware emulation platform of a hardware platform: one Tcl script holds the platform's properties, a second one drives the
/// tool suite's build scripts and is run here. Values of archive and property files go into the scripts as they are. Paths are relative to
/// the working directory, where the second script lies too. Files that can't be written raise HostError.
class HZEP_EXPORT HZEPEmulationUtils {
public:
    using Properties = std::map<std::string, std::string>;
    /// By bank number.
    using Banks = std::map<unsigned, Properties>;
    /// By VLNV.
    using Instances = std::map<std::string, Properties>;
    using Keys = std::set<std::string>;

    /// What writeEmuPropertiesDict found to be built.
    enum BuildKind : unsigned { Plain = 0, MemorySubsystem = 1, Streaming = 2, CustomScript = 3 };

    /// The whole run. Without `outDir` the script is "hw_emu_prop/hw_emu_prop.tcl", and what the build leaves in "overlay" goes into the
    /// archive; with one both lie below it, the script in the folder `propName`, and the archive stays. False, and told: "@74-32@%s" no
    /// such file, "@74-36@%s" no file, and what the steps tell. Raises as the steps do.
    static bool generateDsaEmu(const std::string& dsa, std::string outDir, std::string propName);

    /// Writes "hw_emu_prop.tcl" in the folder `propName`, below `outDir` if given, from the archive's XML metadata and three property
    /// files: the tool's for this archive or else its default one ("@74-56@%s" without both), and those listed in the archive's emulation
    /// file. False when the metadata can't be read, which its reader tells; raises HostFileNotFoundException without an archive. The flag
    /// plays no part.
    static bool generateEmuPropDict(const std::string& dsa, const std::string& outDir, bool flag, const std::string& propName);

    /// Writes "emu_update_dsa.tcl", runs it, and describes what it left in the overlay in "emu.xml" there. False and "@74-33@" when there
    /// is no block design: the script ends well whatever fails in it. Raises HostError when it can't be run to its end.
    static bool generateDsaEmuScripts(const std::string& dsaName, const std::string& propTcl, const std::string& overlayDir,
                                      bool dynamicRegion);

    /// The same with a dynamic region and the overlay below a directory; "@74-57@" and false without one.
    static bool generateEmuDir(const std::string& dsaName, const std::string& propTcl, std::string outDir);

    /// Writes the property script and answers a BuildKind, for CustomScript with the script's path. A path of "" is no file.
    static unsigned writeEmuPropertiesDict(HPLPlatform* platform, const std::string& prop, const std::string& userProp,
                                           const std::string& defaultProp, std::ofstream& out, const std::string& dsaName, bool flag,
                                           std::string& customScript);

    /// Writes the memory banks and sets the name of their dictionary; nothing of both without memory bus interfaces. True when one bears
    /// the tag "DDR" in any case.
    static bool printMemoriesInfo(HPLPlatform* platform, std::ofstream& out, std::string& tagsName);

    static void writeEmuUpdateDsa(std::ofstream& out, const std::string& propTcl, const std::string& overlayDir,
                                  const std::string& hpfmName, const std::string& preTcl, const std::string& postTcl, bool dynamicRegion);

    /// Puts all files of the directory into the archive, in place of those of the same names, and stamps its digest, as one change.
    /// Raises HostError, the archive being what it was; links and special files are refused.
    static void updateDsa(const HostFile& dsa, const HostFile& dir);

    /// Adds a property file to what the maps hold: banks by their position, with their name as "SP_TAG"; of the rest what is there already
    /// is overwritten. No file, no change; one that can't be read whole is told as "@74-37@%s" and changes nothing.
    static void populateDdrPropMap(const std::string& path, Banks& banks, Properties& properties, Properties& clocks, Instances& instances);

    /// Keys that stay out of the script: of IP instances, of banks (whatever the number), of clocks.
    static const Keys& getUnUsedZepMemorySubSystemParams();
    static const Keys& getUnUsedParamatersInDDRModel(unsigned bank);
    static const Keys& getUnUsedCLKSettings();

    /// $TOLVAN_DRUVEL, "" and "@74-35@" when it is not set.
    static std::string getTolvanIPPath();
    /// "platforms" below $TOLVAN_PLOME or else $TOLVAN_ZEP, "" when neither is set.
    static std::string getPlomeIPPath();
    /// Name of the archive's emulation file, "emu/emu.xml" unless listed.
    static std::string getEmuXmlFile(HPLPlatform* platform);
    /// All files below a directory, links too, relative to it and in byte order. Raises HostError when it can't be read.
    static void getAllRelativeInDir(const std::string& dir, std::vector<std::string>& out);
};
