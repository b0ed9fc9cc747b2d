# SPDX-License-Identifier: Apache-2.0
# SPDX-FileCopyrightText: the hzep platform authors
# misuse.tcl EXAMPLES DATA: calls that no caller should make. Each must end in its error, and none may end the process.
package require hzep_platform
lassign $argv EXAMPLES DATA
set calls 0
set faults 0

proc fault {what} {
    incr ::faults
    puts "FAULT: $what"
}
# The script ends in an error whose code begins with the given one and whose text holds the other.
proc refuse {code text script} {
    incr ::calls
    if {[catch {uplevel 1 $script} result options] != 1} {
        fault "$script went through: $result"
    } elseif {[lrange [dict get $options -errorcode] 0 [llength $code]-1] ne $code || ![string match *$text* $result]} {
        fault "$script: [dict get $options -errorcode]: $result"
    }
}
proc open {name} { ::hzep_platform::PlatformLoader new $::EXAMPLES/$name/$name.zpfm }
proc same {what a b} { if {$a ne $b} { fault "$what: $a is not $b" } }

set PL ::hzep_platform::PlatformLoader
set loader [open kestrel]
set platform [$loader load]
set hardware [$platform getHardwarePlatform]
set name [$platform getName]

# One object, one handle, whichever way it comes.
same "hardware platform" $hardware [$platform getHardwarePlatform]
same "platform" $platform [$loader load]
same "device" [$hardware getDevice fpga0] [lindex [$hardware getDevices] 0]
same "filtered" [dict create name $name] [[::hzep_platform::NativeDictService new] getFilteredDict $EXAMPLES/kestrel/kestrel.zpfm "" name]

# Names that are no handles, of another type, forged; too few and too many arguments; operations that are none.
set writer [::hzep_platform::JSONObjectWriter new]
foreach given [list "" NULL nonsense _0000000000000000_p_HZEPPlatform _deadbeef00000000_p_HZEPPlatform 0 "a b \{" puts $writer ::hzep_platform::ZEPPlatform] {
    refuse {HZEP TYPE} {} {::hzep_platform::ZEPPlatformEngineHelper new $given $given $given}
    refuse {HZEP TYPE} expected {$platform toJSON [expr {$given eq $writer ? $platform : $given}]}
}
set types 0
foreach class [info commands ::hzep_platform::*] {
    if {[string first # $class] >= 0} continue
    incr types
    refuse {HZEP TYPE} {has no operation} {$class nothing}
    refuse {TCL WRONGARGS} {wrong # args} {$class}
    refuse {HZEP TYPE} {} {$class new 1 2 3 4 5 6 7 8 9}
}
foreach object [list $loader $platform $hardware $writer [::hzep_platform::NativeCatalogService new] [::hzep_platform::PropertyTree new]] {
    refuse {HZEP TYPE} {has no operation} {$object nothing}
    refuse {HZEP TYPE} {has no operation} {$object close now}
    refuse {TCL WRONGARGS} {wrong # args} {$object}
    refuse {HZEP TYPE} {} {$object toJSONString 1 2 3 4 5 6}
}
for {set i 0} {$i < 50} {incr i} {
    foreach given [list "" NULL $platform _00_p_JSONObjectWriter x$i] { refuse {HZEP TYPE} expected {$platform toJSON $given} }
    refuse {HZEP TYPE} {wrong # args: should be} {$platform setName}
    refuse {HZEP TYPE} {} {$hardware setExpandable sometimes$i}
    refuse {HZEP TYPE} {} {[$hardware addSystemClock] setId 12345678901234567890}
    refuse {HZEP TYPE} {} {::hzep_platform::PlatformLoader new $::EXAMPLES/kestrel/kestrel.zpfm [expr {$i + 3}]}
    refuse {HZEP TYPE} list {[::hzep_platform::ZEPPlatformMgr getGlobalNoInit] addPlatformsFromDirs "a \{$i"}
    refuse {HZEP PLATFORM} {failed to parse} {::hzep_platform::PlatformLoader new $::DATA/broken.zpfm}
    refuse {HZEP PLATFORM} {} {::hzep_platform::PropertyTree new "\{\"$i\": "}
    refuse {HZEP INDEX} {out of range} {[::hzep_platform::PropertyTree new {{"a": 1}}] getChild [expr {$i + 1}]}
    refuse {HZEP INDEX} {out of range} {[::hzep_platform::PropertyTree new {{"a": 1}}] getKey -1}
}
# Nesting beyond what a reader takes.
refuse {HZEP PLATFORM} {} {::hzep_platform::PropertyTree new [string repeat \[ 200000]}

# Who takes over, and what dies.
for {set i 0} {$i < 40} {incr i} {
    set owner [::hzep_platform::ZEPPlatform new]
    set made [::hzep_platform::ZEPHardwarePlatform create]
    set clock [$made addSystemClock]
    $owner setHardwarePlatform $made
    same "handle of what was taken over" $made [$owner getHardwarePlatform]
    refuse {HZEP OWNER} {has an owner} {$owner setHardwarePlatform $made}
    refuse {HZEP OWNER} {has an owner} {[::hzep_platform::ZEPPlatform new] setHardwarePlatform $made}
    $owner close
    refuse {TCL LOOKUP COMMAND} {invalid command name} {$owner getName}
    refuse {TCL LOOKUP COMMAND} {invalid command name} {$made getName}
    refuse {TCL LOOKUP COMMAND} {invalid command name} {$clock getName}
    refuse {HZEP CLOSED} closed {::hzep_platform::ZEPPlatformUtils filterOutOldPlatforms [list $owner]}
}
set manager [::hzep_platform::ZEPPlatformMgr getGlobalNoInit]
foreach end {{$manager clearAllPlatforms} {$manager removePlatformsFromDirs [list $::EXAMPLES/kestrel]}} {
    $manager addPlatformsFromDirs [list $EXAMPLES/kestrel]
    set dropped [$manager getPlatform kestrel]
    set its [$dropped getHardwarePlatform]
    set clocks [$its createSystemClockIter]
    eval $end
    foreach object [list $dropped $its {*}$clocks] { refuse {HZEP CLOSED} gone {$object getName} }
    refuse {HZEP CLOSED} gone {$writer addKey a $dropped}
}
set clocks [$hardware createSystemClockIter]
$loader close
foreach object [list $loader $platform $hardware {*}$clocks] { refuse {TCL LOOKUP COMMAND} {invalid command name} {$object getName} }

# A renamed handle is the same one; one that is renamed away is closed. An interpreter takes its handles along.
set loader [open pebble]
set part [$loader load]
rename $loader kept
same "renamed" [kept load] $part
rename kept ""
refuse {TCL LOOKUP COMMAND} {} {$part getName}
set other [interp create]
$other eval [list set auto_path $auto_path]
same "other interpreter" [$other eval [list package require hzep_platform]] [package require hzep_platform]
$other eval "set loader \[::hzep_platform::PlatformLoader new $EXAMPLES/kestrel/kestrel.zpfm\]; set hw \[\[\$loader load\] getHardwarePlatform\]"
interp delete $other

set loader [open kestrel]
same "the library afterwards" [[$loader load] getName] $name
puts "$calls calls on $types classes, $faults faults"
exit [expr {$faults || $calls < 1000}]
