// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors

#include "KeyPath.h"

#include "HZEPHardwarePlatform.h"
#include "HZEPJSONText.h"
#include "HZEPNearNames.h"
#include "HostFile.h"
#include "HostText.h"
#include "NativeKeyService.h"
#include "NativeObjectService.h"

#include <algorithm>
#include <boost/algorithm/string/replace.hpp>
#include <boost/property_tree/ptree.hpp>
#include <iostream>
#include <set>
#include <string_view>

using boost::property_tree::ptree;
using zep::platform::NativeKeyService;
using zep::platform::NativeObjectService;

namespace {

constexpr std::size_t kMostNear = 3;
constexpr const char* kEvery[] = {"[]", "[*]"};

std::string quote(const std::string& text) {
    return '"' + text + '"';
}

bool isList(const ptree& node) {
    return !node.empty() && node.front().first.empty();
}

/// The list itself is meant.
std::string dropAtEnd(std::string path) {
    for (std::size_t size = path.size() + 1; size > path.size();) {
        size = path.size();
        for (const std::string every : kEvery)
            if (path.ends_with(every))
                path.resize(path.size() - every.size());
    }
    return path;
}

bool isToEveryElement(const std::string& path) {
    const std::string plain = dropAtEnd(path);
    return std::any_of(std::begin(kEvery), std::end(kEvery), [&](const char* every) { return plain.find(every) != plain.npos; });
}

/// An empty name stands for the same node.
std::string dropEmptyNames(const std::string& path) {
    std::string kept;
    for (std::size_t begin = 0; begin <= path.size();) {
        const std::size_t end = std::min(path.find('.', begin), path.size());
        if (end > begin)
            kept += (kept.empty() ? "" : ".") + path.substr(begin, end - begin);
        begin = end + 1;
    }
    return kept;
}

bool take(std::string_view& rest, std::string_view text) {
    if (!rest.starts_with(text))
        return false;
    rest.remove_prefix(text.size());
    return true;
}

/// Walks the way on which the key service makes its keys, so that each of them is found whatever characters its names have, also in the
/// form in which a terminal shows them.
class Search {
public:
    explicit Search(std::vector<Place>& found) : found_(found) {}

    void run(const ptree& node, std::string_view rest, const std::string& here) {
        std::size_t index = 0;
        for (const auto& [name, child] : node) {
            std::string place = here;
            std::string_view left = rest;
            if (!here.empty() && !(isList(node) ? takeIndex(left, index, place) : takePoint(left, place)))
                continue;
            if (take(left, name) || take(left, HostText::makePrintable(name)))
                follow(child, left, place + name);
        }
    }

private:
    static bool takePoint(std::string_view& left, std::string& place) {
        place += '.';
        return take(left, ".");
    }

    static bool takeIndex(std::string_view& left, std::size_t& index, std::string& place) {
        const std::string element = '[' + std::to_string(index++) + ']';
        place += element;
        return take(left, kEvery[0]) || take(left, kEvery[1]) || take(left, element);
    }

    void follow(const ptree& node, std::string_view left, const std::string& place) {
        if (left.empty())
            found_.push_back({place, &node});
        else
            run(node, left, place);
    }

    std::vector<Place>& found_;
};

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
    const std::string end = " ends at [";
    const std::string plain = name.substr(0, name.find('['));
    if (node.empty())
        return here + " is a value, nothing stands below it";
    if (plain.empty())
        return here + end + std::to_string(node.size() - 1) + "]";
    if (isList(node))
        return here + " is a list of " + std::to_string(node.size()) + "; an element is " + quote(reached + "[0]");
    const std::string way = reached.empty() ? "" : reached + ".";
    if (const auto child = node.find(plain); child != node.not_found() && plain != name)
        return quote(way + plain) + (child->second.empty() ? " is a value" : end + std::to_string(child->second.size() - 1) + "]");
    std::vector<std::string> names;
    std::set<std::string> seen;
    for (const auto& [key, child] : node)
        if (seen.insert(key).second)
            names.push_back(key);
    std::vector<std::string> near = HZEPNearNames::find(plain, names, kMostNear);
    for (std::string& key : near)
        key.insert(0, way);
    return here + " has no " + quote(plain) + HZEPNearNames::describe(near);
}

} // namespace

