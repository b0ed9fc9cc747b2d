// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

/// Everything that is read, as it is written again: every key but those that are only written from other sources.
inline constexpr const char* kWholeDocument = R"json({
    "versionMajor": "3",
    "versionMinor": "1",
    "hostArchitecture": "x86_64",
    "hostInterface": "pcie",
    "usesPR": "true",
    "platformState": "impl",
    "topModuleName": "top_wrapper",
    "acceleratorBinaryFormat": "acclib2",
    "acceleratorBinaryContent": "pdi",
    "validAcceleratorBinaryContentValues": "bitstream,pdi",
    "bvlcCompileXPSwitches": [
        "-O2",
        "-O2"
    ],
    "bvlcLinkXPSwitches": [
        "--net"
    ],
    "dcpFunctionStripped": "true",
    "dcpEncrypted": "false",
    "defaultOutputType": "accbin",
    "designIntent": {
        "dataCenter": {
            "value": "true",
            "explicit": "true"
        },
        "embedded": {
            "value": "false",
            "explicit": "false"
        },
        "externalHost": {
            "value": "false",
            "explicit": "true"
        },
        "serverManaged": {
            "value": "true",
            "explicit": "false"
        }
    },
    "board": {
        "name": "t250",
        "vendor": "tolvan.example",
        "part": "0123",
        "boardPart": "tolvan.example:t250:part0:1.1",
        "imageFileHdpi": "hi.png",
        "imageFileMdpi": "mid.png",
        "imageFileLdpi": "lo.png",
        "pcie": {
            "vendor": "0x1f00",
            "device": "0x5004",
            "subsystem": "0x000e",
            "featureId": "7"
        }
    },
    "devices": [
        {
            "name": "fpga0",
            "type": "acc",
            "fpgaPart": "tolvan:tlv9pz:fsgd2104:-2:e:L:es1",
            "part": {
                "name": "tlv9pz-fsgd2104-2-e-L-es1",
                "architecture": "tolvan",
                "device": "tlv9pz",
                "package": "fsgd2104",
                "speedGrade": "-2",
                "tempGrade": "e",
                "staPower": "L",
                "revision": "es1"
            },
            "numSLRs": "3",
            "scalableSystemClocks": [
                {
                    "name": "DATA_CLK",
                    "frequency": "300"
                },
                {
                    "name": "KERNEL_CLK",
                    "frequency": "500"
                }
            ],
            "core": {
                "name": "OCL_REGION_0",
                "type": "clc_region",
                "instPath": "top\/dyn",
                "sourceViewInstPath": "top\/src",
                "reconfigModuleName": "dyn_wrapper",
                "drBDName": "dr.bd",
                "numComputeUnits": "60",
                "availableResources": {
                    "bramCount": "2000",
                    "dspCount": "6000",
                    "lutCount": "900000",
                    "registerCount": "1800000",
                    "pBlocks": [
                        {
                            "name": "pblock_a",
                            "validSlrs": [
                                "SLR0",
                                "SLR1"
                            ],
                            "resources": [
                                {
                                    "name": "BRAM",
                                    "value": "1000"
                                },
                                {
                                    "name": "LUTs",
                                    "value": "450000"
                                }
                            ]
                        },
                        {
                            "name": "pblock_b",
                            "validSlrs": [
                                "SLR2"
                            ],
                            "resources": [
                                {
                                    "name": "DSP",
                                    "value": "3000"
                                }
                            ]
                        }
                    ]
                }
            }
        }
    ],
    "interfaces": [
        {
            "id": "int0",
            "name": "PCIe",
            "type": "gen4x8"
        }
    ],
    "memories": [
        {
            "name": "mem0",
            "type": "ddr4",
            "size": "16GB",
            "configParams": [
                {
                    "name": "C0.DDR4_tCK",
                    "value": "833"
                },
                {
                    "name": "TIMEPERIOD_PS",
                    "value": "833"
                }
            ],
            "lowAddress": "0",
            "highAddress": "17179869183"
        },
        {
            "name": "mem1",
            "type": "ddr4",
            "size": "16GB"
        }
    ],
    "files": [
        {
            "name": "dr.dcp",
            "type": "DCP"
        },
        {
            "name": "link.tcl",
            "type": "POST_SYS_LINK_TCL",
            "usedIn": "link",
            "processingOrder": "late"
        }
    ],
    "vendor": "tolvan",
    "boardId": "t250",
    "name": "shell",
    "uniqueName": "tolvan:t250:shell:3.1",
    "fpgaPart": "tolvan:tlv9pz:fsgd2104:-2:e:L:es1",
    "fpgaDevice": "tlv9pz",
    "interfaceDescription": "PCIe gen4x8",
    "unifiedPlatform": "true",
    "expandablePlatform": "true",
    "hardware": "false",
    "softwareEmulation": "false",
    "hardwareEmulation": "true",
    "hardwareEmuPlatform": "true",
    "maxAXIMMManagers": "1",
    "maxAXIMMSubordinates": "0",
    "maxInterrupts": "0",
    "usesNIFD": "true",
    "static": "true",
    "rm": "true",
    "drBdInstName": "dr_i",
    "generatedName": "forge",
    "generatedVersion": "2021.1",
    "generatedChangeList": "3247384",
    "generatedTimestamp": "Mon Jan  4 10:00:00 2021",
    "hasExternalSources": "true",
    "hasMDAContent": "true",
    "genLink": "true",
    "genSwEmuLink": "true",
    "idCode": "0x14b77093",
    "extendedIdCode": "0x02",
    "flash": {
        "interfaceType": "spi",
        "offsetAddress": "0x1002000",
        "size": "128"
    },
    "designIDs": {
        "designID": "1",
        "parentID": "2",
        "nodeID": "3",
        "functionID": "4",
        "vcengineIDs": {
            "nodeID": "5",
            "uniqueID": "6",
            "puID": "7"
        }
    },
    "reconfigPartitionIDs": [
        {
            "designID": "11",
            "nodeID": "12"
        },
        {
            "designID": "13",
            "parentID": "14",
            "nodeID": "4294967295",
            "functionID": "16"
        }
    ],
    "vceHardware": {
        "arch": "VCEML",
        "npiBaseAddress": "4127195136",
        "shimRows": {
            "start": "0",
            "num": "1"
        },
        "coreRows": {
            "start": "3",
            "num": "8"
        },
        "memRows": {
            "start": "1",
            "num": "2"
        }
    },
    "vcePartitions": [
        {
            "vceInst": "VCE_0",
            "startColumn": "0",
            "numColumns": "38",
            "uuid": "u0",
            "plIntefaceID": "pl0",
            "partitions": [
                {
                    "vceInst": "VCE_0",
                    "startColumn": "4",
                    "numColumns": "2",
                    "uuid": "u1",
                    "plIntefaceID": "pl1"
                }
            ]
        }
    ],
    "designIpInstances": [
        {
            "vlnv": "tolvan:ip:mux:1.0",
            "instance": "mux_i",
            "configuration": {
                "CONFIG": {
                    "DEPTH": "8",
                    "WIDTH": "32"
                },
                "mode": "fast"
            }
        }
    ],
    "resources": [
        {
            "type": "BRAM",
            "count": "1"
        },
        {
            "type": "DSP",
            "count": "2"
        },
        {
            "type": "LUT",
            "count": "3"
        },
        {
            "type": "FF",
            "count": "4"
        },
        {
            "type": "REG",
            "count": "1800000"
        }
    ],
    "systemClocks": [
        {
            "default": "false",
            "name": "clk0",
            "origName": "clk0_o",
            "id": "0",
            "frequency": "300.0",
            "instRef": "clk_wiz",
            "compRef": "clkc",
            "period": "3.333",
            "normalizedPeriod": "0.003333",
            "status": "scalable"
        },
        {
            "default": "true",
            "name": "clk1",
            "origName": "clk1_o",
            "id": "-2",
            "frequency": "250.0",
            "instRef": "clk_wiz",
            "compRef": "clkc",
            "period": "3.333",
            "normalizedPeriod": "0.003333",
            "status": "fixed"
        }
    ],
    "ipParameters": [
        {
            "name": "C_X",
            "value": "1",
            "instRef": "x_i",
            "compRef": "x",
            "valid": "maybe"
        }
    ],
    "busInterfaces": [
        {
            "name": "M00_AXI",
            "mode": "master",
            "instRef": "ic",
            "compRef": "icc",
            "typeRef": "aximm",
            "interfaceRef": "aximm_rtl",
            "clockRef": "clk",
            "memPort": "memss",
            "spTag": "HBM",
            "dataWidth": "256",
            "numIdBits": "0",
            "addressSegment": "seg",
            "isrId": "0",
            "category": "memory",
            "addressSegments": [
                {
                    "baseName": "HBM_MEM00",
                    "index": "3",
                    "memoryInstance": "hbm_0",
                    "auto": "true",
                    "spTag": "HBM[0]",
                    "slr": "SLR0",
                    "maxMasters": "15",
                    "name": "seg0",
                    "instRef": "hbm_inst",
                    "region": "0",
                    "readBwUsed": "-1",
                    "writeBwUsed": "20",
                    "interleave": "2"
                }
            ]
        }
    ],
    "nocConnectivity": [
        {
            "instRef": "noc_0",
            "busInterfaces": [
                {
                    "name": "NOC_S00",
                    "mode": "master",
                    "instRef": "ic",
                    "compRef": "icc",
                    "typeRef": "interrupt",
                    "interfaceRef": "aximm_rtl",
                    "clockRef": "clk",
                    "memPort": "memss",
                    "spTag": "HBM",
                    "dataWidth": "-8",
                    "numIdBits": "0",
                    "addressSegment": "seg",
                    "isrId": "0",
                    "category": "memory",
                    "addressSegments": [
                        {
                            "baseName": "HBM_MEM00",
                            "index": "4294967295",
                            "memoryInstance": "hbm_0",
                            "auto": "true",
                            "spTag": "HBM[0]",
                            "slr": "SLR0",
                            "maxMasters": "15",
                            "name": "seg1",
                            "instRef": "hbm_inst",
                            "region": "0",
                            "readBwUsed": "-1",
                            "writeBwUsed": "20",
                            "interleave": "2"
                        }
                    ]
                }
            ]
        }
    ],
    "featureRoms": [
        {
            "majorVersion": "10",
            "minorVersion": "1",
            "druvelBuildID": "4294967295",
            "ipBuildID": "2",
            "timeSinceEpoch": "1600000000123",
            "fpgaPartName": "tlv9pz-fsgd2104-2-e",
            "vbnvName": "tolvan:t250:shell:3.1",
            "ddrChannelCount": "4",
            "ddrChannelSize": "16",
            "drBaseAddress": "0x0",
            "featureBitMap": {
                "value": "0x210001",
                "unifiedPlatform": "enabled",
                "auroraLink": "disabled",
                "boardMgmt": "disabled",
                "boardScheduler": "disabled",
                "promType": "0x0",
                "debugType": "0x0",
                "peerToPeer": "enabled",
                "uuid": "disabled",
                "clockThrottling": "enabled",
                "passthruTrans": "disabled"
            },
            "uuid": "0f1e2d3c-4b5a-6978-8796-a5b4c3d2e1f0",
            "cdmaBaseAddress0": "0x10000",
            "cdmaBaseAddress1": "0x0",
            "cdmaBaseAddress2": "0xffffffff",
            "cdmaBaseAddress3": "0x4",
            "maxTempLimit": "90",
            "maxPowerLimit": "225"
        }
    ]
}
)json";
