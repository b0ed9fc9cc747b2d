// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "HostErrors.h"
#include "HostFileUtils.h"
#include "HostHwDefUtils.h"

#include <vector>

namespace {

/// Of a text in quotes; white space other than blanks would come back as blanks.
std::string escape(const std::string& text) {
    std::string escaped;
    for (const char c : text) {
        switch (c) {
        case '&':
            escaped += "&amp;";
            break;
        case '<':
            escaped += "&lt;";
            break;
        case '"':
            escaped += "&quot;";
            break;
        case '\t':
        case '\n':
        case '\r':
            escaped += "&#" + std::to_string(static_cast<int>(c)) + ";";
            break;
        default:
            escaped += c;
        }
    }
    return escaped;
}

std::string attribute(const char* name, const std::string& value) {
    return std::string(" ") + name + "=\"" + escape(value) + "\"";
}

class Renderer {
public:
    explicit Renderer(const HostHwDef& definition) : instances_(definition.getInstances()), children_(instances_.size() + 1) {
        for (std::size_t i = 0; i < instances_.size(); ++i)
            children_[instances_[i].parent == HostHwInstance::kNoParent ? instances_.size() : instances_[i].parent].push_back(i);
    }

    void renderBelowTop() { renderChildren(instances_.size(), 1); }

    std::string text;

private:
    void renderChildren(std::size_t parent, std::size_t depth) {
        if (depth > HostHwDefUtils::kMaxDepth)
            throw HostError("the hardware definition can't be told as XML: nested deeper than " +
                            std::to_string(HostHwDefUtils::kMaxDepth) + " levels");
        const std::string indent(2 * depth, ' ');
        for (const std::size_t index : children_[parent]) {
            const HostHwInstance& instance = instances_[index];
            text += indent + "<instance" + attribute("name", instance.name) + attribute("module", instance.module);
            if (instance.attributes.empty() && children_[index].empty()) {
                text += "/>\n";
                continue;
            }
            text += ">\n";
            for (const auto& [name, value] : instance.attributes)
                text += indent + "  <attribute" + attribute("name", name) + attribute("value", value) + "/>\n";
            renderChildren(index, depth + 1);
            text += indent + "</instance>\n";
        }
    }

    const std::vector<HostHwInstance>& instances_;
    std::vector<std::vector<std::size_t>> children_; // the last one: of the top module
};

} // namespace

std::string HostHwDefUtils::render(const HostHwDef& definition) {
    Renderer renderer(definition);
    renderer.text = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<hardwareDefinition" + attribute("top", definition.getHierTopModuleName());
    if (!definition.getPart().empty())
        renderer.text += attribute("part", definition.getPart());
    renderer.text += ">\n";
    renderer.renderBelowTop();
    renderer.text += "</hardwareDefinition>\n";
    // What no reader takes must not be written: empty names, texts that XML can't hold.
    HostHwDef again;
    if (std::string fault; !parse(renderer.text, again, fault))
        throw HostError("the hardware definition can't be told as XML: " + fault);
    return renderer.text;
}

void HostHwDef::write(const std::string& directory) const {
    HostFileUtils::writeFileAtomically(directory + "/hwdef.xml", HostHwDefUtils::render(*this));
}
