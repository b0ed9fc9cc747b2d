// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "BasePlatformLMX.h"
#include "HZEPNearNames.h"
#include "HostJson.h"
#include "HostText.h"
#include "LintText.h"
#include "LintTree.h"
#include "WELHardwarePlatformLMX.h"
#include "ZEPEmulationLMX.h"
#include "ZEPPlatformLMX.h"
#include "ZEPSoftwarePlatformLMX.h"

#include <cstring>

namespace {

using lint::Findings;
using lint::Kind;
using lint::Node;
using lint::Rule;

struct Format {
    const lmx60::s_ns_map* namespaces;
    /// Reads a document into the format's binding, of which nothing is kept.
    lmx60::elmx_error (*read)(lmx60::c_xml_reader& reader);
};

template <class Root>
lmx60::elmx_error readInto(lmx60::c_xml_reader& reader) {
    Root root;
    return root.unmarshal(reader);
}

Format getFormat(Kind kind) {
    switch (kind) {
    case Kind::PlatformFile:
        return {ZEPPlatform::ns_map_reader, &readInto<ZEPPlatform::Platform>};
    case Kind::SoftwareFile:
        return {ZEPSoftwarePlatform::ns_map_reader, &readInto<ZEPSoftwarePlatform::Platform>};
    case Kind::HardwareFile:
        return {WELHardwarePlatform::ns_map_reader, &readInto<WELHardwarePlatform::Repository>};
    case Kind::EmulationXml:
        return {ZEPEmulation::ns_map_reader, &readInto<ZEPEmulation::Root>};
    default:
        return {BasePlatform::ns_map_reader, &readInto<BasePlatform::Root>};
    }
}

/// Holds a document against a binding: every fault is a finding, and the reading goes on behind it.
class CheckingReader : public lmx60::c_xml_reader_memory {
public:
    CheckingReader(const std::string& text, const Format& format, Findings& findings)
        : c_xml_reader_memory(text.data(), text.size()), format_(format), findings_(findings) {}

protected:
    lmx60::elmx_error error_hook(lmx60::elmx_error code, const std::string&, const std::string&, int line) override {
        const bool isSyntax = code >= lmx60::error_not_well_formed && code <= lmx60::error_too_large;
        const Rule rule = isSyntax || code == lmx60::error_wrong_root ? Rule::Parse : Rule::Schema;
        const std::string& words = get_error_text();
        findings_.add(rule, static_cast<std::size_t>(line),
                      HostText::makePrintable(words.empty() ? lmx60::get_error_description(code) : words));
        return rule == Rule::Parse ? code : lmx60::error_none;
    }

    void skipped_hook(lmx60::elmx_name_kind kind, const std::string& name, int line, const lmx60::s_event_map* known) override {
        const bool isAttribute = kind == lmx60::name_of_attribute;
        // What every XML document may say about itself.
        if (findings_.isFull() || (isAttribute && (name.starts_with("xsi:") || name.starts_with("xml:"))))
            return;
        std::vector<std::string> names;
        for (; known && known->name; ++known)
            names.push_back(getPrefix(known->ns_id) + known->name);
        findings_.add(isAttribute ? Rule::UnknownAttribute : Rule::UnknownElement, static_cast<std::size_t>(line),
                      std::string(isAttribute ? "attribute " : "element ") + lint::quote(name) + " is not known here" +
                          suggestFor(name, names));
    }

private:
    std::string getPrefix(int id) const {
        for (const lmx60::s_ns_map* row = format_.namespaces; row->uri; ++row)
            if (row->id == id)
                return std::string(row->prefix) + ":";
        return "";
    }

    /// A name without its prefix is as near as one can be.
    static std::string suggestFor(const std::string& name, const std::vector<std::string>& names) {
        for (const std::string& candidate : names)
            if (const std::size_t colon = candidate.find(':'); colon != candidate.npos && candidate.substr(colon + 1) == name)
                return "; did you mean \"" + candidate + "\"?";
        return HZEPNearNames::suggest(name, names, 1);
    }

