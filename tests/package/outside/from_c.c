// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors

#include "hzep_c_api.h"

#include <stdio.h>

int main(int argc, char** argv) {
    char* text = argc == 2 ? hzep_get_platform_json(argv[1]) : NULL;
    if (!text)
        return 1;
    fputs(text, stdout);
    hzep_free_json_string(text);
    return 0;
}
