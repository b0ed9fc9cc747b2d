# SPDX-License-Identifier: Apache-2.0
# SPDX-FileCopyrightText: the hzep platform authors
# The scenarios of ../scenarios.md in Tcl.
package require hzep_platform
encoding system utf-8

set wanted [lassign $argv EXAMPLES DATA WORK]
set NAMES {kestrel minnow trellis osprey heron pebble}
set answers ""

proc class {name args} { ::hzep_platform::$name {*}$args }
proc say {key value} {
    append ::answers "$key = [string map {\\ \\\\ \n \\n} $value]\n"
}
proc sayList {key items} { say $key [join $items ", "] }
proc sayTruth {key value} { say $key [expr {$value ? "true" : "false"}] }
proc sayDocument {key text} { append ::answers "$key <<<\n$text>>>\n" }
proc sayOrRefusal {key script} {
    try {
        say $key [uplevel 1 $script]
    } trap {HZEP PLATFORM} text {
        say $key "error: $text"
    }
}
# Answers under the operation's name, less its "get".
proc sayGetters {key object names {how say}} {
    foreach name $names {
        set said $name
        if {[string match get* $name]} {
            set said [string range $name 3 end]
            if {![string is upper [string index $said 1]]} { set said [string tolower $said 0] }
        }
        $how $key$said [$object $name]
    }
}
proc map {name items script} {
    upvar 1 $name item
    set made {}
    foreach item $items { lappend made [uplevel 1 $script] }
    return $made
}
proc names {objects} { map object $objects {$object getName} }
proc fileOf {name} { return $::EXAMPLES/$name/$name.zpfm }

proc hardwarePlatform {key hardware} {
    sayGetters ${key}hardware. $hardware {getName getUniqueName getBoardId getPartName getFpgaPart getPlatformState getHostArch
        getBusInterfaceMaxDataWidth getNumDDRs getMemSize}
    sayList ${key}hardware.validSLRNames [$hardware getValidSLRNames]
    say ${key}hardware.hbmBankCount [$hardware getHBMBankCount]
    sayTruth ${key}hardware.isMemoryResourceIndexed [$hardware isMemoryResourceIndexed]
    sayList ${key}clocks [map clock [$hardware createSystemClockIter] {
        string cat [$clock getName]:[$clock getFrequency]:[$clock getId]
    }]
    set types [lindex [$hardware getUniqueMemoryTypeStrings] end]
    sayList ${key}memories [map type $types {string cat $type:[$hardware getMemoryTypeCount $type]}]
    foreach type $types {
        set sizes {}
        for {set i 0} {$i < [$hardware getMemoryTypeCount $type]} {incr i} { lappend sizes [$hardware getMemorySize $type $i] }
        sayList ${key}memory.$type.sizes $sizes
    }
    sayList ${key}busInterfaces [map bus [$hardware getBusInterfaces] {
        string cat [$bus getName]:[$bus getMode]:[$bus getMemPort]:[$bus getSPTag]
    }]
    sayList ${key}devices [names [$hardware getDevices]]
}

proc softwarePlatform {key software} {
    sayGetters ${key}software. $software getDefaultConfigName
    sayGetters ${key}software. $software getSupportedRuntimesByPrettyName sayList
    set configs [$software getSystemConfigs]
    sayList ${key}software.configs [names $configs]
    foreach config $configs {
        set prefix ${key}config.[$config getName].
        sayGetters $prefix $config {getDesc getPrettyName}
        sayGetters $prefix $config isQemuSupported sayTruth
        sayGetters $prefix $config getRuntimes sayList
        sayList ${prefix}groups [map group [$config getProcessorGroups] {
            string cat [$group getName]:[$group getCpuType]:[$group getOSName]
        }]
        sayList ${prefix}images [names [$config getBootImgs]]
    }
}

