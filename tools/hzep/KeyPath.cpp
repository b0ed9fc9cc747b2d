// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors

#include "KeyPath.h"

#include "HZEPJSONText.h"
#include "HZEPMetadataLint.h"
#include "HZEPNearNames.h"
#include "HostText.h"
#include "NativeKeyService.h"
#include "NativeObjectService.h"

#include <algorithm>
#include <boost/algorithm/string/erase.hpp>
#include <boost/algorithm/string/replace.hpp>
#include <boost/property_tree/ptree.hpp>
#include <set>
#include <vector>

using boost::property_tree::ptree;
using zep::platform::NativeKeyService;
using zep::platform::NativeObjectService;

namespace {

constexpr std::size_t kMostNear = 3;
std::string quote(const std::string& text) {
    return '"' + text + '"';
}

/// Paths that end in this one: the way to it was left out.
std::vector<std::string> findDeeper(const ptree& document, const std::string& path) {
    std::vector<std::string> found;
    for (const std::string& key : NativeKeyService().get(document))
        if (key.ends_with("." + path) && found.size() < kMostNear)
            found.push_back(boost::replace_all_copy(key, "[]", "[0]"));
    return found;
}

/// What the node offers for a name that it has not.
std::string describeStop(const ptree& node, const std::string& reached, const std::string& name) {
    const std::string here = reached.empty() ? "the document" : quote(reached);
    if (node.empty())
        return here + " is a value, nothing stands below it";
    if (node.front().first.empty())
        return here + " is a list of " + std::to_string(node.size()) + "; an element is " + quote(reached + "[0]");
    const std::string plain = name.substr(0, name.find('['));
    if (const auto child = node.find(plain); child != node.not_found())
        return quote((reached.empty() ? "" : reached + ".") + plain) +
               (child->second.empty() ? " is a value" : " ends at [" + std::to_string(child->second.size() - 1) + "]");
    std::vector<std::string> names;
    std::set<std::string> seen;
    for (const auto& [key, child] : node)
        if (seen.insert(key).second)
            names.push_back(key);
    std::vector<std::string> near = HZEPNearNames::find(plain, names, kMostNear);
    for (std::string& key : near)
        key.insert(0, reached.empty() ? "" : reached + ".");
    return here + " has no " + quote(plain) + HZEPNearNames::describe(near);
}

} // namespace

bool printAt(Session& session, const std::string& document, const std::string& path, bool isJson) {
    const NativeObjectService objects;
    bool ok = false;
    const std::string text = objects.getObjectsByPath_(document, path, ok);
    if (!ok)
        return false;
    const bool isValue = objects.getNodeByPath_(document, path, ok).empty();
    if (isValue && isJson) {
        ptree holder;
        holder.push_back({path.substr(path.rfind('.') + 1), ptree(text)});
        HZEPJSONText::write(session.out(), holder);
    } else {
        session.out() << (isValue && Session::isTerminal() ? HostText::makePrintable(text) : text) << (isValue ? "\n" : "");
    }
    return true;
}

std::string describeMissingKey(const std::string& place, const ptree& document, const std::string& path) {
    const NativeObjectService objects;
    const std::string plain = boost::erase_all_copy(boost::erase_all_copy(path, "[]"), "[*]");
    const std::string actual = objects.getPathWithActualHwPlatformRoot(document, plain);
    std::string words = place + ": there is no " + quote(path) + (actual == plain ? "" : "; looked for it as " + quote(actual));

    std::size_t reached = 0;
    std::size_t end = 0;
    do {
        reached = end;
        end = std::min(actual.find('.', end == 0 ? 0 : end + 1), actual.size());
    } while (reached < actual.size() && objects.hasNodeAtPath(document, actual.substr(0, end)));

    if (reached == 0) {
        if (const auto deeper = findDeeper(document, plain); !deeper.empty())
            return HostText::makePrintable(words + " at its root" + HZEPNearNames::describe(deeper));
    }
    const std::string way = actual.substr(0, reached);
    const auto node = objects.getChildOptional(document, way);
    const std::size_t begin = reached == 0 ? 0 : reached + 1;
    words += "; " + describeStop(node ? *node : document, way, actual.substr(begin, end - begin));
    return HostText::makePrintable(words);
}
