// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors

#include "HZEPVcePartitionsJsonReader.h"

#include "HZEPVcePartitionsJsonReaderImpl.h"

HZEPVcePartitionsJsonReader::HZEPVcePartitionsJsonReader(HZEPHardwarePlatform& platform)
    : impl_(std::make_unique<HZEPVcePartitionsJsonReaderImpl>(platform)) {}

HZEPVcePartitionsJsonReader::~HZEPVcePartitionsJsonReader() = default;

void HZEPVcePartitionsJsonReader::parse(const std::string& file) {
    impl_->parse(file);
}
