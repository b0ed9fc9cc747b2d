// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "ZipDirectory.h"

#include <cstdint>

#include <zip.h>

/// The member as an archive of its own, entry 0 of it. Of the file the zip library sees the member's bytes and nothing else, so that
/// neither its search for a directory nor its table of names, which hostile ones make slow, has to do with what else is there.
/// The descriptor must outlive what comes back, to be discarded by the caller. Null with `error` set.
zip_t* openZipMember(int fd, std::uint64_t fileSize, const ZipMember& member, zip_error_t& error);
