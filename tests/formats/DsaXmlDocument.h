// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

/// Everything that survives reading and writing, laid out as the writer lays it out.
inline constexpr const char* kDsaXml = R"xml(<?xml version="1.0" encoding="UTF-8"?>
<Root VersionMajor="1" VersionMinor="15">
  <GenAppInfo Name="forge" Version="2017.4" CL="2086221" TimeStamp="Mon Jan  8 10:00:00 2018"/>
  <DSA Vendor="norvane" BoardId="egret" Name="base" VersionMajor="5" VersionMinor="2" Description="An &quot;older&quot; card" FeatureRomTimestamp="1515405600" DcpLogicFunctionStripped="true" DcpEncrypt="false" Unified="true" Fixed="true" DefaultOutputType="accbin">
    <Host Architecture="x86_64" Interface="pcie"/>
    <Build UsesPR="true" PlatformState="impl" AcceleratorBinaryFormat="acclib1" AcceleratorBinaryContent="" ValidBinaryContentValues="bitstream,dcp" TopModuleName="egret_wrapper">
      <BvlcCompileSwitches>
        <BvlcCompileSwitch Name="xp" Value="param:a=1"/>
        <BvlcCompileSwitch Name="xp" Value="param:a=1"/>
      </BvlcCompileSwitches>
      <BvlcLinkSwitches>
        <BvlcLinkSwitch Name="xp" Value="param:b=&lt;2&gt;"/>
      </BvlcLinkSwitches>
    </Build>
    <DesignIPs>
      <IP InstanceName="mux_i" VLNV="norvane:ip:mux:1.0">
        <Configuration>
          <Parameter Name="DEPTH" Value="8"/>
          <Parameter Name="WIDTH" Value="32"/>
        </Configuration>
      </IP>
      <IP InstanceName="bare_i" VLNV="norvane:ip:bare:1.0"/>
    </DesignIPs>
    <Board Name="egret" Vendor="norvane.example" Part="nv-e100" BoardPart="norvane.example:egret:part0:1.0">
      <Interfaces>
        <Interface Id="int0" Name="PCIe" Type="gen3x8"/>
      </Interfaces>
      <Memories>
        <Memory Name="mem0" Type="ddr4" Size="16GB" LowestAddress="0" HighestAddress="17179869183">
          <Config>
            <Param Name="C0.DDR4_tCK" Value="833"/>
            <Param Name="TIMEPERIOD_PS" Value="833"/>
          </Config>
        </Memory>
        <Memory Name="mem1" Type="ddr4" Size="16GB" LowestAddress="-9223372036854775808" HighestAddress="-1"/>
      </Memories>
      <Connectors>
        <Connector Name="J1" DisplayName="DIMM 1" Type="DIMM" ConnectedConnector="ddr4_16" ConnectedConnectorDisplayName="16 GB" IsLocked="true"/>
        <Connector Name="J2" DisplayName="DIMM 2" Type="DIMM" ConnectedConnector="" ConnectedConnectorDisplayName=""/>
      </Connectors>
      <Images>
        <Img Type="HDPI" File="hi.png"/>
        <Img Type="MDPI" File=""/>
        <Img Type="LDPI" File="lo.png"/>
      </Images>
      <PCIeId Vendor="0x1f00" Device="0x5004" Subsystem="0x000e" FeatureId="7"/>
    </Board>
    <Devices>
      <Device Name="fpga0" Type="acc" FpgaDevice="tolvan:tlv9pz:fsgd2104:-2:e">
        <SystemClocks>
          <SystemClock Name="DATA_CLK" Frequency="300"/>
          <SystemClock Name="KERNEL_CLK" Frequency="500"/>
        </SystemClocks>
        <Core Name="OCL_REGION_0" Type="clc_region" ComputeUnits="60" VLNV="norvane:dr:region:1.0" InstancePath="egret_i/dr" ParentRMInstancePath="egret_i" ClockFreq="300" DRBDName="dr.bd">
          <Config>
            <Param Name="MAX" Value="16"/>
          </Config>
          <Port Name="M00_AXI" Type="addressable" Mode="master" Protocol="AXI4" Base="0x0" Range="0x400000000" DataWidth="512" IdWidth="4" UserWidth="1" AddressWidth="34" AddressOffset="0x10" AddressRange="0x20" MaxBurstLength="256" Frequency="300" Direction="out" Polarity="high">
            <AddressSegments>
              <AddressSegment Name="seg0" Base="0x0" Range="0x400000000" Slave="mem0"/>
            </AddressSegments>
          </Port>
          <Port Name="KERNEL_CLK" Type="clk"/>
          <AvailableResources LUT="900000" REG="1800000" BRAM="2000" DSP="6000">
            <PBlock Name="pblock_a" ValidSLRs="SLR0,SLR1">
              <Resource Name="BRAM" Val="1000"/>
              <Resource Name="LUTs" Val="450000"/>
            </PBlock>
            <PBlock Name="pblock_b">
              <Resource Name="DSP" Val="3000"/>
            </PBlock>
          </AvailableResources>
        </Core>
      </Device>
      <Device Name="fpga1" Type="spare">
        <Core Name="none" Type="" ComputeUnits="0"/>
      </Device>
    </Devices>
    <Files>
      <File Type="DCP" Name="dr.dcp"/>
      <File Type="POST_SYS_LINK_TCL" Name="link.tcl" UsedIn="link" ProcessingOrder="late"/>
    </Files>
    <FeatureRom MajorVersion="10" MinorVersion="1" DruvelBuildID="4294967295" IPBuildID="2" TimeSinceEpoch="18446744073709551615" FPGAPartName="tlv9pz-fsgd2104-2-e" VBNVName="norvane_egret_base_5_2" DDRChannelCount="4" DDRChannelSize="16" DRBaseAddress="4294967296" FeatureBitMap="4390913" UUID="5d1f0c7e-8a34-4d0b-9c5e-2f6b7a1e9d43" CDMABaseAddress0="1" CDMABaseAddress1="2" CDMABaseAddress2="3" CDMABaseAddress3="4" MaxTempLimit="90" MaxPowerLimit="225"/>
  </DSA>
</Root>
)xml";
