// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "HostExport.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

/// Changes to one existing archive, gathered and put in place together by commit(). Until then, and after any failure, the archive
/// is what it was; a crash at any moment leaves the old archive or the new one, whole. Members that don't change keep their
/// compressed bytes, whatever their method. Equal changes to equal archives give equal bytes: times are fixed.
///
/// From the first reading on the archive is held against everyone else who changes it: they wait, at most as long as
/// HostFileUtils::kLockTimeLimit says, and read what this one has left; readers don't wait. A thread that has an update of an archive gets
/// an error for a second one. The hold ends with commit(), with a failure, or with the object.
///
/// Every operation raises HostError with archive, member and cause, and nothing can be done with the object afterwards. An archive
/// is refused as a whole when two members bear one name, members overlap each other or the directory, a local header contradicts
/// the directory, a name would land outside of a folder, a member is a link or a special file, or a limit is passed. What stands in front
/// of an archive, such as the program that unpacks it, stays there.
class HOST_EXPORT HostZipUpdate {
public:
    /// Most members of an archive, also of one that is only read.
    static constexpr std::uint64_t kMaxMembers = 100'000;
    /// Largest directory: 64 MiB; likewise.
    static constexpr std::uint64_t kMaxDirectorySize = 64ULL << 20;
    /// Largest content of unknown length, written piece by piece: 3.75 GiB. A file or text may be larger.
    static constexpr std::uint64_t kMaxStreamedSize = 15ULL << 28;

    /// Waits for others, reads the archive's directory and checks it. Refuses an archive that may not be written, though its folder may.
    explicit HostZipUpdate(const std::string& archive);
    /// Without commit() nothing has changed and nothing is left behind.
    ~HostZipUpdate();
    HostZipUpdate(const HostZipUpdate&) = delete;
    HostZipUpdate& operator=(const HostZipUpdate&) = delete;

    /// A new archive, without members so far, that commit() puts in place of whatever file stands there.
    static HostZipUpdate create(const std::string& archive);

    /// Why no member can be put under this name, in a few words; "" when one can.
    static std::string getNameFault(const std::string& entry);

    /// Replaces the member of this name, which keeps its place in the directory, or adds one at the end.
    void put(const std::string& entry, const std::string& content);
    /// The same with the bytes of a file, which is not read into memory.
    void putFile(const std::string& entry, const std::string& path);
    /// The same piece by piece: begin, any number of writes, end.
    void begin(const std::string& entry);
    void write(const char* data, std::size_t size);
    void end();

    /// The members as this update would leave them by now: what was begun and not ended is not among them. read() raises HostError as
    /// HostZip::readMember does, which leaves the update as it is; names come in the order of the directory.
    std::string read(const std::string& entry, std::uint64_t maxSize = 1ULL << 30) const;
    bool contains(const std::string& entry) const;
    std::vector<std::string> getEntryNames() const;

    /// False when there is no such member.
    bool remove(const std::string& entry);

    /// Has commit() stamp the digest of HostZip::attachDigestEn. Without this an old digest is taken off: it would no longer hold.
    void attachDigest();

    /// Puts the new archive in place of the old one, and ends this update. Raises HostError too when somebody who knows of no lock, or on
    /// a file system that has none, has changed the archive meanwhile. After one error the new archive is in place: when the folder could
    /// not be synced, which the text says.
    void commit();

private:
    struct State;
    explicit HostZipUpdate(std::unique_ptr<State> state);
    std::unique_ptr<State> state_;
};
