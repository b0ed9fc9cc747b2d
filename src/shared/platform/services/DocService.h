// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "HZEPExport.h"

#include <boost/property_tree/ptree.hpp>

#include <string>

namespace zep::platform {

/// The documentation of the keys of a platform document: the file "platforms/platform_keys_doc.json" below the application root, JSON
/// with the documentation proper in its branch "documentation_keys". What goes wrong is told on standard error.
class HZEP_EXPORT DocService {
public:
    // The virtual operations stand in the order of the table that callers are compiled against.
    virtual ~DocService() = default;

    /// The branch that the key leads to, names that aren't there left out on the way. Empty unless the key has the text
    /// "documentation_keys" in it.
    virtual boost::property_tree::ptree getDocKeyBranch(const boost::property_tree::ptree& doc, const std::string& key) const = 0;

    /// The branch at a path of ObjectService; `ok` tells whether there is one.
    virtual boost::property_tree::ptree getBranch(const boost::property_tree::ptree& doc, const std::string& key, bool& ok) const = 0;

    /// Reads the file and answers its path. A file that is missing is told of, and the answer is ""; one that can't be opened leaves
    /// `out` as it is. Raises json_parser_error with the path and the line for one that is no JSON.
    virtual std::string getFromFile(boost::property_tree::ptree& out) const = 0;

    /// Pretty-printed.
    virtual std::string getAsJsonStr(const boost::property_tree::ptree& tree) const = 0;

    /// Whether the document has the key, whatever the subscripts in it; "all" and "list_keys" always count. A key that it hasn't is
    /// told of.
    virtual bool isValidDocKey(boost::property_tree::ptree& doc, const std::string& key) const = 0;
};

} // namespace zep::platform
