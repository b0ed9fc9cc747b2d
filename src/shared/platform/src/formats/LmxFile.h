// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "../loading/LmxFileFailure.h"

#include <string>

/// "Line number:LINE. TEXT"
std::string describeLmxFailure(const LmxFileFailure& failure);

/// Writers put one blank between attributes, two blanks a level, and a line feed behind each element.
void setLmxWriterDefaults();

/// Puts the document in place of the file. Raises HostXMLException ("@74-10@%s").
void replaceLmxFile(const std::string& path, const std::string& document);

/// Raise HostXMLException: "@74-10@%s" and "@74-15@%s%s%s%s" in the catalog's words.
[[noreturn]] void throwLmxNotWritten(const std::string& path);
[[noreturn]] void throwLmxWriteFault(const std::string& path, const std::string& text);

/// Writes the document of `root` whole or not at all. Raises HostXMLException, and lmx60::lmx_exception for an incomplete object.
template <class Root>
void writeLmxFile(const Root& root, const std::string& path) {
    setLmxWriterDefaults();
    std::string document;
    try {
        if (root.Marshal(&document, nullptr) != lmx60::error_none)
            throwLmxNotWritten(path);
    } catch (const lmx60::c_lmx_exception& e) {
        throwLmxWriteFault(path, e.what());
    }
    replaceLmxFile(path, document);
}
