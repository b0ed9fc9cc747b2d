// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include <string>

/// The packed form of a text, as xp_autodetect unpacks it.
std::string packText(const std::string& text);
