// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "NativeDocService.h"

#include "HZEPJSONText.h"
#include "HostEnv.h"
#include "HostFile.h"
#include "NativeKeyService.h"
#include "NativeObjectService.h"

#include <boost/algorithm/string/classification.hpp>
#include <boost/algorithm/string/join.hpp>
#include <boost/algorithm/string/split.hpp>
#include <boost/filesystem/operations.hpp>

#include <exception>
#include <fstream>
#include <iostream>
#include <set>
#include <sstream>
#include <utility>
#include <vector>

using boost::property_tree::ptree;

namespace zep::platform {

namespace {

constexpr const char* kDocumentation = "documentation_keys";

std::vector<std::string> split(const std::string& key) {
    std::vector<std::string> tokens;
    boost::split(tokens, key, boost::is_any_of("."));
    return tokens;
}

/// "a[3]" becomes "a[]".
std::string dropSubscript(const std::string& token) {
    const std::size_t open = token.rfind('[');
    const std::size_t close = token.rfind(']');
    return open == token.npos || close == token.npos || close < open ? token : token.substr(0, open + 1) + token.substr(close);
}

} // namespace

ptree NativeDocService::getDocKeyBranch(const ptree& doc, const std::string& key) const {
    if (key.find(kDocumentation) == key.npos)
        return {};
    const ptree* branch = &doc;
    for (const std::string& token : split(key))
        if (const auto found = branch->find(token); found != branch->not_found())
            branch = &found->second;
    return *branch;
}

ptree NativeDocService::getBranch(const ptree& doc, const std::string& key, bool& ok) const {
    return NativeObjectService(hwMetadataMode_).getNodeByPath(getAsJsonStr(doc), key, ok);
}

std::string NativeDocService::getFromFile(ptree& out) const {
    static const std::string root = HostEnv::getHostAppRoot();
    static const std::string separator = HostFile::getDirSeparator();
    const std::string path = root + separator + "platforms" + separator + "platform_keys_doc.json";
    boost::system::error_code error;
    if (!boost::filesystem::exists(boost::filesystem::status(path, error))) {
        std::cerr << "\nCould not find the <" << path << " >. Check the install area.\n  Can not continue with this task." << std::endl;
        return "";
    }
    if (HostFile::isRegularFile(path) && std::ifstream(path))
        HZEPJSONText::readFile(path, out);
    return path;
}

std::string NativeDocService::getAsJsonStr(const ptree& tree) const {
    std::ostringstream stream;
    HZEPJSONText::write(stream, tree);
    return std::move(stream).str();
}

bool NativeDocService::isValidDocKey(ptree& doc, const std::string& key) const {
    std::set<std::string> keys;
    try {
        keys = NativeKeyService(hwMetadataMode_).get(doc);
    } catch (const std::exception& error) {
        std::cerr << "Exception: " << error.what() << std::endl;
    }
    std::vector<std::string> tokens = split(key);
    for (std::string& token : tokens)
        token = dropSubscript(token);
    if (key == "all" || key == "list_keys" || keys.contains(boost::join(tokens, ".")))
        return true;
    std::cerr << "Could not find the specified key: <" << key << ">." << std::endl;
    return false;
}

} // namespace zep::platform
