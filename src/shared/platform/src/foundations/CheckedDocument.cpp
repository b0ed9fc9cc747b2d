// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "CheckedDocument.h"

#include "HZEPJSONText.h"
#include "HostErrors.h"
#include "HostText.h"
#include "HostZip.h"

#include <sstream>

using boost::property_tree::ptree;

namespace zep_platform {

namespace {

[[noreturn]] void refuse(const std::string& key, const std::string& cause) {
    const std::string shown = HostText::makePrintable(key);
    throw HostDataException(shown + ": " + cause, {"", shown, 0, 0, cause});
}

/// Raises for the first key that no reader takes.
void blameKey(const ptree& node, const std::string& path, std::size_t depth) {
    refuseUnlessUtf8(path, node.data());
    // The whole path to such a depth tells nobody more than its beginning.
    if (depth > HZEPJSONText::kMaxDepth && !node.empty())
        refuse(path.substr(0, path.find_first_of(".[")),
               "is nested deeper than the " + std::to_string(HZEPJSONText::kMaxDepth) + " levels that are read");
    std::size_t place = 0;
    for (const auto& [key, child] : node) {
        const std::string at = key.empty() ? path + "[" + std::to_string(place) + "]" : path.empty() ? key : path + "." + key;
        refuseUnlessUtf8(at, key);
        blameKey(child, at, depth + 1);
        ++place;
    }
}

void readTree(const std::string& text) {
    ptree tree;
    HZEPJSONText::read(text, tree);
}

template <class Write, class GetTree, class Read>
std::string render(const Write& write, const GetTree& getTree, const Read& readAgain) {
    std::ostringstream stream;
    write(stream);
    std::string text = std::move(stream).str();
    if (text.size() > HostZip::kMaxMemberSize)
        throw HostDataException("the document is larger than " + std::to_string(HostZip::kMaxMemberSize >> 20) + " MiB");
    std::string cause;
    try {
        readAgain(text);
        return text;
    } catch (const std::exception& error) {
        cause = error.what();
    }
    blameKey(getTree(), "", 1);
    throw HostDataException("the document could not be read again: " + cause);
}

} // namespace

std::string renderChecked(const JSONWriter& document, const std::function<void(const std::string&)>& readAgain) {
    return render([&](std::ostream& stream) { document.write(stream); }, [&]() -> const ptree& { return document.getTree(); }, readAgain);
}

std::string renderChecked(const JSONWriter& document) {
    return renderChecked(document, &readTree);
}

std::string renderChecked(const ptree& document) {
    return render([&](std::ostream& stream) { HZEPJSONText::write(stream, document); }, [&]() -> const ptree& { return document; },
                  &readTree);
}

void refuseUnlessUtf8(const std::string& what, const std::string& text) {
    if (!HostText::isUtf8(text))
        refuse(what, "is no UTF-8: \"" + HostText::makePrintable(text) + "\"");
}

} // namespace zep_platform
