// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors

#pragma once

#include "Session.h"

#include <boost/property_tree/ptree_fwd.hpp>

#include <string>
#include <vector>

/// A place in a document: its path, with an index for every list on the way, and what stands there.
struct Place {
    std::string path;
    const boost::property_tree::ptree* node;
};

/// The paths that an operand means: itself, or for "-" the lines of the standard input. Raises Unusable for one that names nothing, such as
/// "" or ".[]".
std::vector<std::string> readPaths(const std::string& operand);

/// The path with "[0]" for each "[]" and "[*]", without those at its end and without empty names.
std::string toFirstElements(const std::string& path);

/// What a key path means, none when there is no such path: one place for the paths of the object service, every element of a list for
/// "[]" and "[*]" in front of a name, and whatever the key service lists under this very text.
std::vector<Place> findPlaces(const boost::property_tree::ptree& document, const std::string& path);

/// The part of a document that an archive or a software file describes; null for a platform file.
const boost::property_tree::ptree* findPart(const boost::property_tree::ptree& document, const std::string& file);

/// Prints what a path means: a value bare, or with `isJson` in an object under its name, an object as JSON, a list in an object that
/// holds it. Of a path to every element the values stand in lines, or else all in such a list.
void printPlaces(Session& session, const std::vector<Place>& places, const std::string& path, bool isJson);

/// Why a key path isn't found in a document, in one line: where it was looked for, at which name it ends, and up to three near ones.
/// `place` is the words for the document, such as "card.zpfm".
std::string describeMissingKey(const std::string& place, const boost::property_tree::ptree& document, const std::string& path);
