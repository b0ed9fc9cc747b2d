// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include <cstddef>
#include <string>

namespace bench {

/// The metadata of a data-centre card with that many bus interfaces: the example card, its interfaces repeated under new names.
std::string cardText(std::size_t busInterfaces);

/// Writes an archive with the text as its one entry.
void writeArchive(const std::string& path, const std::string& text, const char* entry = "kar.json", bool isDeflated = true);

/// Opens the archive and inflates its entry "kar.json".
std::string inflateEntry(const std::string& path);

} // namespace bench