proc platform {} {
    foreach name $::NAMES {
        set key platform.$name.
        set loader [class PlatformLoader new [fileOf $name]]
        set found [$loader load]
        sayGetters ${key}loader. $loader {getName getVendor getVersion getBaseName getHardwarePlatformFile}
        sayGetters $key $found {getUniqueName getVendor getLibrary getName getVersion getDescription getDeviceName getTypeString}
        sayGetters $key $found {isUnified isExpandable isHidden hasSimContent supportsHWEmulation hasReconfigurablePartitions} sayTruth
        say ${key}defaultRPId [$found getDefaultRPId]
        sayList ${key}targetCategories [$found getTargetCategories]
        set partitions [$found getReconfigurablePartitions]
        sayList ${key}partitions [map partition $partitions {$partition getID}]
        foreach partition $partitions {
            say ${key}partition.[$partition getID].hardware [[$partition getHardwarePlatform] getUniqueName]
        }
        if {[$found getHardwarePlatform] ne ""} { hardwarePlatform $key [$found getHardwarePlatform] }
        if {[$found getSoftwarePlatform] ne ""} { softwarePlatform $key [$found getSoftwarePlatform] }
        sayDocument ${key}document [$found toJSONString]
        $loader close
    }
}

proc documents {} {
    foreach name $::NAMES {
        set loader [class PlatformLoader new [fileOf $name]]
        set found [$loader load]
        sayDocument documents.$name.full [$found toJSONString]
        set brief [class JSONObjectWriter new]
        $brief addKey uniqueName [$found getUniqueName]
        $brief addKey file [$found getPlatformFile]
        $brief addKey description [$found getDescription]
        sayDocument documents.$name.short [$brief toJSONString]
        $loader close
    }
    set damaged [[class PlatformLoader new $::DATA/damaged.kar] load]
    say documents.damaged [expr {$damaged eq "" ? "null" : $damaged}]
}

proc manager {} {
    set known [class ZEPPlatformMgr getGlobalNoInit]
    set added [$known addPlatformsFromDirs [list $::EXAMPLES $::DATA]]
    if {$added in {0 1}} { sayTruth manager.added $added } else { say manager.added $added }
    say manager.count [$known getNumPlatforms]
    sayList manager.names [lsort [map found [$known createPlatformIter] {$found getUniqueName}]]
    say manager.unified [llength [$known getUnifiedPlatforms]]
    say manager.projectType [$known getProjectTypeAsStr]
    sayList manager.messages [lsort [$known getParsingErrorMsgs]]
    foreach name {kestrel HERON nobody} {
        set found [$known getPlatform $name]
        say manager.byName.$name [expr {$found eq "" ? "null" : [$found getUniqueName]}]
    }
    sayList manager.byPart [lsort [names [class ZEPPlatformUtils getPlatformsByPart tlv9p]]]
    sayList manager.embedded [lsort [names [class ZEPPlatformUtils getPlatformsByDesignIntent 4 tlz7 "" "" false]]]
    sayTruth manager.isFixed.pebble [class ZEPPlatformUtils isFixedPlatform pebble]
    sayList manager.runtimes.minnow [class ZEPPlatformUtils getRuntimesByPrettyName minnow ""]
    sayList manager.parts [lsort [class ZEPPlatformUtils getSupportedFpgaParts]]
    sayList manager.libraryTypes [class ZEPPlatformUtils getAllLibraryTypes]
    $known removePlatformsFromDirs [list $::EXAMPLES/pebble]
    say manager.afterRemoval [$known getNumPlatforms]
    $known clearAllPlatforms
    say manager.afterClear [$known getNumPlatforms]
}

