// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "../hardware/AsciiCase.h"
#include "EmulationPropertyKeys.h"
#include "HPLPlatform.h"
#include "HZEPEmulationUtils.h"
#include "HostConvert.h"
#include "ScriptTemplate.h"

#include <fstream>

// The scripts are read by other tools' scripts: every blank below counts, those at the ends of lines too.

namespace keys = emulation_properties;

namespace {

constexpr const char* kPropertiesStart = R"tcl(proc emu_prop_gen { } { 
namespace eval config {
 set tdmaConfig [dict create] 
 set boardMemories {}
)tcl";

constexpr const char* kConfiguration = R"tcl( set config_info [dict create]
 dict set config_info project_name         "project_unified_@dsa@"
 dict set config_info board_repo_paths     $board_repo_paths
 dict set config_info board_part           "@board_part@"
 dict set config_info board_name           "@board_name@"
 dict set config_info board_memories       $boardMemories 
 dict set config_info project_part         "@part@"
 dict set config_info bd_name              "emu" 
@dynamic_region@ dict set config_info dsa_name             "@dsa@"
 dict set config_info platform_unique_name "@unique_name@"
 dict set config_info tdma_config          $tdmaConfig 
)tcl";

constexpr const char* kDynamicRegionName = " dict set config_info dr_bd_name           \"pfm_dynamic\" \n";

constexpr const char* kUpdate = R"tcl(proc emu_update_dsa { } { 
  source @properties@
  emu_prop_gen 

  set isStreaming [dict get $config::config_info UseStreaming]
  if { [string tolower $isStreaming] eq "true"} {
    source @build@/streaming/run.tcl
  } else {
    source @build@/memss/run.tcl
  }
  pre_sys_link_gen "@pre@" 
  post_sys_link_gen "@post@" 
  source @pre@

  emu_bd_gen 

  set shell_name [dict get $config::config_info dsa_name]
  emu_hpfm_gen ${shell_name}_emu.hpfm 

  set overlay_dir @overlay@
  file delete -force $overlay_dir
  file mkdir $overlay_dir
  set projName            [dict get $config::config_info project_name]
  set bdName              [dict get $config::config_info bd_name]
@dynamic_region@  set dsaPath             [dict get $config::config_info dsa_name]
  set dsaName             [file tail $dsaPath]
  set platformName        [lindex [split $dsaName .] 0]
  set ipRepos             [dict get $config::config_info ip_repo_paths] 

@copies@  if {$ipRepos ne ""} {
    file copy -force $ipRepos  $overlay_dir/$bdName/user_ip_repo
  }
  file copy -force "@pre@" $overlay_dir/$bdName
  file copy -force "@post@" $overlay_dir/$bdName
  file rename -force ${shell_name}_emu.hpfm  $overlay_dir/$bdName

  set list_projs [get_projects -quiet]
  if { [lsearch -exact -inline $list_projs $projName] eq $projName } {
    save_bd_design
    current_project $projName
    close_project
  }
}

set status [catch { emu_update_dsa } msg ]
if {$status != 0} { 
  puts "Updating DSA with emulation files was unsuccessful, message: '${msg}'"
  exit 0
}
)tcl";

constexpr const char* kGetDynamicRegionName = "  set drBdName            [dict get $config::config_info dr_bd_name]\n";

constexpr const char* kCopyDesign = "  file copy -force  $projName/$projName.srcs/sources_1/bd/$bdName $overlay_dir\n";

constexpr const char* kCopyDesigns = R"tcl(  file mkdir $overlay_dir/$bdName/
  file copy -force  $projName/$projName.srcs/sources_1/bd/$bdName $overlay_dir/$bdName/
  file copy -force  $projName/$projName.srcs/sources_1/bd/$drBdName $overlay_dir/$bdName/
)tcl";

using Utils = HZEPEmulationUtils;

const std::string& find(const Utils::Properties& properties, const char* key) {
    static const std::string none;
    const auto found = properties.find(key);
    return found == properties.end() ? none : found->second;
}

