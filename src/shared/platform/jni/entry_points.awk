# SPDX-License-Identifier: Apache-2.0
# SPDX-FileCopyrightText: the hzep platform authors
# From a header that the Java compiler wrote: one line of the table that binds native methods to their functions for each method.
/^ \* Method:/ { method = $3 }
/^ \* Signature:/ { signature = $3 }
/^JNIEXPORT/ {
    name = $NF
    sub(/^Java_ui_data_platform_platform_PlatformJNI_/, "Java_ui_data_platform_platform_", name)
    printf "HZEP_ENTRY_POINT(\"%s\", \"%s\", %s)\n", method, signature, name
}