proc facade {} {
    foreach name {kestrel minnow} {
        set key facade.$name.
        set helper [class ZEPPlatformEngineHelper new [fileOf $name] {}]
        sayGetters $key $helper isValid sayTruth
        sayGetters $key $helper {getUniqueName getFpgaPart getHostArch getMemType getMemSize getNumDDRs getDefaultClockFrequency
            getBRAMCount}
        sayGetters $key $helper getSystemClockNames sayList
        sayTruth ${key}isRuntimeSupported.ocl [$helper isRuntimeSupported ocl]
        sayList ${key}configs [lindex [$helper getSysConfigNames shared] 1]
        say ${key}defaultConfig [[$helper getDefaultSystemConfig] getName]
        say ${key}boardConnectionsString [$helper getBoardConnectionsString]
    }
    sayTruth facade.nobody.isValid [[class ZEPPlatformEngineHelper new nobody {}] isValid]
}

proc services {} {
    set file [fileOf kestrel]
    set objects [class NativeObjectService new]
    foreach path {description hardwarePlatform.systemClocks softwarePlatform.systemConfigurations[0].name nothing.here} {
        lassign [$objects getObjectsByPath $file $path false] text ok
        say services.object.$path $text
        sayTruth services.object.$path.ok $ok
    }
    say services.root [$objects getHwPlatformRootPath [$objects getAsJsonStr $file]]
    set keys [[class NativeKeyService new] get $file]
    say services.keys.count [llength $keys]
    sayList services.keys $keys
    set entries {}
    dict for {name value} [lindex [[class NativeDictService new] getAsDict $file softwarePlatform false] 0] { lappend entries $name=$value }
    sayList services.dict $entries
    set catalog [class NativeCatalogService new]
    sayDocument services.catalog [$catalog getAsJsonStr $file 1 0]
    say services.catalog.type [$catalog getValue $file type]
    sayList services.found [lsort [[class NativePlatformRepoService new] getZpfmFiles "" [list $::EXAMPLES] false]]
    set transform [class NativeTransformService new]
    sayDocument services.transform [$transform getTransformSpecAsJsonStr $::DATA/transform.json]
    say services.transform.count [$transform getObjectsBySpec $file $::DATA/transform.json]
}

proc policy {} {
    foreach version {2015.1 2021.1 2031.2} {
        set catalog [class NativeCatalogService new]
        $catalog setTestCompilerVersion_ $version
        foreach name {kestrel heron} {
            set key policy.$version.$name.
            foreach {question answers} [list mayUse [$catalog isUnderWarranty [fileOf $name] "" ""] mayOpen [$catalog canDsaBeOpened [fileOf $name] ""]] {
                sayTruth $key$question [lindex $answers 0]
                say $key$question.reason [lindex $answers 1]
            }
        }
    }
}

proc makeHardware {} {
    set hardware [class ZEPHardwarePlatform create]
    foreach {operation value} {setName shell setVendor hzep setBoardId board1 setExpandable false} { $hardware $operation $value }
    set clock [$hardware addSystemClock]
    foreach {operation value} {setName clk0 setFrequency 300 setId 2} { $clock $operation $value }
    set bus [$hardware addBusInterface]
    foreach {operation value} {setName mem0 setMode slave setMemPort MIG setSPTag bank0 setDataWidth 512} { $bus $operation $value }
    return $hardware
}

