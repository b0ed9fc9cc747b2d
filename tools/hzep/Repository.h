// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors

#pragma once

#include <string>

/// The path of what a user calls a platform: a path, or the name of a platform file in the default directories. Raises Negative with
/// the places searched and near names.
std::string findPlatform(const std::string& platform);