/// One line for each pair that is to be used. Without any, the script has no such dictionary and fails where it is named.
std::string writeDictionary(const std::string& name, const Utils::Properties& properties, const Utils::Keys& unused,
                            const char* lineTemplate) {
    std::string text;
    for (const auto& [key, value] : properties)
        if (!unused.contains(key))
            text += fillTemplate(lineTemplate, {{"name", name}, {"key", key}, {"value", value}});
    return text;
}

std::string writeBanks(const Utils::Banks& banks) {
    std::string text;
    for (const auto& [number, bank] : banks) {
        const std::string name = "boardMemories_" + std::to_string(number);
        text += writeDictionary(name, bank, Utils::getUnUsedParamatersInDDRModel(number), " dict set @name@ @key@ @value@\n");
        text += " lappend boardMemories $" + name + "\n";
    }
    return text;
}

std::string writeInstances(const Utils::Instances& instances) {
    std::string text;
    std::size_t number = 0;
    for (const auto& [vlnv, configuration] : instances) {
        const std::string name = "instance" + std::to_string(number++);
        text +=
            "\n" + writeDictionary(name, configuration, Utils::getUnUsedZepMemorySubSystemParams(), " dict set @name@ @key@ {@value@}\n");
        text += " dict set instanceConfig " + vlnv + " $" + name + "\n";
    }
    return text;
}

std::string writeClocks(const Utils::Properties& clocks) {
    std::string text = "\n set clk_info [dict create]\n";
    for (const auto& [key, value] : clocks)
        if (!Utils::getUnUsedCLKSettings().contains(key))
            text += fillTemplate(" dict set clk_info \"@key@\" @value@\n", {{"key", key}, {"value", value}});
    return text + "\n";
}

std::string writeBoardRepository(const HPLPlatform& platform) {
    const HPLBoard& board = platform.getReadOnlyBoard();
    if (board.getName().empty() && board.getPart().empty() && board.getBoardPart().empty())
        return "";
    const std::string path = platform.getBoardRepo();
    return " set board_repo_paths {}\n" + (path.empty() ? "" : " lappend board_repo_paths \"" + path + "\"\n");
}

std::string writeFeatureMap(const HPLPlatform& platform) {
    std::string text = " set feature_map_info [dict create]\n";
    std::vector<HZEPHardwareFeatureRom*> roms;
    platform.getFeatureRoms(roms);
    for (unsigned i = 0; !roms.empty() && i < HZEPHardwareFeatureRom::getCDMABaseAddressSize(); ++i) {
        const std::uint32_t address = roms.front()->getCDMABaseAddress(i);
        const std::string digits = HostConvert::trimLeading(HostConvert::dataToHexLittleEndian(&address, sizeof address), '0');
        text += " dict set feature_map_info Cdma_Base_Address" + std::to_string(i) + " 0x" + digits + "\n";
    }
    return text;
}

std::string writeSegment(const std::string& tag, const HZEPHardwareAddressSegment& segment) {
    const std::string index = std::to_string(segment.getIndex());
    const std::string name = tag + "_" + index;
    std::string text = " set " + name + " [dict create]\n dict set " + name + " index " + index + "\n";
    const std::pair<const char*, std::string> values[] = {{"auto", segment.getAuto()},
                                                          {"sptag", segment.getSpTag()},
                                                          {"slr", segment.getSlr()},
                                                          {"max_masters", std::to_string(segment.getMaxMasters())}};
    for (const auto& [key, value] : values)
        if (!value.empty())
            text += fillTemplate(" dict set @name@ @key@  @value@\n", {{"name", name}, {"key", key}, {"value", value}});
    return text + " lappend " + tag + "Tag $" + name + "\n";
}

std::string writeConfiguration(const HPLPlatform& platform, const std::string& dsaName) {
    const bool hasDynamicRegion = platform.hasFile("DR_BD") || platform.hasFile("TOP_BD");
    return fillTemplate(kConfiguration, {{"dsa", dsaName},
                                         {"board_part", platform.getBoardPart()},
                                         {"board_name", platform.getReadOnlyBoard().getName()},
                                         {"part", platform.getPartName()},
                                         {"dynamic_region", hasDynamicRegion ? kDynamicRegionName : ""},
                                         {"unique_name", platform.getUniqueName()}});
}

