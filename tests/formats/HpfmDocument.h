// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

/// A hardware platform file with everything in it; laid out as a writer lays it out.
inline constexpr const char* kHpfm = R"xml(<?xml version="1.0" encoding="UTF-8"?>
<qd:repository xmlns:qd="urn:tolvan:qd" qd:name="egret_hw" qd:library="hw" qd:version="1.0" qd:vendor="norvane.example">
  <qd:component qd:name="egret" qd:library="hw" qd:version="2.10" qd:vendor="norvane" qd:type="platform" qd:BRAM="1680" qd:DSP="8478" qd:FF="2171600" qd:LUT="1085800">
    <qd:platformInfo>
      <qd:deviceInfo qd:name="egret_fpga" qd:architecture="tlv9p" qd:device="tlv9pz" qd:package="fsgd2104" qd:speedGrade="-2"/>
      <qd:registeredDevices qd:kio="1" qd:uio="2"/>
      <qd:description>Egret &amp; nest</qd:description>
      <qd:systemClocks qd:defaultClock="2">
        <qd:clock qd:name="clk_out1" qd:instanceRef="clk_wiz_0" qd:componentRef="clk_wiz" qd:frequency="300.0" qd:period="3.3333330" qd:status="scalable" qd:id="2" qd:normalizedPeriod=".003333"/>
        <qd:clock qd:name="ps_clk" qd:instanceRef="ps_0" qd:componentRef="ps" qd:frequency="50" qd:period="20" qd:status="fixed"/>
      </qd:systemClocks>
    </qd:platformInfo>
    <qd:parameter qd:name="BANKS" qd:instanceRef="hmss_0" qd:componentRef="hmss" qd:isValid="maybe" qd:value="4"/>
    <qd:busInterface qd:busTypeRef="aximm" qd:name="S00_AXI" qd:instanceRef="hmss_0" qd:componentRef="hbm_memory_subsystem" qd:mode="slave" qd:category="memory" qd:dataWidth="256" qd:clockRef="clk_hbm" qd:busInterfaceRef="aximm_rtl" qd:memport="S_AXI_HBM" qd:sptag="HBM" qd:direction="in" qd:addressSegment="HBM_ALL" qd:memoryInstance="hbm" qd:idBits="6" qd:size="8GB" qd:slr="SLR0" qd:peakMemoryBandwidth="460" qd:maxMasters="16" qd:isrId="7">
      <qd:addressSegment qd:baseName="HBM_MEM00" qd:index="0" qd:memoryInstance="hbm_0" qd:auto="false" qd:sptag="HBM[0]" qd:slr="SLR0" qd:maxMasters="15" qd:name="seg0" qd:instanceRef="hmss_0" qd:region="r0" qd:readBwUsed="100" qd:writeBwUsed="-200" qd:interleave="4294967295"/>
      <qd:addressSegment qd:index="1" qd:auto="true"/>
      <qd:addressSegment qd:index="2" qd:auto="preferred"/>
      <qd:addressSegment qd:index="3"/>
    </qd:busInterface>
    <qd:busInterface qd:name="irq" qd:dataWidth="-1"/>
    <qd:nocConnectivity qd:instanceRef="noc_0">
      <qd:busInterface qd:name="S01_AXI" qd:mode="slave"/>
    </qd:nocConnectivity>
    <qd:nocConnectivity qd:instanceRef="noc_1"/>
    <qd:resourceEstimates qd:BRAM="1" qd:DSP="2" qd:FF="3" qd:LUT="4" qd:nocPlNsu="5"/>
  </qd:component>
</qd:repository>
)xml";