std::vector<std::string> readPaths(const std::string& operand) {
    std::vector<std::string> paths;
    if (operand != "-")
        paths.push_back(operand);
    else
        for (std::string line; std::getline(std::cin, line);)
            if (!line.empty())
                paths.push_back(line);
    for (const std::string& path : paths)
        if (path.find_first_not_of("[]*.") == path.npos)
            throw Unusable("the key path " + quote(path) + " has no name in it");
    return paths;
}

std::string toFirstElements(const std::string& path) {
    std::string first = dropAtEnd(path);
    for (const char* every : kEvery)
        boost::replace_all(first, every, "[0]");
    return dropEmptyNames(first);
}

std::vector<Place> findPlaces(const ptree& document, const std::string& path) {
    const NativeObjectService objects;
    const std::string plain = dropAtEnd(path);
    if (const std::string named = dropEmptyNames(plain); !named.empty())
        if (const auto node = objects.getChildOptional(document, named))
            return {{named, &*node}};

    std::vector<Place> found;
    for (const std::string& each : {plain, path}) {
        const std::string actual = objects.getPathWithActualHwPlatformRoot(document, each);
        Search(found).run(document, actual, "");
        if (found.empty())
            continue;
        const std::size_t root = objects.getHwPlatformRootPath(document).size();
        if (actual != each)
            for (Place& place : found)
                place.path.replace(0, root, objects.getLegacyHwPlatformRootPath());
        break;
    }
    return found;
}

const ptree* findPart(const ptree& document, const std::string& file) {
    const bool isArchive = HZEPHardwarePlatform::isValidPlatformExt("." + HostFile(file).getExt());
    if (!isArchive && !file.ends_with(".spfm"))
        return nullptr;
    const auto part = NativeObjectService().getChildOptional(document, isArchive ? "hardwarePlatform" : "softwarePlatform");
    return part ? &*part : nullptr;
}

void printPlaces(Session& session, const std::vector<Place>& places, const std::string& path, bool isJson) {
    const std::string plain = dropAtEnd(path);
    const bool isOne = !isToEveryElement(path) && places.size() == 1;
    const bool areValues = std::all_of(places.begin(), places.end(), [](const Place& place) { return place.node->empty(); });
    if (areValues && !isJson) {
        for (const Place& place : places) {
            const std::string& text = place.node->data();
            session.out() << (Session::isTerminal() ? HostText::makePrintable(text) : text) << '\n';
        }
    } else if (isOne && !areValues && !isList(*places.front().node)) {
        HZEPJSONText::write(session.out(), *places.front().node);
    } else {
        // A list at the root of the document has stood without its name since the first release.
        const std::size_t point = plain.rfind('.');
        ptree holder;
        ptree& held = holder.push_back({point == plain.npos && !areValues ? "" : plain.substr(point + 1), ptree()})->second;
        if (isOne)
            held = *places.front().node;
        else
            for (const Place& place : places)
                held.push_back({"", *place.node});
        HZEPJSONText::write(session.out(), holder);
    }
}

std::string describeMissingKey(const std::string& place, const ptree& document, const std::string& path) {
    const NativeObjectService objects;
    const std::string plain = toFirstElements(path);
    const std::string actual = objects.getPathWithActualHwPlatformRoot(document, plain);
    std::string words = place + ": there is no " + quote(path) + (actual == plain ? "" : "; looked for it as " + quote(actual));

    std::string way;
    std::string name;
    for (std::size_t begin = 0; begin < actual.size();) {
        const std::size_t end = std::min(actual.find('.', begin), actual.size());
        const std::string next = actual.substr(0, end);
        if (!objects.hasNodeAtPath(document, next)) {
            name = actual.substr(begin, end - begin);
            break;
        }
        way = next;
        begin = end + 1;
    }
    if (way.empty()) {
        if (const auto deeper = findDeeper(document, plain); !deeper.empty())
            return HostText::makePrintable(words + " at its root" + HZEPNearNames::describe(deeper));
    }
    if (!name.empty())
        words += "; " + describeStop(way.empty() ? document : *objects.getChildOptional(document, way), way, name);
    return HostText::makePrintable(words);
}
