// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "DictService.h"

#include <boost/property_tree/ptree_fwd.hpp>

namespace zep::platform {

class HZEP_EXPORT NativeDictService : public DictService {
public:
    std::map<std::string, std::string> getAsDict(const std::string& file, const std::string& path, bool& ok) const override;
    std::map<std::string, std::string> getFilteredDict(const std::string& file, const std::string& path) const override;
    std::map<std::string, std::string> getFilteredDict(const std::string& file, const std::string& path,
                                                       std::set<std::string>& filter) const override;

    /// Flattens a tree at hand; `prefix` is the path of its root, "" for none.
    std::map<std::string, std::string> getAsDict(const boost::property_tree::ptree& tree, const std::string& prefix) const;
};

} // namespace zep::platform
