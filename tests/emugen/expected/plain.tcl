proc emu_prop_gen { } { 
namespace eval config {
 set tdmaConfig [dict create] 
 set boardMemories {}

 set clk_info [dict create]

 set feature_map_info [dict create]
 set config_info [dict create]
 dict set config_info project_name         "project_unified_plain"
 dict set config_info board_repo_paths     $board_repo_paths
 dict set config_info board_part           ""
 dict set config_info board_name           ""
 dict set config_info board_memories       $boardMemories 
 dict set config_info project_part         "tlv9pz-fsgd2104-2-e"
 dict set config_info bd_name              "emu" 
 dict set config_info dsa_name             "plain"
 dict set config_info platform_unique_name "norvane:egret:base:5.2"
 dict set config_info tdma_config          $tdmaConfig 
 dict set config_info UseStreaming true
} 
 set ip_repo_paths {}
 dict set config::config_info ip_repo_paths  $ip_repo_paths
} 
