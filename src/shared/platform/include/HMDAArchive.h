// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "HMDAFiles.h"

#include <boost/property_tree/ptree_fwd.hpp>

#include <map>
#include <string>

/// A metadata archive: a zip file of what a platform needs beside its hardware description, with the index "mda.json". A value; what
/// changes the file replaces it as a whole, so that after a failure or a crash it is what it was, or whole with all of the change. The
/// index is written anew with each change: keys that are not told here are lost. HZEPArchiveEdit::addToIndex keeps them. Bytes that are
/// no UTF-8, which nobody could read again, raise HostDataException and leave the archive as it was.
class HZEP_EXPORT HMDAArchive : public zep_platform::JSONSerializable {
public:
    const std::string& getFile() const { return file_; }
    void setFile(const std::string& file) { file_ = file; }
    const HMDAFiles& getFiles() const { return files_; }
    HMDAFiles& getFiles() { return files_; }
    const std::string& getInstPath() const { return instPath_; }
    void setInstPath(const std::string& path) { instPath_ = path; }
    const std::string& getDrBdInstName() const { return drBdInstName_; }
    void setDrBdInstName(const std::string& name) { drBdInstName_ = name; }
    const std::string& getPfmName() const { return pfmName_; }
    void setPfmName(const std::string& name) { pfmName_ = name; }
    const std::string& getHierName() const { return hierName_; }
    void setHierName(const std::string& name) { hierName_ = name; }

    /// Lists a file without touching the archive.
    void registerFile(const std::string& type, const std::string& name) { files_.add(type, name); }
    /// "mda.json"
    virtual std::string getJsonFileName() const;
    /// The index.
    void toJSON(zep_platform::JSONObjectWriter& writer) const override;

    /// Reads the archive's index: its files go into the table, beside those at hand, its texts in place of those at hand. All stays as it
    /// is when there is none. False, after a message, for a missing archive or index, and for an empty one. Raises json_parser_error, or
    /// HostError for a damaged member.
    bool parse();
    /// The index's text; "" after a message.
    std::string readJsonFile() const;
    bool parseJsonString(const std::string& text);
    void parseRoot(const boost::property_tree::ptree& root);

    /// Makes the archive, sealed, with the index alone. Raises HostUserException when something stands there already.
    void create() const;
    /// Copies a file into the archive, which must exist, lists it and seals the archive, all in one change. Raises HostAlgException
    /// without an archive, HostUserException for a source that can't be read and a member that can't be written, HostError otherwise.
    void archive(const std::string& type, const std::string& name, const std::string& source);
    void archiveFile(const std::string& type, const std::string& name, const std::string& source) { archive(type, name, source); }
    /// The same with all files below a folder, which go below `name`; others that are there stay. Links and special files are refused.
    void archiveDirectory(const std::string& type, const std::string& name, const std::string& source);
    /// Replaces the index. The archive has no digest until attachDigest.
    void writeJSON() const;
    void attachDigest() const;

    /// Takes the file of a type out of the archive, or the folder of "DR_BD" (always "bd"), "BOARD_REPO_PATH" and "IP_REPO_PATH", keeping
    /// its path, and returns where it is; "" for a type that the table lacks. The directory is made first. Raises HostUserException for an
    /// empty directory, a folder that the archive lacks and a name that leads out; HostError for what can't be unpacked. A file that the
    /// archive lacks is not noticed; one above HostZip::kMaxMetadataSize is refused.
    std::string extract(const std::string& type, const std::string& destDir) const;
    /// The three types whose folder is extracted.
    static bool isDirectoryType(const std::string& type);

private:
    void put_(const std::string& type, const std::string& name, const std::map<std::string, std::string>& sources);
    void ensureArchive_(const std::string& operation) const;
    std::string extractDir_(const std::string& name, const std::string& destDir) const;
    std::string extractFile_(const std::string& name, const std::string& destDir) const;

    std::string file_;
    HMDAFiles files_;
    std::string instPath_;
    std::string drBdInstName_;
    std::string pfmName_;
    std::string hierName_;
};
