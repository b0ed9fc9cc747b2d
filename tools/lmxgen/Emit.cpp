// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "Emit.h"

#include <map>
#include <set>
#include <sstream>
#include <utility>

namespace {

using Words = std::map<std::string, std::string>;

/// The pattern with each @key@ replaced.
std::string fill(const std::string& pattern, const Words& words) {
    std::string result;
    for (std::size_t at = 0;;) {
        const std::size_t open = pattern.find('@', at);
        result.append(pattern, at, open - at);
        if (open == std::string::npos) {
            return result;
        }
        const std::size_t close = pattern.find('@', open + 1);
        result += words.at(pattern.substr(open + 1, close - open - 1));
        at = close + 1;
    }
}

std::string quoted(const std::string& text) {
    std::ostringstream out;
    out << '"';
    for (const char c : text) {
        if (c == '"' || c == '\\') {
            out << '\\' << c;
        } else if (static_cast<unsigned char>(c) < 0x20 || static_cast<unsigned char>(c) > 0x7e) {
            static const char digits[] = "01234567";
            const auto byte = static_cast<unsigned char>(c);
            out << '\\' << digits[byte >> 6] << digits[(byte >> 3) & 7] << digits[byte & 7];
        } else {
            out << c;
        }
    }
    out << '"';
    return out.str();
}

const char* boolean(bool value) {
    return value ? "true" : "false";
}

std::string event(const std::string& xmlName) {
    return "e_" + xmlName;
}

class Emitter {
public:
    explicit Emitter(const Family& family) : family_(family) {
        for (const auto& each : family.classes) {
            for (const auto* members : {&each->attributes, &each->children}) {
                for (const Member& member : *members) {
                    if (!member.xmlName.empty()) {
                        events_.insert(member.xmlName);
                    }
                    if (member.isValue()) {
                        specs_.emplace(specKey(member), specs_.size());
                    }
                }
            }
            for (const std::string& name : each->allElements()) {
                elements_.insert(name);
            }
            if (!each->rootElement.empty()) {
                events_.insert(each->rootElement);
                elements_.insert(each->rootElement);
            }
        }
    }

    std::string header();
    std::string source();

private:
    using SpecKey = std::pair<std::string, std::string>;

    static SpecKey specKey(const Member& member) {
        return {member.type->runtimeType, member.defaultText ? quoted(*member.defaultText) : ""};
    }
    std::string spec(const Member& member) const { return "spec_" + std::to_string(specs_.at(specKey(member))); }
    static std::string storage(const Member& member);
    Words words(const Class& of, const Member& member) const;
    std::string row(const std::string& xmlName) const;

    void declare(const Class& of);
    void declareMember(const Class& of, const Member& member);
    void declareRoot(const Class& of);

    void defineTables();
    void define(const Class& of);
    void defineMember(const Class& of, const Member& member);
    void defineChoice(const Class& of);
    void defineOccurs(const Class& of);
    void defineMarshal(const Class& of);
    void defineUnmarshal(const Class& of);
    void defineRoot(const Class& of);
    std::string marshalStep(const Member& member) const;
    std::string readStep(const Member& member) const;

