// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "HZEPEmuFeatureRom.h"

std::uint64_t HZEPEmuFeatureRom::getFeatureBitMap() const {
    featureBitMap_ = 1;
    if (bitMapBoardSchedular_ == "enabled")
        featureBitMap_ += 8;
    if (bitMapPeerToPeer_ == "enabled")
        featureBitMap_ += 0x10000;
    return featureBitMap_;
}
