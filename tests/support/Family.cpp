// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "Family.h"

#include "Documents.h"

#include <iterator>
#include <sstream>

Family::Family(const std::string& name) {
    std::istringstream file(readTestFile("support/schemas.txt"));
    bool isOwn = false;
    for (std::string line, first; std::getline(file, line);) {
        std::istringstream words(line);
        words >> first;
        if (first[0] == '=') {
            isOwn = first.substr(1) == name;
            if (isOwn && words >> prefix_)
                prefix_ += ":";
        } else if (isOwn) {
            if (root_.empty())
                root_ = first;
            contents_[first].emplace_back(std::istream_iterator<std::string>(words), std::istream_iterator<std::string>());
        }
    }
    EXPECT_NE(root_, "") << name;
}

Element Family::make(std::size_t choice) const {
    int values = 0;
    return make_(root_, choice, values);
}

std::size_t Family::choices() const {
    std::size_t most = 0;
    for (const auto& [element, lines] : contents_)
        most = std::max(most, lines.size());
    return most;
}

Element Family::make_(const std::string& name, std::size_t choice, int& values) const {
    Element made{name, {}, {}, {}};
    const auto found = contents_.find(name);
    if (found == contents_.end())
        return made;
    made.parts = found->second[std::min(choice, found->second.size() - 1)];
    for (const std::string& part : made.parts) {
        const std::string plain = part.substr(part[0] == '@', part.find_first_of("#=?*+") - (part[0] == '@'));
        const bool isText = part.find_first_of("#=") == part.npos;
        if (part[0] != '@')
            made.children.push_back(make_(plain, choice, values));
        else if (part.find('=') != part.npos)
            made.attributes.emplace_back(prefix_ + plain, "true");
        else
            made.attributes.emplace_back(prefix_ + plain, (isText ? "v" : "") + std::to_string(++values % 250));
    }
    return made;
}

std::string Family::print(const Element& element, const std::string& indent) const {
    std::string text = indent + "<" + prefix_ + element.name;
    if (const std::string prefix = prefix_.substr(0, prefix_.find(':')); indent.empty() && !prefix.empty())
        text += " xmlns:" + prefix + "=\"urn:tolvan:" + prefix + "\"";
    for (const auto& [name, value] : element.attributes)
        text += " " + name + "=\"" + value + "\"";
    if (element.children.empty())
        return text + (contents_.contains(element.name) ? "/>\n" : ">text</" + prefix_ + element.name + ">\n");
    text += ">\n";
    for (const Element& child : element.children)
        text += print(child, indent + "  ");
    return text + indent + "</" + prefix_ + element.name + ">\n";
}
