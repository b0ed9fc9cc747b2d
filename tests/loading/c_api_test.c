/* SPDX-License-Identifier: Apache-2.0 */
/* SPDX-FileCopyrightText: the hzep platform authors */
#include "hzep_c_api.h"

#include "c_api_test.h"

#include <stddef.h>
#include <string.h>

size_t getDocumentLengthFromC(const char* path, char* reason, size_t size) {
    char* error = reason;
    char* text = hzep_try_get_platform_json(path, &error);
    size_t length = text ? strlen(text) : 0;
    strncpy(reason, error ? error : "", size - 1);
    hzep_free_json_string(error);
    hzep_free_json_string(text);
    return length;
}
