/* SPDX-License-Identifier: Apache-2.0 */
/* SPDX-FileCopyrightText: the hzep platform authors */
#pragma once

#include <stddef.h>

#ifdef __cplusplus
extern "C" {
#endif

/* 0 for a platform that could not be loaded. */
size_t getDocumentLengthFromC(const char* path);

#ifdef __cplusplus
}
#endif
