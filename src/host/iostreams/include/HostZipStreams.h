// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "HostExport.h"

#include <boost/iostreams/categories.hpp>

#include <cstddef>
#include <ios>
#include <istream>
#include <memory>
#include <ostream>
#include <string>

namespace hoststream::iostreams {

namespace zip {
/// The archive has an entry of exactly this name.
HOST_EXPORT bool is_file(const std::string& archive, const std::string& entry);
} // namespace zip

/// Input stream over one member of an archive. A member that can't be opened leaves it not open and failed; damage found while
/// reading sets badbit, a wrong checksum at the end: look at bad() before trusting what was read. Holds a small buffer only; who
/// gathers a member in memory takes HostZip::readMember or a file_source, which bound its size.
class HOST_EXPORT zip_istream : public std::istream {
public:
    zip_istream(const std::string& entry, const std::string& archive,
                std::ios_base::openmode mode = std::ios_base::in | std::ios_base::binary, int flags = 3);
    ~zip_istream() override;
    bool is_open() const;

private:
    class Buffer;
    std::unique_ptr<Buffer> buffer_;
};

/// Output stream into one member of an existing archive: the member is added or replaced, whole, when the stream is closed. The
/// archive is rewritten then as HostZipUpdate does it.
class HOST_EXPORT zip_ostream : public std::ostream {
public:
    /// Not open, and failed, when the archive or the name is refused. `flags` is 0.
    zip_ostream(const std::string& entry, const std::string& archive, int flags = 0);
    /// Closes, but for a stream that goes away with an exception on its way or has failed: the archive then stays as it was. A failure
    /// can't be told here.
    ~zip_ostream() override;
    bool is_open() const;

    /// Raises HostError, the archive being what it was, when anything that was written could not be kept.
    void close();

private:
    class Buffer;
    std::unique_ptr<Buffer> buffer_;
    int exceptions_;
};

namespace device {
/// Boost.Iostreams source over a plain file, or over one member of an archive. Construction and reading raise HostError that
/// names archive, member and cause.
class HOST_EXPORT file_source {
public:
    using char_type = char;
    struct category : boost::iostreams::source_tag, boost::iostreams::closable_tag {};

    file_source(const std::string& path, std::ios_base::openmode mode);
    file_source(const std::string& archive, const std::string& entry, std::ios_base::openmode mode);

    std::streamsize read(char* buffer, std::streamsize size);
    void close();

private:
    struct State;
    std::shared_ptr<State> state_;
};
} // namespace device

} // namespace hoststream::iostreams
