// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "HZEPExport.h"

#include <cstdint>
#include <string>
#include <utility>

/// Feature ROM values of an emulation, as the extension metadata gives them.
class HZEP_EXPORT HZEPEmuFeatureRom {
public:
    const std::string& getVBNV() const { return vbnv_; }
    void setVBNV(std::string vbnv) { vbnv_ = std::move(vbnv); }
    const std::string& getCdmaBaseAddress0() const { return cdmaBaseAddress0_; }
    void setCdmaBaseAddress0(std::string address) { cdmaBaseAddress0_ = std::move(address); }
    const std::string& getCdmaBaseAddress1() const { return cdmaBaseAddress1_; }
    void setCdmaBaseAddress1(std::string address) { cdmaBaseAddress1_ = std::move(address); }
    const std::string& getCdmaBaseAddress2() const { return cdmaBaseAddress2_; }
    void setCdmaBaseAddress2(std::string address) { cdmaBaseAddress2_ = std::move(address); }
    const std::string& getCdmaBaseAddress3() const { return cdmaBaseAddress3_; }
    void setCdmaBaseAddress3(std::string address) { cdmaBaseAddress3_ = std::move(address); }
    const std::string& getBitMapValue() const { return bitMapValue_; }
    void setBitMapValue(std::string value) { bitMapValue_ = std::move(value); }
    const std::string& getBitMapUnifiedPlatform() const { return bitMapUnifiedPlatform_; }
    void setBitMapUnifiedPlatform(std::string value) { bitMapUnifiedPlatform_ = std::move(value); }
    const std::string& getBitMapBoardSchedular() const { return bitMapBoardSchedular_; }
    void setBitMapBoardSchedular(std::string value) { bitMapBoardSchedular_ = std::move(value); }
    const std::string& getBitMapPeerToPeer() const { return bitMapPeerToPeer_; }
    void setBitMapPeerToPeer(std::string value) { bitMapPeerToPeer_ = std::move(value); }

    /// Bit 0 always; bit 3 when the board scheduler, bit 16 when peer to peer is exactly "enabled". The value's text plays no part.
    std::uint64_t getFeatureBitMap() const;

private:
    std::string vbnv_;
    std::string cdmaBaseAddress0_;
    std::string cdmaBaseAddress1_;
    std::string cdmaBaseAddress2_;
    std::string cdmaBaseAddress3_;
    std::string bitMapValue_;
    std::string bitMapUnifiedPlatform_;
    std::string bitMapBoardSchedular_;
    std::string bitMapPeerToPeer_;
    mutable std::uint64_t featureBitMap_ = 0;
};
