// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors

#include "hzep_c_api.h"

#include <stdio.h>

int main(int argc, char** argv) {
    char* error = NULL;
    char* text = hzep_try_get_platform_json(argc == 2 ? argv[1] : NULL, &error);
    if (!text) {
        fprintf(stderr, "%s\n", error);
        hzep_free_json_string(error);
        return 1;
    }
    fputs(text, stdout);
    hzep_free_json_string(text);
    return 0;
}
