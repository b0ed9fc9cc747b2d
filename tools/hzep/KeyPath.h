// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors

#pragma once

#include "Session.h"

#include <boost/property_tree/ptree_fwd.hpp>

#include <string>

/// Prints what a JSON text holds at the path: a value bare, or with `isJson` in an object under its name, an object as JSON, a list in an
/// object that holds it. False when there is no such path, and then nothing is printed.
bool printAt(Session& session, const std::string& document, const std::string& path, bool isJson);

/// Why a key path isn't found in a document, in one line: where it was looked for, at which name it ends, and up to three near ones.
/// `place` is the words for the document, such as "card.zpfm".
std::string describeMissingKey(const std::string& place, const boost::property_tree::ptree& document, const std::string& path);
