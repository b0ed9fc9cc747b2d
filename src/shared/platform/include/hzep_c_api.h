/* SPDX-License-Identifier: Apache-2.0 */
/* SPDX-FileCopyrightText: the hzep platform authors */
#pragma once

#include "HZEPExport.h"

/*
 * The platform document for callers in C. Conventions:
 *
 * 1. Ownership. Text that a function returns belongs to the caller, who gives it back to hzep_free_json_string and to nothing else;
 *    it stays valid until then. Text that is passed in stays the caller's and is not kept.
 * 2. Encoding. All text is NUL-terminated. Returned text is JSON in UTF-8, each value a string ("true", "12"), empty values left
 *    out. Paths are the bytes that the file system uses.
 * 3. Null. A returned null means that the platform could not be loaded; the reason went out through the message service, by default
 *    to the standard error. A null path is a caller's error, see 4.
 * 4. Errors. The functions have no exception handler. A C++ exception leaves them for a null path (std::logic_error), for a missing
 *    platform file (HostFileNotFoundException), for one that does not parse (zep_platform::PlatformParseException), and for extension
 *    metadata of an archive that are no JSON (HZEPJSONTextError) or can't be read (HostError), which are looked at only when the document
 *    is made. A caller in plain C can't catch it and the process ends: such a caller gives the path of a platform file that exists and
 *    parses, or of an archive with sound extension metadata or a software file. All other faults of archives end in null.
 * 5. Threads. One call at a time per process.
 */

#ifdef __cplusplus
extern "C" {
#endif

/* The whole document of the platform at `path`: a platform file (.zpfm), a hardware archive (.dsa, .kar) or a software file (.spfm). */
HZEP_EXPORT char* hzep_get_platform_json(const char* path);

/* The same platform in three keys: "uniqueName", "file" and "description". */
HZEP_EXPORT char* hzep_get_short_platform_json(const char* path);

/* Frees what the two functions above returned. Null is accepted and ignored. */
HZEP_EXPORT void hzep_free_json_string(char* text);

#ifdef __cplusplus
}
#endif