    const Family& family_;
    std::set<std::string> events_;
    std::set<std::string> elements_;
    std::map<SpecKey, std::size_t> specs_;
    std::ostringstream out_;
};

std::string Emitter::storage(const Member& member) {
    if (member.isValue()) {
        return std::string("lmx60::ct_simple_") + (member.type->isPod ? "pod_" : "non_pod_") +
               (member.isMandatory ? "single<" : "optional<") + member.type->keptType() + ">";
    }
    return std::string("lmx60::ct_child") + (member.isList() ? "_list<" : "<") + member.childClass->name + ">";
}

Words Emitter::words(const Class& of, const Member& member) const {
    Words result = {{"C", of.name}, {"X", member.name}, {"f", "m_." + member.field()}, {"choose", ""}};
    if (of.isChoice && member.kind != Member::Attribute) {
        result["choose"] = "choose_(Choice_" + member.name + "); ";
    }
    if (member.isValue()) {
        result["T"] = member.type->cppType;
        const bool isByValue = member.type->isPod || member.type->isText();
        result["answer"] = isByValue ? member.type->cppType : std::string("const ") + member.type->cppType + "&";
        result["wide"] = member.type->isText() ? ".get_wide()" : "";
        result["kept"] = member.type->isText() ? "lmx60::c_text(value)" : "value";
        result["spec"] = spec(member);
    } else {
        result["T"] = member.childClass->name;
        result["xml"] = quoted(member.isGroup() ? member.childClass->name : family_.written(member.xmlName));
    }
    return result;
}

std::string Emitter::row(const std::string& xmlName) const {
    return "{" + std::to_string(family_.nsId()) + ", " + quoted(xmlName) + ", " + std::to_string(xmlName.size()) + ", " + event(xmlName) +
           "}";
}

std::string Emitter::header() {
    out_ << "// Generated from " << family_.schemaFile << ": changes belong there.\n#pragma once\n\n#include \"lmx60.h\"\n\n"
         << "#include <cstddef>\n#include <iosfwd>\n#include <string>\n\nnamespace " << family_.name << " {\n\n"
         << "extern HOST_EXPORT const lmx60::s_ns_map ns_map_reader[];\nextern HOST_EXPORT const lmx60::s_ns_map ns_map_writer_1[];\n\n";
    for (const auto& each : family_.classes) {
        out_ << "class " << each->name << ";\n";
    }
    for (const auto& each : family_.classes) {
        declare(*each);
    }
    out_ << "\n} // namespace " << family_.name << "\n";
    return out_.str();
}

void Emitter::declare(const Class& of) {
    const Words w = {{"C", of.name}};
    out_ << fill("\nclass HOST_EXPORT @C@ {\npublic:\n"
                 "    @C@();\n    @C@(const @C@& other);\n    @C@& operator=(const @C@& other);\n"
                 "    virtual @C@* do_clone() const;\n    virtual ~@C@();\n"
                 "    bool operator==(const @C@& other) const;\n"
                 "    void swap(@C@& other);\n    void reset();\n    void init();\n    bool IsOccursOk() const;\n",
                 w);
    if (of.isRoot()) {
        declareRoot(of);
    }
    if (of.isChoice) {
        out_ << "\n    enum elmx_choice {";
        for (const Member& member : of.children) {
            out_ << " Choice_" << member.name << ",";
        }
        out_ << " Choice_None };\n    int GetChoice() const { return m_.choice; }\n";
        for (const Member& member : of.children) {
            out_ << "    void Select" << member.name << "();\n";
        }
        out_ << "    void release_choice();\n";
    }
    for (const auto* members : {&of.attributes, &of.children}) {
        for (const Member& member : *members) {
            declareMember(of, member);
        }
    }
    out_ << "\n    lmx60::elmx_error marshal(lmx60::c_xml_writer& writer, const char* name) const;\n"
            "    lmx60::elmx_error marshal_attributes(lmx60::c_xml_writer& writer) const;\n"
            "    lmx60::elmx_error marshal_child_elements(lmx60::c_xml_writer& writer) const;\n"
            "    lmx60::elmx_error unmarshal(lmx60::c_xml_reader& reader, const std::string& name);\n"
            "    bool unmarshal_attributes(lmx60::c_xml_reader& reader, lmx60::elmx_error* error);\n"
            "    lmx60::elmx_error unmarshal_attributes_check(lmx60::c_xml_reader& reader);\n"
            "    bool unmarshal_body(lmx60::c_xml_reader& reader, lmx60::elmx_error* error);\n";
    if (of.isGroup) {
        out_ << "    static bool IsMember(lmx60::c_xml_reader& reader);\n";
    }
    out_ << "\n    static const lmx60::s_event_map attr_event_map[];\n    static const lmx60::s_event_map elem_event_map[];\n"
            "    static const lmx60::s_event_map* const known_elements;\n\nprivate:\n";
    if (of.isChoice) {
        out_ << "    void choose_(int choice);\n";
    }
    if (of.isRoot()) {
        out_ << "    void create_mandatory_children_();\n";
    }
    out_ << "    struct s_members {\n";
    if (of.isChoice) {
        out_ << "        int choice = Choice_None;\n";
    }
    for (const auto* members : {&of.attributes, &of.children}) {
        for (const Member& member : *members) {
            out_ << "        " << storage(member) << " " << member.field() << ";\n";
        }
    }
    out_ << "        bool operator==(const s_members&) const = default;\n    };\n    s_members m_;\n};\n"
         << "using " << of.name << "UnmarshalHelper = lmx60::ct_unmarshal_helper<" << of.name << ">;\n";
}

void Emitter::declareMember(const Class& of, const Member& member) {
    const Words w = words(of, member);
    const bool isInChoice = of.isChoice && member.kind != Member::Attribute;
    const bool canBeUnset = isInChoice || !member.isMandatory;
    out_ << "\n";
    if (member.isValue()) {
        out_ << fill("    @answer@ Get@X@() const { return @f@.get()@wide@; }\n"
                     "    lmx60::elmx_error Set@X@(const @T@& value) { @choose@return @f@.set(@kept@); }\n",
                     w);
        if (member.type->isText()) {
            out_ << fill("    std::string Get@X@Utf8() const { return @f@.get().get_utf8(); }\n", w);
        }
        if (std::string(member.type->cppType) == "bool") {
            out_ << fill("    lmx60::elmx_error Set@X@(const void* text) = delete;\n", w);
        }
        if (canBeUnset) {
            out_ << fill("    bool Isset@X@() const { return @f@.is_set(); }\n    void Unset@X@();\n", w);
        }
        return;
    }
    if (member.isList()) {
        out_ << fill(
            "    const @T@& Get@X@(std::size_t index) const;\n    @T@& Get@X@(std::size_t index);\n"
            "    @T@& Append@X@();\n    void Append@X@(@T@* child);\n"
            "    @T@& Insert@X@(std::size_t index);\n    void Insert@X@(std::size_t index, @T@* child);\n"
            "    @T@* Assign@X@(std::size_t index, @T@* child);\n    void Assign@X@(std::size_t index, const @T@& child);\n"
            "    @T@& Back@X@();\n    const @T@& Back@X@() const;\n"
            "    void Delete@X@(std::size_t index);\n    void Clear@X@();\n    std::size_t Size@X@() const { return @f@.size(); }\n",
            w);
        return;
    }
    out_ << fill(
        "    const @T@& Get@X@() const;\n    @T@& Get@X@();\n    @T@* Assign@X@(@T@* child);\n    void Assign@X@(const @T@& child);\n", w);
    if (canBeUnset) {
        out_ << fill("    bool Isset@X@() const { return @f@.is_set(); }\n    void Unset@X@();\n", w);
    }
}

void Emitter::declareRoot(const Class& of) {
    out_ << fill(
        "\n    explicit @C@(lmx60::c_xml_reader& reader, lmx60::elmx_error* error = nullptr);\n"
        "    explicit @C@(const char* file, lmx60::elmx_error* error = nullptr, lmx60::s_debug_error* debug = nullptr);\n"
        "    @C@(const char* buffer, std::size_t length, lmx60::elmx_error* error = nullptr, lmx60::s_debug_error* debug = nullptr);\n"
        "    explicit @C@(const std::string& document, lmx60::elmx_error* error = nullptr, lmx60::s_debug_error* debug = nullptr);\n"
        "    explicit @C@(const lmx60::c_any_info& any, lmx60::elmx_error* error = nullptr, lmx60::s_debug_error* debug = nullptr);\n"
        "    lmx60::elmx_error Marshal(const char* file, lmx60::s_debug_error* debug = nullptr) const;\n"
        "    lmx60::elmx_error Marshal(std::ostream& out, lmx60::s_debug_error* debug = nullptr) const;\n"
        "    lmx60::elmx_error Marshal(std::string* text, lmx60::s_debug_error* debug = nullptr) const;\n"
        "    lmx60::elmx_error Unmarshal(const char* file, lmx60::s_debug_error* debug = nullptr);\n"
        "    lmx60::elmx_error Unmarshal(const char* buffer, std::size_t length, lmx60::s_debug_error* debug = nullptr);\n"
        "    lmx60::elmx_error Unmarshal(const lmx60::c_any_info& any, lmx60::s_debug_error* debug = nullptr);\n"
        "    lmx60::elmx_error unmarshal(lmx60::c_xml_reader& reader);\n",
        {{"C", of.name}});
}

std::string Emitter::source() {
    out_ << "// Generated from " << family_.schemaFile << ": changes belong there.\n#include \"" << family_.name
         << "LMX.h\"\n\n#include <utility>\n\nnamespace " << family_.name << " {\n";
    defineTables();
    for (const auto& each : family_.classes) {
        define(*each);
    }
    out_ << "\n} // namespace " << family_.name << "\n";
    return out_.str();
}

void Emitter::defineTables() {
    out_ << "namespace {\n\nenum : int {\n";
    int number = 0;
    for (const std::string& name : events_) {
        out_ << "    " << event(name) << " = " << ++number << ",\n";
    }
    out_ << "};\n\n";
    for (const auto& [key, index] : specs_) {
        out_ << "const auto spec_" << index << " = lmx60::" << key.first << "::spec(" << key.second << ");\n";
    }
    out_ << "\nconst lmx60::s_event_map family_elements[] = {\n";
    for (const std::string& name : elements_) {
        out_ << "    " << row(name) << ",\n";
    }
    out_ << "    {0, nullptr, 0, 0}};\n\n} // namespace\n\n";
    const std::string rows =
        family_.prefix.empty() ? ""
                               : "{" + std::to_string(family_.nsId()) + ", " + quoted(family_.prefix) + ", " + quoted(family_.uri) + "}, ";
    for (const char* map : {"ns_map_reader", "ns_map_writer_1"}) {
        out_ << "const lmx60::s_ns_map " << map << "[] = {" << rows << "{0, nullptr, nullptr}};\n";
    }
}

void Emitter::define(const Class& of) {
    const Words w = {{"C", of.name}};
    out_ << "\n// " << of.name << "\n\nconst lmx60::s_event_map " << of.name << "::attr_event_map[] = {\n";
    for (const Member& member : of.attributes) {
        out_ << "    " << row(member.xmlName) << ",\n";
    }
    out_ << "    {0, nullptr, 0, 0}};\nconst lmx60::s_event_map " << of.name << "::elem_event_map[] = {\n";
    for (const std::string& name : of.allElements()) {
        out_ << "    " << row(name) << ",\n";
    }
    out_ << "    {0, nullptr, 0, 0}};\nconst lmx60::s_event_map* const " << of.name << "::known_elements = family_elements;\n\n";
    out_ << fill("@C@::@C@() { init(); }\n@C@::@C@(const @C@& other) : m_() {\n    init();\n    m_ = other.m_;\n}\n"
                 "@C@& @C@::operator=(const @C@& other) = default;\n"
                 "@C@* @C@::do_clone() const { return new @C@(*this); }\n@C@::~@C@() = default;\n"
                 "bool @C@::operator==(const @C@& other) const { return m_ == other.m_; }\n"
                 "void @C@::swap(@C@& other) { std::swap(m_, other.m_); }\n"
                 "void @C@::reset() {\n    @C@ fresh;\n    swap(fresh);\n}\nvoid @C@::init() {\n",
                 w);
    for (const auto* members : {&of.attributes, &of.children}) {
        for (const Member& member : *members) {
            if (member.defaultText) {
                out_ << fill("    lmx60::init_member(@f@, @spec@);\n", words(of, member));
            }
        }
    }
    out_ << "}\n";
    if (of.isChoice) {
        defineChoice(of);
    }
    for (const auto* members : {&of.attributes, &of.children}) {
        for (const Member& member : *members) {
            defineMember(of, member);
        }
    }
    defineOccurs(of);
    defineMarshal(of);
    defineUnmarshal(of);
    if (of.isRoot()) {
        defineRoot(of);
    }
}

void Emitter::defineChoice(const Class& of) {
    out_ << "\nvoid " << of.name
         << "::choose_(int choice) {\n    if (m_.choice != choice) {\n        release_choice();\n        m_.choice = choice;\n    }\n}\n"
         << "void " << of.name << "::release_choice() {\n    m_.choice = Choice_None;\n";
    for (const Member& member : of.children) {
        out_ << fill(member.isValue()  ? (member.defaultText ? "    lmx60::init_member(@f@, @spec@);\n" : "    @f@.unset();\n")
                     : member.isList() ? "    @f@.clear();\n"
                                       : "    @f@.unset();\n",
                     words(of, member));
    }
    out_ << "}\n";
    for (const Member& member : of.children) {
        const bool isSingle = member.kind == Member::Child || member.kind == Member::Group;
        out_ << fill(std::string("void @C@::Select@X@() {\n    release_choice();\n    m_.choice = Choice_@X@;\n") +
                         (isSingle ? "    @f@.get();\n}\n" : "}\n"),
                     words(of, member));
    }
}

void Emitter::defineMember(const Class& of, const Member& member) {
    Words w = words(of, member);
    const bool isInChoice = of.isChoice && member.kind != Member::Attribute;
    const bool canBeUnset = isInChoice || !member.isMandatory;
    if (member.isList()) {
        out_ << fill("\nconst @T@& @C@::Get@X@(std::size_t index) const { return @f@.get(index); }\n"
                     "@T@& @C@::Get@X@(std::size_t index) { @choose@return @f@.get(index); }\n"
                     "@T@& @C@::Append@X@() { @choose@return @f@.append(); }\n"
                     "void @C@::Append@X@(@T@* child) { @choose@@f@.append(child); }\n"
                     "@T@& @C@::Insert@X@(std::size_t index) { @choose@return @f@.insert(index); }\n"
                     "void @C@::Insert@X@(std::size_t index, @T@* child) { @choose@@f@.insert(index, child); }\n"
                     "@T@* @C@::Assign@X@(std::size_t index, @T@* child) { @choose@return @f@.assign(index, child); }\n"
                     "void @C@::Assign@X@(std::size_t index, const @T@& child) { @choose@@f@.assign(index, child); }\n"
                     "@T@& @C@::Back@X@() { return @f@.back(); }\nconst @T@& @C@::Back@X@() const { return @f@.back(); }\n"
                     "void @C@::Delete@X@(std::size_t index) { @f@.remove(index); }\nvoid @C@::Clear@X@() { @f@.clear(); }\n",
                     w);
        return;
    }
    if (!member.isValue()) {
        if (isInChoice) { // giving up a child selects nothing, and so does a null given to a member that isn't selected
            w["choose"] = "if (child) { choose_(Choice_" + member.name + "); } ";
        }
        out_ << fill("\nconst @T@& @C@::Get@X@() const { return @f@.get(@xml@); }\n", w)
             << fill("@T@& @C@::Get@X@() { @choose@return @f@.get(); }\n", words(of, member))
             << fill("@T@* @C@::Assign@X@(@T@* child) { @choose@return @f@.assign(child); }\n", w)
             << fill("void @C@::Assign@X@(const @T@& child) { @choose@@f@.assign(child); }\n", words(of, member));
    }
    if (canBeUnset) {
        const std::string unset = member.defaultText ? "lmx60::init_member(@f@, @spec@);" : "@f@.unset();";
        out_ << fill("void @C@::Unset@X@() {\n", w)
             << (isInChoice ? fill("    if (m_.choice == Choice_@X@) {\n        release_choice();\n    }\n}\n", w)
                            : fill("    " + unset + "\n}\n", w));
    }
}

void Emitter::defineOccurs(const Class& of) {
    out_ << "\nbool " << of.name << "::IsOccursOk() const {\n";
    std::string conditions = "true";
    const auto condition = [&](const Member& member) { return "m_." + member.field() + (member.isList() ? ".size() > 0" : ".is_set()"); };
    for (const Member& member : of.attributes) {
        conditions += member.isMandatory ? " && " + condition(member) : "";
    }
    if (of.isChoice) {
        out_ << "    switch (m_.choice) {\n";
        for (const Member& member : of.children) {
            out_ << "    case Choice_" << member.name << ":\n        return " << (member.isMandatory ? condition(member) + " && " : "")
                 << conditions << ";\n";
        }
        out_ << "    default:\n        return " << (of.isChoiceOptional && !of.mustSelect ? conditions : "false") << ";\n    }\n}\n";
        return;
    }
    for (const Member& member : of.children) {
        conditions += member.isMandatory ? " && " + condition(member) : "";
    }
    out_ << "    return " << conditions << ";\n}\n";
}

std::string Emitter::marshalStep(const Member& member) const {
    const std::string name = quoted(family_.written(member.xmlName));
    const std::string field = "m_." + member.field();
    switch (member.kind) {
    case Member::Attribute:
        return ".attribute(" + name + ", " + field + ", " + spec(member) + ")";
    case Member::Simple:
        return ".simple(" + name + ", " + field + ", " + spec(member) + ")";
    case Member::List:
    case Member::GroupList:
        return ".repeating(" + (member.isGroup() ? quoted(member.name) : name) + ", " + field + ", " + boolean(member.isMandatory) + ")";
    default:
        return ".single(" + (member.isGroup() ? quoted(member.name) : name) + ", " + field + ", " + boolean(member.isMandatory) + ")";
    }
}

void Emitter::defineMarshal(const Class& of) {
    const Words w = {{"C", of.name},
                     {"namespaces", of.isRoot() ? "ns_map_writer_1" : "nullptr"},
                     {"writer", of.attributes.empty() ? "" : " writer"},
                     {"child_writer", of.children.empty() ? "" : " writer"}};
    if (of.isGroup) {
        out_ << fill(
            "lmx60::elmx_error @C@::marshal(lmx60::c_xml_writer& writer, const char*) const { return marshal_child_elements(writer); }\n",
            w);
    } else {
        out_ << fill("lmx60::elmx_error @C@::marshal(lmx60::c_xml_writer& writer, const char* name) const {\n"
                     "    return lmx60::marshal_element(*this, writer, name, @namespaces@);\n}\n",
                     w);
    }
    out_ << fill("lmx60::elmx_error @C@::marshal_attributes(lmx60::c_xml_writer&@writer@) const {\n", w);
    const auto chain = [&](const std::vector<Member>& members) {
        if (members.empty()) {
            out_ << "    return lmx60::error_none;\n}\n";
            return;
        }
        out_ << "    return lmx60::c_marshal_walk(writer)";
        for (const Member& member : members) {
            out_ << "\n        " << marshalStep(member);
        }
        out_ << "\n        .result();\n}\n";
    };
    chain(of.attributes);
    out_ << fill("lmx60::elmx_error @C@::marshal_child_elements(lmx60::c_xml_writer&@child_writer@) const {\n", w);
    if (!of.isChoice) {
        chain(of.children);
        return;
    }
    out_ << "    lmx60::c_marshal_walk walk(writer);\n    switch (m_.choice) {\n";
    for (const Member& member : of.children) {
        out_ << "    case Choice_" << member.name << ":\n        return walk" << marshalStep(member) << ".result();\n";
    }
    out_ << "    default:\n        return walk.nothing_selected().result();\n    }\n}\n";
}

std::string Emitter::readStep(const Member& member) const {
    const std::string field = "m_." + member.field();
    if (member.isGroup()) {
        const std::string first =
            quoted(family_.written(member.childClass->firstElements().empty() ? member.name : member.childClass->firstElements()[0]));
        return std::string(member.isList() ? ".groups(" : ".group(") + first + ", " + field + ", " + boolean(member.isMandatory) + ")";
    }
    const std::string head = event(member.xmlName) + ", " + quoted(family_.written(member.xmlName)) + ", " + field + ", ";
    switch (member.kind) {
    case Member::Simple:
        return ".simple(" + head + spec(member) + ")";
    case Member::List:
        return ".repeating(" + head + boolean(member.isMandatory) + ")";
    default:
        return ".single(" + head + boolean(member.isMandatory) + ")";
    }
}

void Emitter::defineUnmarshal(const Class& of) {
    const Words w = {{"C", of.name}, {"error", of.attributes.empty() ? "" : " error"}, {"children", boolean(!of.children.empty())}};
    if (of.isGroup) {
        out_ << fill("lmx60::elmx_error @C@::unmarshal(lmx60::c_xml_reader& reader, const std::string&) {\n"
                     "    const lmx60::c_known_elements_selector selector(reader, known_elements);\n"
                     "    lmx60::elmx_error error = lmx60::error_none;\n    unmarshal_body(reader, &error);\n    return error;\n}\n"
                     "bool @C@::IsMember(lmx60::c_xml_reader& reader) {\n    static const lmx60::s_event_map first_elements[] = {\n",
                     w);
        for (const std::string& name : of.firstElements()) {
            out_ << "        " << row(name) << ",\n";
        }
        out_ << "        {0, nullptr, 0, 0}};\n    return lmx60::is_member(reader, first_elements);\n}\n";
    } else {
        out_ << fill("lmx60::elmx_error @C@::unmarshal(lmx60::c_xml_reader& reader, const std::string& name) {\n"
                     "    return lmx60::unmarshal_element(*this, reader, name, @children@);\n}\n",
                     w);
    }
    out_ << fill("bool @C@::unmarshal_attributes(lmx60::c_xml_reader& reader, lmx60::elmx_error*@error@) {\n", w);
    if (of.attributes.empty()) {
        // The look-up finds nothing; the reader still learns of the attribute.
        out_ << "    reader.tokenise(attr_event_map, lmx60::name_of_attribute);\n    return false;\n}\n";
    } else {
        out_ << "    switch (reader.tokenise(attr_event_map, lmx60::name_of_attribute)) {\n";
        for (const Member& member : of.attributes) {
            out_ << "    case " << event(member.xmlName) << ":\n        return lmx60::read_attribute(reader, m_." << member.field() << ", "
                 << spec(member) << ", error);\n";
        }
        out_ << "    default:\n        return false;\n    }\n}\n";
    }
    std::string checks;
    for (const Member& member : of.attributes) {
        if (member.isMandatory) {
            checks += ".require(m_." + member.field() + ".is_set(), " + quoted(family_.written(member.xmlName)) + ")\n        ";
        }
    }
    out_ << "lmx60::elmx_error " << of.name << "::unmarshal_attributes_check(lmx60::c_xml_reader&" << (checks.empty() ? "" : " reader")
         << ") {\n"
         << (checks.empty() ? "    return lmx60::error_none;\n}\n"
                            : "    return lmx60::c_attribute_check(reader)\n        " + checks + ".result();\n}\n");
    if (of.children.empty()) {
        out_ << "bool " << of.name << "::unmarshal_body(lmx60::c_xml_reader&, lmx60::elmx_error*) { return true; }\n";
        return;
    }
    out_ << "bool " << of.name << "::unmarshal_body(lmx60::c_xml_reader& reader, lmx60::elmx_error* error) {\n"
         << "    lmx60::c_body_walk walk(reader, elem_event_map, error);\n";
    if (of.isChoice) {
        for (const Member& member : of.children) {
            out_ << "    if ("
                 << (member.isGroup() ? "walk.at_group<" + member.childClass->name + ">()" : "walk.at(" + event(member.xmlName) + ")")
                 << ") {\n        choose_(Choice_" << member.name << ");\n        walk" << readStep(member) << ";\n    } else ";
        }
        out_ << (of.isChoiceOptional ? "{\n        release_choice();\n    }\n" : "{\n        walk.no_choice();\n    }\n");
    } else {
        for (const Member& member : of.children) {
            out_ << "    walk" << readStep(member) << ";\n";
        }
    }
    out_ << (of.isGroup ? "    return walk.leave();\n}\n" : "    return walk.end();\n}\n");
}

void Emitter::defineRoot(const Class& of) {
    std::string expected;
    std::string roots;
    if (of.isChoiceRoot) {
        for (const Member& member : of.children) {
            expected += (expected.empty() ? "'" : " or '") + family_.written(member.xmlName) + "'";
        }
    } else {
        expected = "'" + family_.written(of.rootElement) + "'";
        roots = "    static const lmx60::s_event_map roots[] = {" + row(of.rootElement) + ", {0, nullptr, 0, 0}};\n";
    }
    if (!family_.uri.empty()) {
        expected += " of the namespace '" + family_.uri + "'";
    }
    const Words w = {{"C", of.name},
                     {"expected", quoted(expected)},
                     {"roots", roots},
                     {"map", of.isChoiceRoot ? "elem_event_map" : "roots"},
                     {"name", quoted(of.isChoiceRoot ? "" : family_.written(of.rootElement))}};
    out_ << fill(
        "lmx60::elmx_error @C@::unmarshal(lmx60::c_xml_reader& reader) {\n@roots@"
        "    return lmx60::unmarshal_document(*this, reader, ns_map_reader, @map@, @expected@);\n}\n"
        "lmx60::elmx_error @C@::Marshal(const char* file, lmx60::s_debug_error* debug) const { return lmx60::marshal(*this, @name@, file, "
        "debug); }\n"
        "lmx60::elmx_error @C@::Marshal(std::ostream& out, lmx60::s_debug_error* debug) const { return lmx60::marshal(*this, @name@, out, "
        "debug); }\n"
        "lmx60::elmx_error @C@::Marshal(std::string* text, lmx60::s_debug_error* debug) const { return lmx60::marshal(*this, @name@, text, "
        "debug); }\n"
        "lmx60::elmx_error @C@::Unmarshal(const char* file, lmx60::s_debug_error* debug) { return lmx60::unmarshal(*this, file, debug); }\n"
        "lmx60::elmx_error @C@::Unmarshal(const char* buffer, std::size_t length, lmx60::s_debug_error* debug) {\n"
        "    return lmx60::unmarshal(*this, buffer, length, debug);\n}\n"
        "lmx60::elmx_error @C@::Unmarshal(const lmx60::c_any_info& any, lmx60::s_debug_error* debug) {\n"
        "    return Unmarshal(any.get_value().data(), any.get_value().size(), debug);\n}\n"
        "void @C@::create_mandatory_children_() {\n    init();\n",
        w);
    for (const Member& member : of.children) {
        if (!of.isChoice && member.isMandatory && (member.kind == Member::Child || member.kind == Member::Group)) {
            out_ << "    m_." << member.field() << ".get();\n";
        }
    }
    out_ << "}\n";
    const auto constructor = [&](const char* parameters, const char* call) {
        Words all = w;
        all["parameters"] = parameters;
        all["call"] = call;
        out_ << fill("@C@::@C@(@parameters@) {\n    create_mandatory_children_();\n"
                     "    lmx60::read_in_constructor(error, [&] { return @call@; });\n}\n",
                     all);
    };
    constructor("lmx60::c_xml_reader& reader, lmx60::elmx_error* error", "unmarshal(reader)");
    constructor("const char* file, lmx60::elmx_error* error, lmx60::s_debug_error* debug", "Unmarshal(file, debug)");
    constructor("const char* buffer, std::size_t length, lmx60::elmx_error* error, lmx60::s_debug_error* debug",
                "Unmarshal(buffer, length, debug)");
    constructor("const std::string& document, lmx60::elmx_error* error, lmx60::s_debug_error* debug",
                "Unmarshal(document.data(), document.size(), debug)");
    constructor("const lmx60::c_any_info& any, lmx60::elmx_error* error, lmx60::s_debug_error* debug", "Unmarshal(any, debug)");
}

} // namespace

std::string emitHeader(const Family& family) {
    return Emitter(family).header();
}
std::string emitSource(const Family& family) {
    return Emitter(family).source();
}
