/* SPDX-License-Identifier: Apache-2.0 */
/* SPDX-FileCopyrightText: the hzep platform authors */

/* The scenario "documents" of ../scenarios.md, the one that the C functions reach. */

#include "hzep_c_api.h"

#include <stdio.h>
#include <string.h>

static const char* const kNames[] = {"kestrel", "minnow", "trellis", "osprey", "heron", "pebble"};

/* Owns the text from here on. */
static void sayDocument(FILE* answers, const char* name, const char* kind, char* text) {
    fprintf(answers, "documents.%s.%s <<<\n%s>>>\n", name, kind, text ? text : "");
    hzep_free_json_string(text);
}

int main(int argc, char** argv) {
    char path[4096];
    char* damaged;
    FILE* answers;
    size_t i;
    if (argc < 4 || (argc > 4 && strcmp(argv[4], "documents") != 0)) {
        fprintf(stderr, "usage: documents EXAMPLES DATA WORK [documents]\n");
        return 2;
    }
    snprintf(path, sizeof path, "%s/answers.txt", argv[3]);
    answers = fopen(path, "wb");
    if (!answers)
        return 1;
    for (i = 0; i < sizeof kNames / sizeof kNames[0]; ++i) {
        snprintf(path, sizeof path, "%s/%s/%s.zpfm", argv[1], kNames[i], kNames[i]);
        sayDocument(answers, kNames[i], "full", hzep_try_get_platform_json(path, NULL));
        sayDocument(answers, kNames[i], "short", hzep_try_get_short_platform_json(path, NULL));
    }
    snprintf(path, sizeof path, "%s/damaged.kar", argv[2]);
    damaged = hzep_try_get_platform_json(path, NULL);
    fprintf(answers, "documents.damaged = %s\n", damaged ? "loaded" : "null");
    hzep_free_json_string(damaged);
    return fclose(answers) == 0 ? 0 : 1;
}
