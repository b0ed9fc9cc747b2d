proc emu_prop_gen { } { 
namespace eval config {
 set tdmaConfig [dict create] 
 set boardMemories {}
 dict set boardMemories_0 CPU kept
 dict set boardMemories_0 ControllerType DDR4_SDRAM
 dict set boardMemories_0 DATA_WIDTH 64
 dict set boardMemories_0 MEMORY_PART default_part
 dict set boardMemories_0 SLOT 0
 lappend boardMemories $boardMemories_0
 lappend boardMemories $boardMemories_1
 dict set boardMemories_2 SLOT 2
 lappend boardMemories $boardMemories_2

 dict set instanceConfig norvane:ip:dma:2.0 $instance0

 dict set instance1 DEPTH {16}
 dict set instance1 NAME {mem ss}
 dict set instanceConfig norvane:ip:memss:1.0 $instance1

 set clk_info [dict create]
 dict set clk_info "clk_a" 310
 dict set clk_info "clk_b" 500

 set board_repo_paths {}
 lappend board_repo_paths "WORK/tmp/boards"
 set feature_map_info [dict create]
 dict set feature_map_info Cdma_Base_Address0 0x0
 dict set feature_map_info Cdma_Base_Address1 0x2
 dict set feature_map_info Cdma_Base_Address2 0xfee00000
 dict set feature_map_info Cdma_Base_Address3 0x4
 set memoryTags [dict create]
 set ddrTag ""
 set ddr_0 [dict create]
 dict set ddr_0 index 0
 dict set ddr_0 auto  true
 dict set ddr_0 sptag  bank0
 dict set ddr_0 slr  SLR0
 dict set ddr_0 max_masters  15
 lappend ddrTag $ddr_0
 set ddr_1 [dict create]
 dict set ddr_1 index 1
 dict set ddr_1 max_masters  0
 lappend ddrTag $ddr_1
 dict set memoryTags "ddr" $ddrTag
 set HBMTag ""
 dict set memoryTags "HBM" $HBMTag
 set config_info [dict create]
 dict set config_info project_name         "project_unified_card"
 dict set config_info board_repo_paths     $board_repo_paths
 dict set config_info board_part           "norvane.example:egret:part0:1.0"
 dict set config_info board_name           "egret"
 dict set config_info board_memories       $boardMemories 
 dict set config_info project_part         "tlv9pz-fsgd2104-2-e"
 dict set config_info bd_name              "emu" 
 dict set config_info dr_bd_name           "pfm_dynamic" 
 dict set config_info dsa_name             "card"
 dict set config_info platform_unique_name "norvane:egret:base:5.2"
 dict set config_info tdma_config          $tdmaConfig 
 dict set config_info memory_tags          $memoryTags
 dict set config_info Flow user
 dict set config_info UseZepMemss true
 dict set config_info UserIpRepoPath WORK/user_ip
} 
 set ip_repo_paths {}
 lappend ip_repo_paths "WORK/user_ip"
 dict set config::config_info ip_repo_paths  $ip_repo_paths
 dict set config::config_info UseStreaming    false
} 
