// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "HZEPExport.h"

#include <functional>
#include <string>

class HPLPlatform;

/// Adds files to archives and changes their metadata in place: what is listed is written into the text as it stands, and every other byte
/// of it stays. One change under one lock: a failure or a crash leaves the archive as it was, or whole with all of the change, its digest
/// stamped. Operations raise HostError, whose fault has file, member or key and cause, before anything is written, also for what the
/// readers would refuse then.
class HZEP_EXPORT HZEPArchiveEdit {
public:
    /// The member that lists a hardware archive's files: the primary JSON metadata, else the alternate, else the XML; "" without any.
    static std::string getMetadataName(const std::string& archive);

    /// Puts a file into a hardware archive and lists it at the end of the files, in place of all of exactly this type. Extension metadata,
    /// hardware platform and emulation files must be such that they can be read.
    static void addFile(const std::string& archive, const std::string& type, const std::string& entry, const std::string& source);

    /// Sees what is about to be written: the metadata as it was read, the platform read from it with the file listed, its document. What it
    /// raises passes to the caller, and nothing is written.
    using Check = std::function<void(const std::string& before, HPLPlatform& platform, const std::string& document)>;

    /// The same as HZEPHardwarePlatform::archiveFile does it: the primary JSON metadata become the document of the platform that is read.
    static void addFileAnew(const std::string& archive, const std::string& type, const std::string& entry, const std::string& source,
                            const Check& check);

    /// Puts a file, or all files below a folder, into a metadata archive and lists it under the type, in place of the one of that type.
    static void addToIndex(const std::string& archive, const std::string& type, const std::string& entry, const std::string& source);
};
