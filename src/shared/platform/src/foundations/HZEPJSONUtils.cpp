// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors

#include "HZEPJSONUtils.h"

#include <boost/algorithm/string/predicate.hpp>

#include <cstdlib>
#include <locale>
#include <string_view>

namespace {

using boost::property_tree::ptree;

const ptree* childOf(const ptree& node, const std::string& name) {
    const auto found = node.find(name);
    return found == node.not_found() ? nullptr : &found->second;
}

// What get_child_optional finds, without its copies of the key.
const ptree* find(HZEPJSONTreeRef tree, const std::string& key) {
    const ptree* node = tree.get();
    if (key.find('.') == key.npos)
        return node && !key.empty() ? childOf(*node, key) : node;
    for (std::string_view path = key; node && !path.empty();) {
        const std::size_t point = path.find('.');
        node = childOf(*node, std::string(path.substr(0, point)));
        path.remove_prefix(point == path.npos ? path.size() : point + 1);
    }
    return node;
}

template <class Number>
Number number(HZEPJSONTreeRef tree, const std::string& key, Number defaultValue) {
    const ptree* node = find(tree, key);
    return node && !node->data().empty() ? static_cast<Number>(std::strtol(node->data().c_str(), nullptr, 10)) : defaultValue;
}

} // namespace

bool HZEPJSONUtils::findKey(HZEPJSONTreeRef tree, const std::string& key) {
    return find(tree, key) != nullptr;
}

bool HZEPJSONUtils::hasKey(HZEPJSONTreeRef tree, const std::string& key) {
    return findKey(tree, key);
}

std::string HZEPJSONUtils::getValue(HZEPJSONTreeRef tree, const std::string& key) {
    const ptree* node = find(tree, key);
    return node ? node->data() : std::string();
}

std::string HZEPJSONUtils::getStringValue(HZEPJSONTreeRef tree, const std::string& key) {
    return getValue(tree, key);
}

bool HZEPJSONUtils::getBoolValue(HZEPJSONTreeRef tree, const std::string& key) {
    const ptree* node = find(tree, key);
    return node && boost::algorithm::iequals(node->data(), "true", std::locale::classic());
}

int HZEPJSONUtils::getIntValue(HZEPJSONTreeRef tree, const std::string& key, int defaultValue) {
    return number(tree, key, defaultValue);
}

unsigned int HZEPJSONUtils::getUnsignedIntValue(HZEPJSONTreeRef tree, const std::string& key, unsigned int defaultValue) {
    return number(tree, key, defaultValue);
}

long HZEPJSONUtils::getLongValue(HZEPJSONTreeRef tree, const std::string& key, long defaultValue) {
    return number(tree, key, defaultValue);
}

unsigned long HZEPJSONUtils::getUnsignedLongValue(HZEPJSONTreeRef tree, const std::string& key, unsigned long defaultValue) {
    return number(tree, key, defaultValue);
}
