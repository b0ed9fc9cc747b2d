// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "Schema.h"

#include <libxml/parser.h>
#include <libxml/tree.h>

#include <algorithm>
#include <cctype>
#include <cstring>
#include <filesystem>
#include <set>

namespace {

constexpr const char* schemaUri = "http://www.w3.org/2001/XMLSchema";
constexpr const char* ownUri = "urn:tolvan:lmx";

constexpr ValueType valueTypes[] = {
    {"string", "string_type", "std::wstring", false},
    {"unsignedByte", "unsigned_byte_type", "unsigned char", true},
    {"short", "short_type", "short", true},
    {"unsignedShort", "unsigned_short_type", "unsigned short", true},
    {"unsignedInt", "unsigned_int_type", "unsigned int", true},
    {"long", "long_type", "long long", true},
    {"unsignedLong", "unsigned_long_type", "unsigned long long", true},
    {"integer", "integer_type", "lmx60::c_big_int", false},
    {"decimal", "decimal_type", "lmx60::c_decimal", false},
    {"boolean", "boolean_type", "bool", true},
};

std::string text(const xmlChar* chars) {
    return chars ? reinterpret_cast<const char*>(chars) : "";
}

bool isDigits(const std::string& digits) {
    return !digits.empty() && std::all_of(digits.begin(), digits.end(), [](unsigned char c) { return std::isdigit(c); });
}

std::string unsignedPart(const std::string& number) {
    return number.substr(!number.empty() && (number[0] == '-' || number[0] == '+'));
}

bool isInRange(const std::string& number, const std::string& lowest, const std::string& highest) {
    const auto magnitude = [](const std::string& of) {
        const std::string digits = unsignedPart(of);
        return digits.substr(std::min(digits.find_first_not_of('0'), digits.size()));
    };
    const std::string value = magnitude(number);
    const std::string bound = magnitude(number[0] == '-' ? lowest : highest);
    return value.empty() || (value.size() != bound.size() ? value.size() < bound.size() : value <= bound);
}

/// A default that the runtime would refuse in a document is refused here.
bool isValidDefault(const ValueType& type, const std::string& value) {
    static const std::map<std::string, std::pair<std::string, std::string>> bounds = {
        {"unsignedByte", {"0", "255"}},
        {"short", {"-32768", "32767"}},
        {"unsignedShort", {"0", "65535"}},
        {"unsignedInt", {"0", "4294967295"}},
        {"long", {"-9223372036854775808", "9223372036854775807"}},
        {"unsignedLong", {"0", "18446744073709551615"}},
    };
    const std::string name = type.schemaName;
    if (name == "string") {
        return true;
    }
    if (name == "boolean") {
        return value == "true" || value == "false" || value == "1" || value == "0";
    }
    std::string digits = unsignedPart(value);
    if (name == "decimal") {
        const std::size_t point = digits.find('.');
        return isDigits(point == std::string::npos ? digits : digits.erase(point, 1));
    }
    const auto range = bounds.find(name);
    return isDigits(digits) && (range == bounds.end() || isInRange(value, range->second.first, range->second.second));
}

class SchemaReader {
public:
    explicit SchemaReader(const std::string& file) : file_(file) {}
    ~SchemaReader() {
        if (doc_) {
            xmlFreeDoc(doc_);
        }
    }
    SchemaReader(const SchemaReader&) = delete;
    SchemaReader& operator=(const SchemaReader&) = delete;

    Family read();

private:
    struct Occurs {
        bool isMandatory = true;
        bool isList = false;
    };

    [[noreturn]] void fail(const xmlNode* node, const std::string& what) const {
        throw SchemaError(file_, node ? xmlGetLineNo(node) : 1, what);
    }
    [[noreturn]] void failUnknown(const xmlNode* node) const { fail(node, "'" + text(node->name) + "' is not known here"); }

    std::vector<xmlNode*> childrenOf(xmlNode* node) const;
    void allow(xmlNode* node, const std::set<std::string>& plain, const std::set<std::string>& own) const;
    std::optional<std::string> plain(xmlNode* node, const char* name) const { return value(xmlHasNsProp(node, BAD_CAST name, nullptr)); }
    std::optional<std::string> own(xmlNode* node, const char* name) const {
        return value(xmlHasNsProp(node, BAD_CAST name, BAD_CAST ownUri));
    }
    std::optional<std::string> value(xmlAttr* attribute) const;
    std::string required(xmlNode* node, const char* name) const;
    std::string identifier(xmlNode* node, const std::string& name) const;
    std::string capitalised(xmlNode* node, const std::string& name) const;
    std::string schemaName(const xmlNode* node) const { return text(node->name); }
    bool isForeign(const xmlNode* node) const { return !node->ns || text(node->ns->href) != schemaUri; }

