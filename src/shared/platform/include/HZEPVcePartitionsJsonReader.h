// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "HZEPExport.h"

#include <memory>
#include <string>

class HZEPHardwarePlatform;
class HZEPVcePartitionsJsonReaderImpl;

/// Reads the partition file of a vector engine project into a hardware platform, which must outlive the reader.
class HZEP_EXPORT HZEPVcePartitionsJsonReader {
public:
    explicit HZEPVcePartitionsJsonReader(HZEPHardwarePlatform& platform);
    HZEPVcePartitionsJsonReader(const HZEPVcePartitionsJsonReader&) = delete;
    HZEPVcePartitionsJsonReader& operator=(const HZEPVcePartitionsJsonReader&) = delete;
    ~HZEPVcePartitionsJsonReader();

    /// Adds one root partition for each array instance that has columns. Raises HostAlgException naming the file when it can't be
    /// read or is no JSON.
    void parse(const std::string& file);

private:
    std::unique_ptr<HZEPVcePartitionsJsonReaderImpl> impl_;
};