std::string writeProperties(const Utils::Properties& properties) {
    std::string text;
    for (const auto& [key, value] : properties)
        if (!value.empty())
            text += fillTemplate(" dict set config_info @key@ @value@\n", {{"key", key}, {"value", value}});
    text += "} \n set ip_repo_paths {}\n";
    if (properties.contains(keys::kUserIpRepository))
        text += " lappend ip_repo_paths \"" + find(properties, keys::kUserIpRepository) + "\"\n";
    text += " dict set config::config_info ip_repo_paths  $ip_repo_paths\n";
    if (find(properties, keys::kStreaming) != "true")
        text += " dict set config::config_info UseStreaming    false\n";
    return text + "} \n";
}

} // namespace

unsigned HZEPEmulationUtils::writeEmuPropertiesDict(HPLPlatform* platform, const std::string& prop, const std::string& userProp,
                                                    const std::string& defaultProp, std::ofstream& out, const std::string& dsaName, bool,
                                                    std::string& customScript) {
    Properties properties, clocks;
    Instances instances;
    Banks defaultBanks, platformBanks, banks;
    populateDdrPropMap(defaultProp, defaultBanks, properties, clocks, instances);
    populateDdrPropMap(prop, platformBanks, properties, clocks, instances);
    populateDdrPropMap(userProp, banks, properties, clocks, instances);
    // Of banks the user's values go first, then the default ones, unlike all else.
    for (Banks* further : {&defaultBanks, &platformBanks})
        for (auto& [number, bank] : *further)
            banks[number].merge(bank);

    std::string tagsName;
    out << kPropertiesStart << writeBanks(banks) << writeInstances(instances) << writeClocks(clocks) << writeBoardRepository(*platform)
        << writeFeatureMap(*platform);
    const bool hasDdr = printMemoriesInfo(platform, out, tagsName);
    out << writeConfiguration(*platform, dsaName);
    if (!tagsName.empty())
        out << " dict set config_info memory_tags          $" << tagsName << "\n";
    out << writeProperties(properties);

    customScript = find(properties, keys::kCustomScript);
    if (!customScript.empty())
        return CustomScript;
    if (find(properties, keys::kMemorySubsystem) == "true")
        return MemorySubsystem;
    if (find(properties, keys::kStreaming) == "true")
        return Streaming;
    return hasDdr ? MemorySubsystem : Plain;
}

bool HZEPEmulationUtils::printMemoriesInfo(HPLPlatform* platform, std::ofstream& out, std::string& tagsName) {
    HPLPlatform::BusInterfaces interfaces;
    platform->getMemoryBusInterfaces(interfaces);
    if (interfaces.empty())
        return false;
    bool hasDdr = false;
    tagsName = "memoryTags";
    out << " set memoryTags [dict create]\n";
    for (const HZEPHardwareBusInterface* interface : interfaces) {
        const std::string tag = interface->getSPTag();
        hasDdr = hasDdr || ascii::equalsIgnoringCase(tag, "DDR");
        out << " set " << tag << "Tag \"\"\n";
        std::vector<HZEPHardwareAddressSegment*> segments;
        interface->getAddressSegments(segments);
        for (const HZEPHardwareAddressSegment* segment : segments)
            out << writeSegment(tag, *segment);
        out << " dict set memoryTags \"" << tag << "\" $" << tag << "Tag\n";
    }
    return hasDdr;
}

void HZEPEmulationUtils::writeEmuUpdateDsa(std::ofstream& out, const std::string& propTcl, const std::string& overlayDir,
                                           const std::string&, const std::string& preTcl, const std::string& postTcl, bool dynamicRegion) {
    const std::string build = getTolvanIPPath() + "/data/emulation/hw_em/scripts" + (dynamicRegion ? "/emu_platform_build" : "");
    out << fillTemplate(kUpdate, {{"properties", propTcl},
                                  {"build", build},
                                  {"pre", preTcl},
                                  {"post", postTcl},
                                  {"overlay", overlayDir},
                                  {"dynamic_region", dynamicRegion ? kGetDynamicRegionName : ""},
                                  {"copies", dynamicRegion ? kCopyDesigns : kCopyDesign}});
}