    void readHead(xmlNode* root);
    /// The local part of a reference into this schema's own namespace.
    std::string ownReference(xmlNode* node, const std::string& reference) const;
    const ValueType* valueType(xmlNode* node, const std::string& reference) const;
    Occurs occurs(xmlNode* node) const;
    bool flag(xmlNode* node, const char* name) const;
    std::optional<std::string> defaultOf(xmlNode* node, const ValueType& type) const;

    Class& addClass(xmlNode* node, const std::string& name);
    Class& globalElement(xmlNode* node, const std::string& name);
    Class& namedType(xmlNode* node, const std::string& name);
    Class& namedGroup(xmlNode* node, const std::string& name);
    void fillFromType(Class& target, xmlNode* type);
    void fillFromCompositor(Class& target, xmlNode* compositor);
    Member attribute(xmlNode* node) const;
    Member particle(xmlNode* node);
    Member element(xmlNode* node);
    void add(Class& target, std::vector<Member>& list, Member member) const;
    void checkGroups(const Class& of, std::set<const Class*>& above) const;

    std::string file_;
    xmlDoc* doc_ = nullptr;
    Family family_;
    std::map<std::string, xmlNode*> elements_, types_, groups_;
    std::map<xmlNode*, Class*> classes_;
};

std::vector<xmlNode*> SchemaReader::childrenOf(xmlNode* node) const {
    std::vector<xmlNode*> result;
    for (xmlNode* child = node->children; child; child = child->next) {
        if (child->type == XML_ELEMENT_NODE) {
            if (isForeign(child)) {
                failUnknown(child);
            }
            if (schemaName(child) != "annotation") {
                result.push_back(child);
            }
        } else if (child->type != XML_COMMENT_NODE && !(child->type == XML_TEXT_NODE && xmlIsBlankNode(child))) {
            fail(child, "only elements may stand here");
        }
    }
    return result;
}

void SchemaReader::allow(xmlNode* node, const std::set<std::string>& plainNames, const std::set<std::string>& ownNames) const {
    for (const xmlAttr* attribute = node->properties; attribute; attribute = attribute->next) {
        const std::string name = text(attribute->name);
        const bool isOwn = attribute->ns && text(attribute->ns->href) == ownUri;
        if (attribute->ns && !isOwn) {
            fail(node, "attribute '" + name + "' of a foreign namespace is not known");
        }
        if (!(isOwn ? ownNames : plainNames).count(name)) {
            fail(node, "attribute '" + std::string(isOwn ? "lmx:" : "") + name + "' of '" + schemaName(node) + "' is not known here");
        }
    }
}

std::optional<std::string> SchemaReader::value(xmlAttr* attribute) const {
    if (!attribute) {
        return std::nullopt;
    }
    xmlChar* const raw = xmlNodeListGetString(doc_, attribute->children, 1);
    std::string result = text(raw);
    xmlFree(raw);
    return result;
}

std::string SchemaReader::required(xmlNode* node, const char* name) const {
    const auto found = plain(node, name);
    if (!found) {
        fail(node, "'" + schemaName(node) + "' needs the attribute '" + name + "'");
    }
    return *found;
}

std::string SchemaReader::identifier(xmlNode* node, const std::string& name) const {
    const auto isLetter = [](char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_'; };
    const bool isOk = !name.empty() && isLetter(name[0]) &&
                      std::all_of(name.begin(), name.end(), [&](char c) { return isLetter(c) || (c >= '0' && c <= '9'); });
    if (!isOk) {
        fail(node, "the name '" + name + "' can't become a C++ name");
    }
    return name;
}

std::string SchemaReader::capitalised(xmlNode* node, const std::string& name) const {
    std::string result = identifier(node, name);
    result[0] = static_cast<char>(std::toupper(static_cast<unsigned char>(result[0])));
    return result;
}

std::string SchemaReader::ownReference(xmlNode* node, const std::string& reference) const {
    const std::size_t colon = reference.find(':');
    const std::string prefix = colon == std::string::npos ? "" : reference.substr(0, colon);
    const xmlNs* ns = xmlSearchNs(doc_, node, prefix.empty() ? nullptr : BAD_CAST prefix.c_str());
    if ((ns ? text(ns->href) : "") != family_.uri) {
        fail(node, "'" + reference + "' is not of this schema");
    }
    return colon == std::string::npos ? reference : reference.substr(colon + 1);
}

const ValueType* SchemaReader::valueType(xmlNode* node, const std::string& reference) const {
    const std::size_t colon = reference.find(':');
    const std::string prefix = colon == std::string::npos ? "" : reference.substr(0, colon);
    const xmlNs* ns = xmlSearchNs(doc_, node, prefix.empty() ? nullptr : BAD_CAST prefix.c_str());
    if (!ns || text(ns->href) != schemaUri) {
        return nullptr;
    }
    const std::string name = colon == std::string::npos ? reference : reference.substr(colon + 1);
    for (const ValueType& type : valueTypes) {
        if (name == type.schemaName) {
            return &type;
        }
    }
    fail(node, "the type '" + reference + "' is not known");
}

SchemaReader::Occurs SchemaReader::occurs(xmlNode* node) const {
    const std::string least = plain(node, "minOccurs").value_or("1");
    const std::string most = plain(node, "maxOccurs").value_or("1");
    if (least != "0" && least != "1") {
        fail(node, "minOccurs may be 0 or 1, not '" + least + "'");
    }
    if (most != "1" && most != "unbounded") {
        fail(node, "maxOccurs may be 1 or unbounded, not '" + most + "'");
    }
    return {least == "1", most == "unbounded"};
}

bool SchemaReader::flag(xmlNode* node, const char* name) const {
    const std::string given = own(node, name).value_or("false");
    if (given != "true" && given != "false") {
        fail(node, "lmx:" + std::string(name) + " may be true or false, not '" + given + "'");
    }
    return given == "true";
}

std::optional<std::string> SchemaReader::defaultOf(xmlNode* node, const ValueType& type) const {
    const auto declared = plain(node, "default");
    const auto extra = own(node, "default");
    if (declared && extra) {
        fail(node, "'default' and 'lmx:default' exclude each other");
    }
    const auto result = declared ? declared : extra;
    if (result && !isValidDefault(type, *result)) {
        fail(node, "the default '" + *result + "' is no " + type.schemaName);
    }
    return result;
}

Class& SchemaReader::addClass(xmlNode* node, const std::string& name) {
    for (const auto& other : family_.classes) {
        if (other->name == name) {
            fail(node, "the class name '" + name + "' is taken (line " + std::to_string(other->line) + "); give another with lmx:class");
        }
    }
    Class& added = *family_.classes.emplace_back(std::make_unique<Class>());
    added.name = identifier(node, name);
    added.line = xmlGetLineNo(node);
    return added;
}

Class& SchemaReader::globalElement(xmlNode* node, const std::string& name) {
    const auto found = elements_.find(name);
    if (found == elements_.end()) {
        fail(node, "there is no global element '" + name + "'");
    }
    xmlNode* const definition = found->second;
    if (const auto known = classes_.find(definition); known != classes_.end()) {
        return *known->second;
    }
    allow(definition, {"name", "type"}, {"class"});
    const auto parts = childrenOf(definition);
    const auto type = plain(definition, "type");
    if (type && parts.empty() && !own(definition, "class")) {
        if (valueType(definition, *type)) {
            fail(definition, "a global element must have a complex type");
        }
        Class& target = namedType(definition, ownReference(definition, *type));
        classes_[definition] = &target;
        return target;
    }
    if (type || parts.size() != 1 || schemaName(parts[0]) != "complexType") {
        fail(definition, "a global element must have one complex type");
    }
    Class& target = addClass(definition, own(definition, "class").value_or(capitalised(definition, name)));
    classes_[definition] = &target;
    allow(parts[0], {}, {});
    fillFromType(target, parts[0]);
    return target;
}

Class& SchemaReader::namedType(xmlNode* node, const std::string& name) {
    const auto found = types_.find(name);
    if (found == types_.end()) {
        fail(node, "there is no complex type '" + name + "'");
    }
    xmlNode* const definition = found->second;
    if (const auto known = classes_.find(definition); known != classes_.end()) {
        return *known->second;
    }
    allow(definition, {"name"}, {"class"});
    Class& target = addClass(definition, own(definition, "class").value_or(capitalised(definition, name)));
    classes_[definition] = &target;
    fillFromType(target, definition);
    return target;
}

Class& SchemaReader::namedGroup(xmlNode* node, const std::string& name) {
    const auto found = groups_.find(name);
    if (found == groups_.end()) {
        fail(node, "there is no group '" + name + "'");
    }
    xmlNode* const definition = found->second;
    if (const auto known = classes_.find(definition); known != classes_.end()) {
        return *known->second;
    }
    allow(definition, {"name"}, {"class"});
    const auto parts = childrenOf(definition);
    if (parts.size() != 1 || (schemaName(parts[0]) != "sequence" && schemaName(parts[0]) != "choice")) {
        fail(definition, "a group must have one sequence or one choice");
    }
    Class& target = addClass(definition, own(definition, "class").value_or(capitalised(definition, name)));
    target.isGroup = true;
    classes_[definition] = &target;
    allow(parts[0], {}, {});
    fillFromCompositor(target, parts[0]);
    return target;
}

void SchemaReader::fillFromType(Class& target, xmlNode* type) {
    for (xmlNode* part : childrenOf(type)) {
        const std::string kind = schemaName(part);
        if (kind == "attribute") {
            add(target, target.attributes, attribute(part));
        } else if (!target.children.empty() || target.isChoice) {
            failUnknown(part);
        } else if (kind == "sequence") {
            allow(part, {}, {});
            fillFromCompositor(target, part);
        } else if (kind == "choice") {
            allow(part, {"minOccurs", "maxOccurs"}, {"mustSelect"});
            const Occurs times = occurs(part);
            if (times.isList) {
                fail(part, "the content of an element can't be a repeating choice; make it a group");
            }
            target.isChoiceOptional = !times.isMandatory;
            target.mustSelect = flag(part, "mustSelect");
            fillFromCompositor(target, part);
        } else if (kind == "group") {
            add(target, target.children, particle(part));
        } else {
            failUnknown(part);
        }
    }
}

void SchemaReader::fillFromCompositor(Class& target, xmlNode* compositor) {
    target.isChoice = schemaName(compositor) == "choice";
    for (xmlNode* part : childrenOf(compositor)) {
        add(target, target.children, particle(part));
    }
    if (target.isChoice && target.children.empty()) {
        fail(compositor, "a choice needs something to choose from");
    }
    for (const Member& member : target.children) {
        target.isChoiceOptional = target.isChoiceOptional || (target.isChoice && !member.isMandatory);
        if (target.isChoice && (member.name == "None" || member.kind == Member::GroupList)) {
            fail(compositor, "'" + member.name + "' can't be a member of a choice");
        }
    }
}

Member SchemaReader::attribute(xmlNode* node) const {
    allow(node, {"name", "type", "use", "default"}, {"default", "member"});
    if (!childrenOf(node).empty()) {
        failUnknown(childrenOf(node)[0]);
    }
    Member member;
    member.kind = Member::Attribute;
    member.line = xmlGetLineNo(node);
    member.xmlName = required(node, "name");
    member.name = own(node, "member").value_or(capitalised(node, member.xmlName));
    identifier(node, member.name);
    const std::string type = required(node, "type");
    member.type = valueType(node, type);
    if (!member.type) {
        fail(node, "the type '" + type + "' is not known");
    }
    const std::string use = plain(node, "use").value_or("optional");
    if (use != "optional" && use != "required") {
        fail(node, "use may be optional or required, not '" + use + "'");
    }
    member.isMandatory = use == "required";
    if (member.isMandatory && plain(node, "default")) {
        fail(node, "a required attribute can't have a default; lmx:default says what a new object holds");
    }
    member.defaultText = defaultOf(node, *member.type);
    return member;
}

Member SchemaReader::particle(xmlNode* node) {
    const std::string kind = schemaName(node);
    if (kind == "element") {
        return element(node);
    }
    Member member;
    member.line = xmlGetLineNo(node);
    if (kind == "group") {
        allow(node, {"ref", "minOccurs", "maxOccurs"}, {"member"});
        if (!childrenOf(node).empty()) {
            failUnknown(childrenOf(node)[0]);
        }
        const std::string name = ownReference(node, required(node, "ref"));
        member.childClass = &namedGroup(node, name);
        member.name = own(node, "member").value_or(capitalised(node, name));
    } else if (kind == "sequence" || kind == "choice") {
        allow(node, {"minOccurs", "maxOccurs"}, {"class", "member"});
        const auto name = own(node, "member");
        if (!name) {
            fail(node, "a " + kind + " inside another needs lmx:member, the name of its member");
        }
        member.name = *name;
        member.childClass = &addClass(node, own(node, "class").value_or(*name));
        member.childClass->isGroup = true;
        fillFromCompositor(*member.childClass, node);
    } else {
        failUnknown(node);
    }
    const Occurs times = occurs(node);
    member.kind = times.isList ? Member::GroupList : Member::Group;
    member.isMandatory = times.isMandatory;
    identifier(node, member.name);
    return member;
}

Member SchemaReader::element(xmlNode* node) {
    allow(node, {"name", "ref", "type", "minOccurs", "maxOccurs", "default"}, {"class", "member", "default"});
    const auto parts = childrenOf(node);
    const Occurs times = occurs(node);
    Member member;
    member.line = xmlGetLineNo(node);
    member.isMandatory = times.isMandatory;
    if (const auto ref = plain(node, "ref")) {
        if (plain(node, "name") || plain(node, "type") || plain(node, "default") || own(node, "default") || own(node, "class") ||
            !parts.empty()) {
            fail(node, "an element with 'ref' can have no name, type, default or content of its own");
        }
        member.xmlName = ownReference(node, *ref);
        member.childClass = &globalElement(node, member.xmlName);
    } else {
        member.xmlName = required(node, "name");
        const auto type = plain(node, "type");
        member.type = type ? valueType(node, *type) : nullptr;
        if (type && (!parts.empty() || own(node, "class"))) {
            fail(node, "an element with 'type' can have no content or class of its own");
        }
        if (member.type) {
            member.defaultText = defaultOf(node, *member.type);
        } else if (plain(node, "default") || own(node, "default")) {
            fail(node, "only an element with a simple type can have a default");
        } else if (type) {
            member.childClass = &namedType(node, ownReference(node, *type));
        } else if (parts.size() == 1 && schemaName(parts[0]) == "complexType") {
            allow(parts[0], {}, {});
            member.childClass = &addClass(node, own(node, "class").value_or(capitalised(node, member.xmlName)));
            fillFromType(*member.childClass, parts[0]);
        } else if (!parts.empty()) {
            failUnknown(parts[0]);
        } else {
            fail(node, "the element '" + member.xmlName + "' has no type");
        }
    }
    if (member.type && times.isList) {
        fail(node, "an element with a simple type can't repeat");
    }
    member.kind = member.type ? Member::Simple : times.isList ? Member::List : Member::Child;
    member.name = own(node, "member").value_or(capitalised(node, member.xmlName));
    identifier(node, member.name);
    return member;
}

void SchemaReader::add(Class& target, std::vector<Member>& list, Member member) const {
    const auto refuse = [&](const std::string& what) { throw SchemaError(file_, member.line, what + " in class '" + target.name + "'"); };
    for (const Member& other : list) {
        if (!member.xmlName.empty() && member.xmlName == other.xmlName) {
            refuse("'" + member.xmlName + "' stands twice");
        }
    }
    for (const auto* members : {&target.attributes, &target.children}) {
        for (const Member& other : *members) {
            // the operations of a value and of a list have different signatures
            const bool areApart = (other.isValue() && member.isList()) || (other.isList() && member.isValue());
            if (other.name == member.name && !areApart) {
                refuse("the member name '" + member.name + "' is taken; give another with lmx:member");
            }
        }
    }
    list.push_back(std::move(member));
}

void SchemaReader::readHead(xmlNode* root) {
    allow(root, {"targetNamespace", "elementFormDefault", "attributeFormDefault", "version"}, {"choiceRoot"});
    family_.uri = plain(root, "targetNamespace").value_or("");
    if (family_.uri.empty()) {
        return;
    }
    for (const char* name : {"elementFormDefault", "attributeFormDefault"}) {
        if (plain(root, name).value_or("unqualified") != "qualified") {
            fail(root, "with a target namespace '" + std::string(name) + "' must be qualified");
        }
    }
    for (const xmlNs* ns = root->nsDef; ns; ns = ns->next) {
        if (text(ns->href) == family_.uri && ns->prefix && family_.prefix.empty()) {
            family_.prefix = text(ns->prefix);
        }
    }
    if (family_.prefix.empty()) {
        fail(root, "the target namespace has no prefix");
    }
}

void SchemaReader::checkGroups(const Class& of, std::set<const Class*>& above) const {
    if (!above.insert(&of).second) {
        throw SchemaError(file_, of.line, "the group '" + of.name + "' holds itself");
    }
    for (const Member& member : of.children) {
        if (member.isGroup()) {
            checkGroups(*member.childClass, above);
        }
    }
    above.erase(&of);
}

Family SchemaReader::read() {
    doc_ = xmlReadFile(file_.c_str(), nullptr, XML_PARSE_NONET);
    xmlNode* const root = doc_ ? xmlDocGetRootElement(doc_) : nullptr;
    if (!root) {
        throw SchemaError(file_, 1, "no schema can be read here");
    }
    if (isForeign(root) || schemaName(root) != "schema") {
        failUnknown(root);
    }
    family_.name = identifier(root, std::filesystem::path(file_).stem().string());
    family_.schemaFile = std::filesystem::path(file_).filename().string();
    readHead(root);
    const auto parts = childrenOf(root);
    for (xmlNode* part : parts) {
        const std::string kind = schemaName(part);
        auto* const names = kind == "element" ? &elements_ : kind == "complexType" ? &types_ : kind == "group" ? &groups_ : nullptr;
        if (!names) {
            failUnknown(part);
        }
        if (!names->emplace(required(part, "name"), part).second) {
            fail(part, "the " + kind + " '" + required(part, "name") + "' is declared twice");
        }
    }
    const auto choiceRoot = own(root, "choiceRoot");
    Class all;
    for (xmlNode* part : parts) {
        if (schemaName(part) == "element") {
            const std::string name = required(part, "name");
            Class& target = globalElement(part, name);
            if (!target.rootElement.empty()) {
                fail(part, "the class '" + target.name + "' is already that of the global element '" + target.rootElement + "'");
            }
            target.rootElement = name;
            Member member;
            member.kind = Member::Child;
            member.xmlName = name;
            member.name = capitalised(part, name);
            member.childClass = &target;
            member.isMandatory = true;
            member.line = xmlGetLineNo(part);
            all.children.push_back(member);
        } else if (schemaName(part) == "complexType") {
            namedType(part, required(part, "name"));
        } else {
            namedGroup(part, required(part, "name"));
        }
    }
    if (choiceRoot) {
        Class& target = addClass(root, *choiceRoot);
        target.isGroup = target.isChoice = target.isChoiceRoot = true;
        for (Member& member : all.children) {
            add(target, target.children, std::move(member));
        }
    }
    for (const auto& each : family_.classes) {
        std::set<const Class*> above;
        checkGroups(*each, above);
    }
    for (const auto& each : family_.classes) {
        for (Member& member : each->children) {
            // a group that may be empty is never missing
            member.isMandatory = member.isMandatory && !(member.isGroup() && !each->isChoice && member.childClass->isNullable());
        }
    }
    return std::move(family_);
}

} // namespace

bool Class::isNullable() const {
    if (isChoice) {
        return isChoiceOptional;
    }
    return std::none_of(children.begin(), children.end(),
                        [](const Member& member) { return member.isMandatory && !(member.isGroup() && member.childClass->isNullable()); });
}

std::vector<std::string> Class::firstElements() const {
    std::vector<std::string> names;
    for (const Member& member : children) {
        if (member.isGroup()) {
            const auto inner = member.childClass->firstElements();
            names.insert(names.end(), inner.begin(), inner.end());
        } else {
            names.push_back(member.xmlName);
        }
        const bool canBeLeftOut = !member.isMandatory || (member.isGroup() && member.childClass->isNullable());
        if (!isChoice && !canBeLeftOut) {
            break;
        }
    }
    return names;
}

std::vector<std::string> Class::allElements() const {
    std::vector<std::string> names;
    const auto addOnce = [&](const std::string& element) {
        if (std::find(names.begin(), names.end(), element) == names.end()) {
            names.push_back(element);
        }
    };
    for (const Member& member : children) {
        if (member.isGroup()) {
            for (const std::string& element : member.childClass->allElements()) {
                addOnce(element);
            }
        } else {
            addOnce(member.xmlName);
        }
    }
    return names;
}

Family readSchema(const std::string& file) {
    return SchemaReader(file).read();
}
