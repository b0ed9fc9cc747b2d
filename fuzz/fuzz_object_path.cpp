// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "FuzzInput.h"
#include "HZEPJSONText.h"
#include "NativeDocService.h"
#include "NativeObjectService.h"

#include <boost/property_tree/ptree.hpp>

#include <algorithm>
#include <sstream>

using boost::property_tree::ptree;
using zep::platform::NativeDocService;
using zep::platform::NativeObjectService;

namespace {

const std::string kDocument = R"({
    "name": "heron", "flag": "true", "": "none", "a[0": "open", "a]": "close",
    "list": ["x", "y", ["z", {"k": "v"}]],
    "hardwarePlatforms": {"reconfigurablePartitions": [
        {"id": "0", "hardwarePlatform": {"board": {"name": "b"}, "files": [{"name": "f0"}, {"name": "f1"}]}}, {"id": "1"}]}
})";

void require(bool holds) {
    if (!holds)
        std::abort();
}

/// The ways to ask for one thing agree.
void ask(const ptree& tree, const std::string& path) {
    const NativeObjectService objects;
    const auto child = objects.getChildOptional(tree, path);
    require(objects.getChild(tree, path) == (child ? *child : ptree()));
    require(objects.getStringValue(tree, path) == (child ? child->data() : ""));
    require(objects.getBoolValue(tree, path, true) || child);
    require(!objects.getBoolValue(tree, path, false) || child);
    if (!NativeObjectService::isLegacyHwPlatformPath(path) && path.find('[') == path.npos)
        require(objects.hasNodeAtPath(tree, path) == child.has_value());

    bool ok = true;
    const ptree node = objects.getNodeByPath(kDocument, path, ok);
    require(ok || node == ptree());
    if (!NativeObjectService::pathHasBoostArray(path) && child)
        require(ok && node == *child);

    const std::string text = objects.getObjectsByPath_(kDocument, path, ok);
    require(ok || text.empty());
    if (ok && node.empty())
        require(text == node.data());
    // A list is held under the name that the path gives it, whatever bytes that has.
    const bool isAscii = std::all_of(path.begin(), path.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; });
    if (ok && isAscii && !node.empty() && !text.empty()) {
        ptree printed;
        HZEPJSONText::read(text, printed);
        require(printed == node || printed.front().second == node);
    }

    const NativeDocService docs;
    ptree doc = tree;
    std::streambuf* const before = std::cerr.rdbuf(nullptr);
    docs.isValidDocKey(doc, path);
    std::cerr.rdbuf(before);
    docs.getDocKeyBranch(doc, "documentation_keys." + path);
}

} // namespace

/// Every line is a path.
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    silence();
    static const ptree tree = [] {
        ptree parsed;
        HZEPJSONText::read(kDocument, parsed);
        return parsed;
    }();
    std::istringstream lines(std::string(reinterpret_cast<const char*>(data), size));
    std::size_t count = 0;
    for (std::string path; count < 200 && std::getline(lines, path); ++count)
        ask(tree, path);
    return 0;
}
