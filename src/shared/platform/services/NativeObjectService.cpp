// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "NativeObjectService.h"

#include "HZEPHardwarePlatform.h"
#include "HZEPJSONText.h"
#include "HZEPPlatform.h"
#include "HostText.h"
#include "JSONObjectWriter.h"

#include <boost/algorithm/string/erase.hpp>
#include <boost/filesystem/operations.hpp>
#include <boost/property_tree/json_parser/error.hpp>

#include <cstdint>
#include <cstdlib>
#include <iterator>
#include <sstream>
#include <utility>
#include <vector>

using boost::property_tree::ptree;
using boost::property_tree::json_parser::json_parser_error;

namespace zep::platform {

namespace {

/// A longer text in brackets is no index.
constexpr std::size_t kMaxIndexSize = 6;

struct Segment {
    std::string name;
    bool hasIndex = false;
    std::int32_t index = 0;
};

std::string clean(const std::string& path) {
    return boost::erase_all_copy(boost::erase_all_copy(path, "[]"), "[*]");
}

Segment parseSegment(const std::string& token) {
    const std::size_t bracket = token.rfind('[');
    if (bracket == token.npos || token.back() != ']')
        return {token};
    Segment segment{token.substr(0, bracket)};
    const std::string index = token.substr(bracket + 1, token.size() - bracket - 2);
    segment.hasIndex = index.size() <= kMaxIndexSize;
    if (segment.hasIndex)
        segment.index = static_cast<std::int32_t>(std::strtol(index.c_str(), nullptr, 10));
    return segment;
}

/// Of a cleaned path; an empty path has none.
std::vector<Segment> parsePath(const std::string& path) {
    std::vector<Segment> segments;
    if (path.empty())
        return segments;
    std::size_t begin = 0;
    for (std::size_t end; (end = path.find('.', begin)) != path.npos; begin = end + 1)
        segments.push_back(parseSegment(path.substr(begin, end - begin)));
    segments.push_back(parseSegment(path.substr(begin)));
    return segments;
}

template <class Tree>
Tree* step(Tree& node, const Segment& segment) {
    Tree* child = &node;
    if (!segment.name.empty()) {
        const auto found = node.find(segment.name);
        if (found == node.not_found())
            return nullptr;
        child = &found->second;
    }
    if (!segment.hasIndex)
        return child;
    const auto index = static_cast<std::size_t>(segment.index);
    const std::size_t size = child->size();
    if (index >= size)
        return nullptr;
    return &(index < size / 2 ? std::next(child->begin(), segment.index)
                              : std::prev(child->end(), static_cast<std::ptrdiff_t>(size - index)))
                ->second;
}

template <class Tree>
Tree* walk(Tree& root, const std::vector<Segment>& segments) {
    Tree* node = &root;
    for (const Segment& segment : segments)
        if (!(node = step(*node, segment)))
            return nullptr;
    return node;
}

/// Of a cleaned path; null also for a path without segments.
template <class Tree>
Tree* find(Tree& tree, const std::string& path) {
    const auto segments = parsePath(path);
    return segments.empty() ? nullptr : walk(tree, segments);
}

ptree parse(const std::string& json) {
    ptree tree;
    HZEPJSONText::read(json, tree);
    return tree;
}

/// A document that can't be parsed is told with the file that it should have come from.
template <class Work>
std::string naming(const std::string& file, const Work& work) {
    try {
        return work();
    } catch (const json_parser_error& error) {
        if (!error.filename().empty())
            throw;
        throw json_parser_error(error.message(), file, error.line());
    }
}

std::string print(const ptree& tree) {
    std::ostringstream stream;
    HZEPJSONText::write(stream, tree);
    return std::move(stream).str();
}

/// Takes the node out of its tree when it is an array.
std::string render(ptree& node, const std::string& path) {
    if (node.empty())
        return node.data();
    if (!node.front().first.empty())
        return print(node);
    const std::size_t point = path.rfind('.');
    ptree root;
    root.push_back({point == path.npos ? "" : path.substr(point + 1), ptree()})->second.swap(node);
    return print(root);
}

} // namespace

std::string NativeObjectService::getAsJsonStr(const std::string& file) const {
    if (file.empty())
        return "";
    const bool isSoftware = file.ends_with(".spfm");
    if (file.ends_with(".zpfm")) {
        PlatformLoader loader(file, hwMetadataMode_);
        return getAsJsonStr(&loader);
    }
    const bool isArchive = HZEPHardwarePlatform::isValidPlatformExt(boost::filesystem::path(file).extension().string());
    if (!isArchive && !isSoftware)
        return "";
    PlatformLoader loader(file, hwMetadataMode_);
    bool ok = false;
    return naming(
        file, [&] { return getObjectsByPath_(getAsJsonStr(&loader), isArchive ? getLegacyHwPlatformRootPath() : "softwarePlatform", ok); });
}

std::string NativeObjectService::getAsJsonStr(PlatformLoader* loader) const {
    if (!loader)
        return "";
    const auto platform = loader->load();
    if (!platform)
        return "";
    zep_platform::JSONObjectWriter writer;
    writer.writeObject(*platform);
    std::ostringstream stream;
    writer.write(stream);
    std::string text = std::move(stream).str();
    return HostText::isUtf8(text) ? text : HostText::toUtf8(text); // names of files may be any bytes
}

ptree NativeObjectService::getAsPropertyTree(const std::string& file) const {
    boost::system::error_code error;
    if (!boost::filesystem::exists(boost::filesystem::status(file, error)))
        return {};
    const std::string json = getAsJsonStr(file);
    return json.empty() ? ptree() : parse(json);
}

ptree NativeObjectService::getAsPropertyTree(PlatformLoader* loader) const {
    const std::string json = getAsJsonStr(loader);
    return json.empty() ? ptree() : parse(json);
}

ptree NativeObjectService::getNodeByPath(const std::string& json, const std::string& path, bool& ok) const {
    return json.empty() || path.empty() ? ptree() : getNodeByPath_(json, path, ok);
}

ptree NativeObjectService::getNodeByPath_(const std::string& json, const std::string& path, bool& ok) const {
    ok = true;
    ptree tree = parse(json);
    ptree* const node = walk(tree, parsePath(rootPath_(json, tree, clean(path))));
    ok = node;
    ptree result;
    if (node)
        result.swap(*node);
    return result;
}

std::string NativeObjectService::getObjectsByPath(const std::string& file, const std::string& path, bool& ok) const {
    if (file.empty() || path.empty())
        return "";
    return naming(file, [&] { return getObjectsByPath_(getAsJsonStr(file), path, ok); });
}

std::string NativeObjectService::getObjectsByPath(PlatformLoader* loader, const std::string& path, bool& ok) const {
    if (!loader || path.empty())
        return "";
    return naming(loader->getFilePath(), [&] { return getObjectsByPath_(getAsJsonStr(loader), path, ok); });
}

std::string NativeObjectService::getObjectsByPath(const std::string& file, const std::string& path) const {
    bool ok = false;
    return getObjectsByPath(file, path, ok);
}

std::string NativeObjectService::getObjectsByPath_(const std::string& json, const std::string& path, bool& ok) const {
    ok = true;
    ptree tree = parse(json);
    const std::string actual = rootPath_(json, tree, clean(path));
    const auto segments = parsePath(actual);
    if (segments.empty())
        return "";
    ptree* const node = walk(tree, segments);
    ok = node;
    return node ? render(*node, actual) : "";
}

std::string NativeObjectService::getHwPlatformRootPath(const std::string& json) const {
    return _getHwPlatformRootPath(parse(json), false);
}

std::string NativeObjectService::getHwPlatformRootPath(const ptree& tree) const {
    return _getHwPlatformRootPath(tree, false);
}

std::string NativeObjectService::_getHwPlatformRootPath(const ptree& tree, bool useAlt) const {
    for (const std::string& root : {getLegacyHwPlatformRootPath(), getDefaultHwPlatformRootPath(),
                                    useAlt ? getDefaultRPHwPlatformRootPathAlt() : getDefaultRPHwPlatformRootPath()})
        if (hasNodeAtPath(tree, root))
            return root;
    return "";
}

ptree NativeObjectService::getChild(const ptree& tree, const std::string& path) const {
    const auto node = getChildOptional(tree, path);
    return node ? *node : ptree();
}

boost::optional<const ptree&> NativeObjectService::getChildOptional(const ptree& tree, const std::string& path) const {
    if (pathHasBoostArray(path))
        return tree.get_child_optional(getPathWithActualHwPlatformRoot(tree, path));
    const ptree* const node = find(tree, getPathWithActualHwPlatformRoot(tree, clean(path)));
    return node ? boost::optional<const ptree&>(*node) : boost::none;
}

std::string NativeObjectService::getStringValue(const ptree& tree, const std::string& path) const {
    const auto node = getChildOptional(tree, path);
    return node ? node->data() : "";
}

bool NativeObjectService::getBoolValue(const ptree& tree, const std::string& path) const {
    const auto node = getChildOptional(tree, path);
    return node && node->get_value<bool>();
}

bool NativeObjectService::getBoolValue(const ptree& tree, const std::string& path, bool defaultValue) const {
    const auto node = getChildOptional(tree, path);
    return node ? node->get_value(defaultValue) : defaultValue;
}

bool NativeObjectService::hasNodeAtPath(const std::string& json, const std::string& path) const {
    const ptree tree = parse(json);
    return find(tree, clean(path));
}

bool NativeObjectService::hasNodeAtPath(const ptree& tree, const std::string& path) const {
    return pathHasBoostArray(path) ? tree.get_child_optional(path).has_value() : find(tree, clean(path)) != nullptr;
}

bool NativeObjectService::hasLegacyHwPlatformRootPath(const std::string& json) const {
    return hasNodeAtPath(json, getLegacyHwPlatformRootPath());
}

bool NativeObjectService::hasLegacyHwPlatformRootPath(const ptree& tree) const {
    return hasNodeAtPath(tree, getLegacyHwPlatformRootPath());
}

std::string NativeObjectService::getPathWithActualHwPlatformRoot(const std::string& json, const std::string& path) const {
    return isLegacyHwPlatformPath(path) ? rootPath_(json, parse(json), path) : path;
}

std::string NativeObjectService::getPathWithActualHwPlatformRoot(const ptree& tree, const std::string& path) const {
    if (!isLegacyHwPlatformPath(path) || hasLegacyHwPlatformRootPath(tree))
        return path;
    const std::string root = _getHwPlatformRootPath(tree, pathHasBoostArray(path));
    return root.empty() ? path : replaceLegacyHwPlatformPath(path, root);
}

std::string NativeObjectService::rootPath_(const std::string& json, const ptree& tree, const std::string& path) const {
    if (!isLegacyHwPlatformPath(path) || hasLegacyHwPlatformRootPath(tree))
        return path;
    const std::string root = getHwPlatformRootPath(json);
    return root.empty() ? path : replaceLegacyHwPlatformPath(path, root);
}

bool NativeObjectService::isLegacyHwPlatformPath(const std::string& path) {
    const std::string& root = getLegacyHwPlatformRootPath();
    return path.starts_with(root) && (path.size() == root.size() || path[root.size()] == '.');
}

std::string NativeObjectService::replaceLegacyHwPlatformPath(const std::string& path, const std::string& newRoot) {
    return isLegacyHwPlatformPath(path) ? newRoot + path.substr(getLegacyHwPlatformRootPath().size()) : path;
}

bool NativeObjectService::pathHasBoostArray(const std::string& path) {
    return path.find("..") != path.npos;
}

const std::string& NativeObjectService::getLegacyHwPlatformRootPath() {
    static const std::string path = "hardwarePlatform";
    return path;
}

const std::string& NativeObjectService::getDefaultHwPlatformRootPath() {
    static const std::string path = "hardwarePlatforms.hardwarePlatform";
    return path;
}

const std::string& NativeObjectService::getDefaultRPHwPlatformRootPath() {
    static const std::string path = "hardwarePlatforms.reconfigurablePartitions[0].hardwarePlatform";
    return path;
}

const std::string& NativeObjectService::getDefaultRPHwPlatformRootPathAlt() {
    static const std::string path = "hardwarePlatforms.reconfigurablePartitions..hardwarePlatform";
    return path;
}

} // namespace zep::platform
