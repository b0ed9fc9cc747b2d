// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors

#pragma once

#include <boost/property_tree/ptree_fwd.hpp>

#include <string>

/// Why a key path isn't found in a document, in one line: where it was looked for, at which name it ends, and up to three near ones.
/// `place` is the words for the document, such as "card.zpfm".
std::string describeMissingKey(const std::string& place, const boost::property_tree::ptree& document, const std::string& path);
