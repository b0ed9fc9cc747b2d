// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "HZEPExport.h"

#include <memory>
#include <string>

class HostHwDef;

/// Turns a hardware definition into a platform archive with generated metadata.
class HZEP_EXPORT HDFToDSAConverter {
public:
    /// Reads the definition and writes nothing. The file is looked for in the directory unless its name is absolute. Raises
    /// HostAlgException for a directory or file that is not there, a file that holds no definition, and one that the archive would be
    /// written over.
    HDFToDSAConverter(const std::string& hwPfmDir, const std::string& hwPfmFile, const std::string& stagingDir);
    HDFToDSAConverter(const HDFToDSAConverter&) = delete;
    HDFToDSAConverter& operator=(const HDFToDSAConverter&) = delete;
    ~HDFToDSAConverter();

    /// Directory and file name as given, and the file's absolute path.
    const std::string& getHwPfmDir() const { return hwPfmDir_; }
    const std::string& getHwPfmFileName() const { return hwPfmFileName_; }
    const std::string& getHwPfmFile() const { return hwPfmFile_; }

    /// As given, and from createStagingDir() on the absolute path of the directory that it has made.
    const std::string& getStagingDir() const { return stagingDir_; }

    /// Absolute path of the archive: the definition's base name with ".dsa", beside the staging directory.
    const std::string& getDsaFile() const { return dsaFile_; }

    /// All steps below in their order. After false the archive is what it was, and the staging directory stays.
    bool writeDSA();

    // The steps; one that fails sends a message with the cause and answers false.
    /// Makes the staging directory, under another name when the name is taken.
    bool createStagingDir();
    /// Writes the definition into the staging directory.
    bool writeHDF();
    /// Writes the metadata beside it, as XML and as JSON.
    bool writeDsaXml();
    /// Packs the files of the staging directory and stamps the digest. The archive appears, or is replaced, whole or not at all.
    bool writeDsaArchive();

private:
    std::string hwPfmDir_;
    std::string hwPfmFileName_;
    std::string hwPfmFile_;
    std::string stagingDir_;
    std::string dsaFile_;
    std::unique_ptr<HostHwDef> definition_;
};
