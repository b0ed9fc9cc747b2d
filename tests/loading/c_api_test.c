/* SPDX-License-Identifier: Apache-2.0 */
/* SPDX-FileCopyrightText: the hzep platform authors */
#include "hzep_c_api.h"

#include "c_api_test.h"

#include <stddef.h>
#include <string.h>

size_t getDocumentLengthFromC(const char* path) {
    char* text = hzep_get_platform_json(path);
    size_t length = text ? strlen(text) : 0;
    hzep_free_json_string(text);
    return length;
}