    Format format_;
    Findings& findings_;
};

/// Takes a document as it is, whatever its format.
class TreeReader : public lmx60::c_xml_reader_memory {
public:
    TreeReader(const std::string& text, const lmx60::s_ns_map* namespaces)
        : c_xml_reader_memory(text.data(), text.size()), id_(namespaces && namespaces->uri ? namespaces->id : lmx60::ns_none),
          maxValues_(HostJson::getMaxValues(text.size())) {
        set_ns_map(namespaces);
    }

    /// False when the document does not parse or has too many values.
    bool readAll(Node& root) {
        std::vector<Node*> levels;
        for (;;) {
            switch (peek()) {
            case lmx60::xml_event_kind::start:
                levels.push_back(levels.empty() ? &root : &levels.back()->children.emplace_back());
                readTag(*levels.back());
                if (isTooLarge())
                    return false;
                break;
            case lmx60::xml_event_kind::end:
                levels.pop_back();
                pop();
                break;
            case lmx60::xml_event_kind::text:
                pop();
                break;
            case lmx60::xml_event_kind::end_of_document:
                return true;
            default:
                return false;
            }
        }
    }

    /// The document element and the elements directly below it, as far as the document goes.
    void readTop(Node& root) {
        for (int depth = 0;;) {
            const lmx60::xml_event_kind kind = peek();
            if (kind == lmx60::xml_event_kind::start && depth == 0) {
                readTag(root);
                depth = 1;
            } else if (kind == lmx60::xml_event_kind::start) {
                readTag(root.children.emplace_back());
                skip_rest_of_element();
            } else if (kind == lmx60::xml_event_kind::text) {
                pop();
            } else {
                return;
            }
        }
    }

    bool isTooLarge() const { return values_ > maxValues_; }

private:
    void readTag(Node& node) {
        if (next_ns_id() == id_)
            node.name = next_local_name();
        node.line = static_cast<std::size_t>(next_line());
        node.form = Node::Object;
        pop();
        values_ += 1 + attribute_count();
        for (std::size_t i = 0; i < attribute_count() && !isTooLarge(); ++i)
            if (attribute_ns_id(i) == id_)
                node.children.push_back({std::string(attribute_local_name(i)),
                                         std::string(attribute_value(i)),
                                         static_cast<std::size_t>(attribute_line(i)),
                                         Node::Text,
                                         {}});
    }

    int id_;
    /// A tree of XML costs what one of JSON does.
    std::size_t maxValues_;
    std::size_t values_ = 0;
};

Node readTop(const std::string& text, const lmx60::s_ns_map* namespaces) {
    Node root;
    TreeReader(text, namespaces).readTop(root);
    return root;
}

} // namespace

namespace lint {

std::optional<Node> readXml(const std::string& text, Kind kind, Findings& findings) {
    const Format format = getFormat(kind);
    CheckingReader reader(text, format, findings);
    format.read(reader);
    if (findings.has(Rule::Parse))
        return std::nullopt;
    Node root;
    TreeReader tree(text, format.namespaces);
    if (tree.readAll(root))
        return root;
    if (tree.isTooLarge())
        findings.add(Rule::TooLarge, 1,
                     "more than " + std::to_string(HostJson::getMaxValues(text.size())) + " values in " + std::to_string(text.size()) +
                         " bytes; not checked further");
    return std::nullopt;
}

std::optional<Kind> recogniseXml(const std::string& text) {
    if (const Node root = readTop(text, ZEPPlatform::ns_map_reader); root.name == "platform")
        return root.find("systemConfigurations") ? Kind::SoftwareFile : Kind::PlatformFile;
    if (readTop(text, WELHardwarePlatform::ns_map_reader).name == "repository")
        return Kind::HardwareFile;
    const Node root = readTop(text, BasePlatform::ns_map_reader);
    if (root.name == "Root" && root.find("Emulations"))
        return Kind::EmulationXml;
    if (root.name == "Root" && (root.find("DSA") || root.find("GenAppInfo")))
        return Kind::ArchiveXml;
    return std::nullopt;
}

} // namespace lint
