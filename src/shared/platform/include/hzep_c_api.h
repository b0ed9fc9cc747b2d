/* SPDX-License-Identifier: Apache-2.0 */
/* SPDX-FileCopyrightText: the hzep platform authors */
#pragma once

#include "HZEPExport.h"

/*
 * The platform document for callers in C. New code calls hzep_try_get_platform_json and hzep_try_get_short_platform_json. Conventions:
 *
 * 1. Ownership. Text that a function hands out, documents and error texts alike, belongs to the caller, who gives it back to
 *    hzep_free_json_string and to nothing else; it stays valid until then. Text that is passed in stays the caller's and is not kept.
 * 2. Encoding. All text is NUL-terminated. A document is JSON in UTF-8, each value a string ("true", "12"), empty values left out. An
 *    error text is one line of UTF-8 in which nothing steers a terminal. Paths are the bytes that the file system uses.
 * 3. Errors of the functions with "try". They answer null for whatever goes wrong, a null path and a lack of memory too, and leave the
 *    reason at `error`: the file, the line or member, the cause. After a success null stands there. A caller who doesn't want the
 *    reason passes a null `error`. No C++ exception leaves them, and the process goes on.
 * 4. Errors of the functions without "try". Null means that the platform could not be loaded; the reason went out through the message
 *    service, by default to the standard error. They have no exception handler: a C++ exception leaves them for a null path
 *    (std::logic_error), for a missing platform file (HostFileNotFoundException), for one that does not parse
 *    (zep_platform::PlatformParseException) and for what a reader raises. A caller in plain C can't catch it and the process ends.
 * 5. Messages. What the library has to say beside the reason, such as warnings, goes to the message service, by default to the standard
 *    error. The readers of XML files print their own two lines about a fault to the standard output, in every function.
 * 6. Threads. One call at a time per process.
 */

#ifdef __cplusplus
extern "C" {
#endif

/* The whole document of the platform at `path`: a platform file (.zpfm), a hardware archive (.dsa, .kar) or a software file (.spfm). */
HZEP_EXPORT char* hzep_try_get_platform_json(const char* path, char** error);

/* The same platform in three keys: "uniqueName", "file" and "description". */
HZEP_EXPORT char* hzep_try_get_short_platform_json(const char* path, char** error);

/* The same two documents; see 4 before you call these. */
HZEP_EXPORT char* hzep_get_platform_json(const char* path);
HZEP_EXPORT char* hzep_get_short_platform_json(const char* path);

/* Frees what the functions above handed out. Null is accepted and ignored. */
HZEP_EXPORT void hzep_free_json_string(char* text);

#ifdef __cplusplus
}
#endif
