// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include <string>

class HPLPlatform;

/// A document with every key that is written, the values different ones as far as their forms allow, in the layout that is written.
std::string wholeMetadata();

/// Reads it, and sets what no reader reads: the platform writes the document again.
void fillWhole(HPLPlatform& platform);
