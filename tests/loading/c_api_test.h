/* SPDX-License-Identifier: Apache-2.0 */
/* SPDX-FileCopyrightText: the hzep platform authors */
#pragma once

#include <stddef.h>

#ifdef __cplusplus
extern "C" {
#endif

/* 0 for a platform that could not be loaded, and why, cut to the size. */
size_t getDocumentLengthFromC(const char* path, char* reason, size_t size);

#ifdef __cplusplus
}
#endif
