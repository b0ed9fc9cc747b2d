// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "HZEPExport.h"

#include <boost/optional.hpp>
#include <boost/property_tree/ptree.hpp>

#include <string>

/// A tree, or none; made from a tree or from the optional that get_child_optional answers.
class HZEP_EXPORT HZEPJSONTreeRef {
public:
    HZEPJSONTreeRef(const boost::property_tree::ptree& tree) : tree_(&tree) {}
    HZEPJSONTreeRef(const boost::optional<boost::property_tree::ptree&>& tree) : tree_(tree.get_ptr()) {}
    HZEPJSONTreeRef(const boost::optional<const boost::property_tree::ptree&>& tree) : tree_(tree.get_ptr()) {}

    const boost::property_tree::ptree* get() const { return tree_; }

private:
    const boost::property_tree::ptree* tree_;
};

/// Look-ups by a key, which is a path with "." between its names. A missing key, or no tree at all, is no error.
class HZEP_EXPORT HZEPJSONUtils {
public:
    static bool findKey(HZEPJSONTreeRef tree, const std::string& key);
    static bool hasKey(HZEPJSONTreeRef tree, const std::string& key);

    /// "" for a missing key.
    static std::string getValue(HZEPJSONTreeRef tree, const std::string& key);
    static std::string getStringValue(HZEPJSONTreeRef tree, const std::string& key);

    /// The value is the word true in any case of letters.
    static bool getBoolValue(HZEPJSONTreeRef tree, const std::string& key);

    /// The leading decimal digits of the value, 0 when there are none, cut to the width of the result; the default for a missing key
    /// or an empty value.
    static int getIntValue(HZEPJSONTreeRef tree, const std::string& key, int defaultValue = 0);
    static unsigned int getUnsignedIntValue(HZEPJSONTreeRef tree, const std::string& key, unsigned int defaultValue = 0);
    static long getLongValue(HZEPJSONTreeRef tree, const std::string& key, long defaultValue = 0);
    static unsigned long getUnsignedLongValue(HZEPJSONTreeRef tree, const std::string& key, unsigned long defaultValue = 0);
};
