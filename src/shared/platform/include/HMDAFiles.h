// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "JSONSerializable.h"

#include <boost/property_tree/ptree_fwd.hpp>

#include <cstddef>
#include <map>
#include <string>
#include <utility>
#include <vector>

/// The files of a metadata archive: one member name for each file type. A value.
class HZEP_EXPORT HMDAFiles : public zep_platform::JSONSerializable {
public:
    using Entry = std::pair<const std::string, std::string>;

    /// A type that is there gets the new name. An empty type or name changes nothing.
    void add(const std::string& type, const std::string& name);
    /// "" for a type that is not there.
    std::string get(const std::string& type) const;
    bool contains(const std::string& type) const { return !get(type).empty(); }
    void remove(const std::string& type) { files_.erase(type); }
    void clear() { files_.clear(); }
    bool empty() const { return files_.empty(); }
    std::size_t size() const { return files_.size(); }

    /// Both append, in the order of the types.
    void getTypes(std::vector<std::string>& types) const;
    void getNames(std::vector<std::string>& names) const;
    void getFiles(std::map<std::string, std::string>& files) const { files = files_; }
    std::string toType(const Entry& entry) const { return entry.first; }
    std::string toName(const Entry& entry) const { return entry.second; }

    /// Adds what the tree lists under "files".
    void parse(const boost::property_tree::ptree& root);
    void toJSON(zep_platform::JSONObjectWriter& writer) const override;

private:
    std::map<std::string, std::string> files_;
};