proc build {} {
    set made [class ZEPPlatform new]
    foreach {operation value} {setVendor hzep setLibrary examples setName mine setVersion 1.2 setDescription "built by hand: Gr\u00fc\u00dfe"
        setPlatformFile /plat/mine.zpfm setZpfm true} { $made $operation $value }
    set software [class ZEPSoftwarePlatform new]
    $software setDefaultConfigName linux
    $software setLinuxRootFileSystemPath /sw/rootfs
    set config [$software addSystemConfig]
    foreach {operation value} {setName linux setPrettyName Linux setDesc {a "quoted" text} setSupportsQemu true addRuntime ocl
        addRuntime cpp} { $config $operation $value }
    set group [$config addProcessorGroup]
    foreach {operation value} {setName cpu setCpuType core72 setOSName linux setIncludePaths inc:inc2} { $group $operation $value }
    set image [$config addBootImg]
    foreach {operation value} {setName sd setBif boot.bif} { $image $operation $value }
    $made addSoftwarePlatform $software
    $made setHardwarePlatform [makeHardware]
    say build.version [$made getVersion]
    say build.clockFrequency [[$made getHardwarePlatform] getClockFrequency clk0]
    say build.config [[[$made getSoftwarePlatform] getSystemConfigByName linux] getDesc]
    sayDocument build.document [$made toJSONString]
    say build.tree [[[class PropertyTree new "{\"a\": \"1\", \"c\": {\"b\": \"\u00e4\"}}"] getChild 1] getValue b]
    set items [class JSONListWriter new]
    $items addItem x
    $items addItem true
    set listed [class JSONObjectWriter new]
    $listed addKey items $items
    sayDocument build.list [$listed toJSONString]
}

proc broken {} {
    sayOrRefusal broken.missing {[class PlatformLoader new /nowhere/at-all.zpfm] load}
    sayOrRefusal broken.file {[class PlatformLoader new $::DATA/broken.zpfm] load}
    sayOrRefusal broken.software {expr {[[class PlatformLoader new $::DATA/broken.spfm] load] eq "" ? "null" : "loaded"}}
    sayTruth broken.helper [[class ZEPPlatformEngineHelper new $::DATA/broken.zpfm {}] isValid]
    sayOrRefusal broken.tree {[class PropertyTree new "\{"] getValue}
}

proc archive {} {
    set made [class HMDAArchive new]
    $made setFile $::WORK/a.mda
    $made setPfmName mine
    $made create
    $made archive NOTE doc/note.txt $::DATA/note.txt
    set read [class HMDAArchive new]
    $read setFile $::WORK/a.mda
    sayTruth archive.parsed [$read parse]
    sayList archive.types [[$read getFiles] getTypes]
    say archive.platform [$read getPfmName]
    sayDocument archive.document [$read toJSONString]
    say archive.extracted [string range [$read extract NOTE $::WORK/out] [string length $::WORK] end]
    say archive.unknown [$read extract OTHER $::WORK/out]
    sayOrRefusal archive.refused {$read extract NOTE ""}
}

proc labels {} {
    set reader [class HZEPSemanticLabelReader new]
    sayTruth labels.parsed [$reader parseFile $::EXAMPLES/kestrel/kestrel.labels.json]
    say labels.endpoints [llength [$reader getPcieEndpoints]]
    sayDocument labels.document [$reader toJSONString]
    sayDocument labels.partition [$reader getPartitionMetadata]
}

proc convert {} {
    set converter [class HDFToDSAConverter new $::EXAMPLES/wren wren.hdf $::WORK/stage]
    say convert.file [$converter getHwPfmFileName]
    sayTruth convert.written [$converter writeDSA]
    say convert.name [[[[class PlatformLoader new [$converter getDsaFile]] load] getHardwarePlatform] getName]
    sayOrRefusal convert.refused {[class HDFToDSAConverter new /nowhere a.hdf $::WORK/stage] getDsaFile}
    set seed [makeHardware]
    set creator [class SimpleFixedKARCreator new $::WORK/fixed.kar]
    $creator setSeedPlatform $seed
    sayTruth convert.fixed [$creator writeKAR]
    set fixed [[[class PlatformLoader new $::WORK/fixed.kar] load] getHardwarePlatform]
    say convert.fixed.name [$fixed getName]
    sayTruth convert.fixed.isExpandable [$fixed isExpandable]
    sayTruth convert.seed [$seed isGeneratedByLink]
}

foreach scenario {platform documents manager facade services policy build broken archive labels convert} {
    if {![llength $wanted] || $scenario in $wanted} { $scenario }
}
set out [open $WORK/answers.txt w]
fconfigure $out -encoding utf-8 -translation lf
puts -nonewline $out $answers
close $out
