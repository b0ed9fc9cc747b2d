// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors

// Questions to the services on documents of 1,000 to 100,000 leaves, beside the obvious way to do the same with a property tree: a
// look-up by get_child_optional, a list of keys and a flat map by a recursion that makes and hands on its texts.

#include "Measure.h"

#include "HZEPJSONText.h"
#include "NativeDictService.h"
#include "NativeKeyService.h"
#include "NativeObjectService.h"

#include <cstdio>
#include <cstdlib>
#include <functional>
#include <sstream>
#include <string>
#include <vector>

using boost::property_tree::ptree;
using zep::platform::NativeDictService;
using zep::platform::NativeKeyService;
using zep::platform::NativeObjectService;

namespace {

constexpr std::size_t kLookUps = 1'000;
constexpr std::size_t kLeavesPerItem = 10;

const std::string kHardware = "hardwarePlatforms.hardwarePlatform.";

/// Half of the leaves in a list of bus interfaces, half as members of one object.
ptree makeDocument(std::size_t leaves) {
    ptree document;
    document.put(kHardware + "board.name", "kestrel");
    ptree& list = document.put_child(kHardware + "busInterfaces", ptree());
    for (std::size_t i = 0; i < leaves / 2 / kLeavesPerItem; ++i) {
        ptree& item = list.push_back({"", ptree()})->second;
        for (std::size_t k = 0; k < kLeavesPerItem; ++k)
            item.push_back({"key" + std::to_string(k), ptree("value" + std::to_string(i))});
    }
    ptree& wide = document.put_child(kHardware + "parameters", ptree());
    for (std::size_t i = 0; i < leaves / 2; ++i)
        wide.push_back({"parameter" + std::to_string(i), ptree(std::to_string(i))});
    return document;
}

using Dict = std::map<std::string, std::string>;

void flattenNaively(Dict& dict, const ptree& node, const std::string& prefix) {
    const bool isArray = !node.empty() && node.front().first.empty();
    std::size_t counter = 0;
    for (const auto& [key, child] : node) {
        const std::string path = isArray ? prefix + "[" + std::to_string(counter++) + "]" : prefix.empty() ? key : prefix + "." + key;
        if (child.empty())
            dict.insert({path, child.data()});
        else
            flattenNaively(dict, child, path);
    }
}

std::set<std::string> listNaively(const ptree& node, const std::string& prefix) {
    std::set<std::string> keys;
    const std::string before = prefix.empty() ? "" : prefix + (!node.empty() && node.front().first.empty() ? "[]" : ".");
    for (const auto& [key, child] : node) {
        keys.insert(before + key);
        for (const std::string& below : listNaively(child, before + key))
            keys.insert(below);
    }
    return keys;
}

double measure(const std::function<std::size_t()>& work, std::size_t expected) {
    std::vector<double> times;
    for (int i = 0; i < 9; ++i) {
        std::size_t size = 0;
        times.push_back(bench::milliseconds([&] { size = work(); }));
        if (size != expected) {
            std::fprintf(stderr, "%zu in place of %zu\n", size, expected);
            std::exit(1);
        }
    }
    return bench::median(times);
}

/// A look-up of each of 1,000 paths; counts the ones that have a value.
double ask(const std::vector<std::string>& paths, const std::function<bool(const std::string&)>& hasValue) {
    return measure(
        [&] {
            std::size_t found = 0;
            for (const std::string& path : paths)
                found += hasValue(path);
            return found;
        },
        paths.size());
}

void report(std::size_t leaves, const char* what, double ours, double naive, double& before) {
    std::printf("%8zu  %-44s %12.3f %12.3f %8.2f", leaves, what, ours, naive, ours / naive);
    if (before > 0)
        std::printf(" %8.2f", ours / before / 10);
    std::puts("");
    before = ours;
}

} // namespace

int main() {
    std::printf("%8s  %-44s %12s %12s %8s %8s\n", "leaves", "what", "ms", "naive ms", "ratio", "growth");
    const NativeObjectService objects;
    double before[5] = {};
    for (const std::size_t leaves : {1'000UL, 10'000UL, 100'000UL}) {
        const ptree document = makeDocument(leaves);
        std::vector<std::string> members, elements;
        for (std::size_t i = 0; i < kLookUps; ++i) {
            members.push_back("parameters.parameter" + std::to_string(i * 7919 % (leaves / 2)));
            elements.push_back("busInterfaces[" + std::to_string(i * 7919 % (leaves / 2 / kLeavesPerItem)) + "].key3");
        }
        const auto byTree = [&](const std::string& path) { return !objects.getStringValue(document, "hardwarePlatform." + path).empty(); };
        const auto byBoost = [&](const std::string& path) { return document.get_child_optional(kHardware + path).has_value(); };
        const auto byPosition = [&](const std::string& path) {
            const auto list = document.get_child_optional(kHardware + "busInterfaces");
            const auto index = std::strtoul(path.c_str() + path.find('[') + 1, nullptr, 10);
            return std::next(list->begin(), static_cast<std::ptrdiff_t>(index))->second.get_child_optional("key3").has_value();
        };
        report(leaves, "1,000 look-ups of members", ask(members, byTree), ask(members, byBoost), before[0]);
        report(leaves, "1,000 look-ups of list elements", ask(elements, byTree), ask(elements, byPosition), before[1]);

        std::ostringstream text;
        HZEPJSONText::write(text, document);
        const auto byText = [&, json = text.str()](const std::string& path) {
            bool ok = false;
            return !objects.getNodeByPath(json, kHardware + path, ok).data().empty();
        };
        const std::vector<std::string> few(members.begin(), members.begin() + 2);
        report(leaves, "2 look-ups by text, naive: by tree", ask(few, byText), ask(few, byTree), before[2]);

        Dict flat;
        flattenNaively(flat, document, "");
        report(leaves, "flat map", measure([&] { return NativeDictService().getAsDict(document, "").size(); }, flat.size()),
               measure(
                   [&] {
                       Dict dict;
                       flattenNaively(dict, document, "");
                       return dict.size();
                   },
                   flat.size()),
               before[3]);
        const std::size_t keys = listNaively(document, "").size();
        report(leaves, "list of keys", measure([&] { return NativeKeyService().get(document).size(); }, keys),
               measure([&] { return listNaively(document, "").size(); }, keys), before[4]);
    }
    std::puts("\nms of processor time, medians of 9. ratio: ours over naive.\n"
              "growth: time against the same row of the document before, over the growth of the document (1 is linear).");
}
