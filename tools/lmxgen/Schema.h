// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include <map>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

/// A schema holds something that this compiler doesn't know; what() is "FILE:LINE: text".
class SchemaError : public std::runtime_error {
public:
    SchemaError(const std::string& file, long line, const std::string& text)
        : std::runtime_error(file + ":" + std::to_string(line) + ": " + text) {}
};

/// How one simple schema type appears in the runtime.
struct ValueType {
    const char* schemaName;
    const char* runtimeType;
    const char* cppType; ///< in GetX and SetX
    bool isPod;

    /// Answered wide, and held as UTF-8.
    bool isText() const { return !isPod && std::string_view(cppType) == "std::wstring"; }
    const char* keptType() const { return isText() ? "lmx60::c_text" : cppType; }
};

struct Class;

/// Attribute, child element or model group of a class.
struct Member {
    enum Kind { Attribute, Simple, Child, List, Group, GroupList };

    Kind kind = Attribute;
    std::string xmlName; ///< without prefix; empty for a group
    std::string name;    ///< as in GetName
    const ValueType* type = nullptr;
    std::optional<std::string> defaultText;
    Class* childClass = nullptr;
    bool isMandatory = false;
    long line = 0;

    bool isValue() const { return kind == Attribute || kind == Simple; }
    bool isGroup() const { return kind == Group || kind == GroupList; }
    bool isList() const { return kind == List || kind == GroupList; }
    std::string field() const { return (kind == Attribute ? "attr_" : "elem_") + name; }
};

struct Class {
    std::string name;
    bool isGroup = false;
    bool isChoice = false;
    bool isChoiceOptional = false; ///< reading accepts that nothing is selected
    bool mustSelect = false;       ///< and yet an object with nothing selected is incomplete
    bool isChoiceRoot = false;
    std::string rootElement; ///< empty when the class is no document element
    std::vector<Member> attributes;
    std::vector<Member> children;
    long line = 0;

    bool isRoot() const { return isChoiceRoot || !rootElement.empty(); }
    /// True when a document may hold nothing of this class where it stands.
    bool isNullable() const;
    /// Names of the elements that an object can start with (groups looked into).
    std::vector<std::string> firstElements() const;
    /// Names of all child elements (groups looked into).
    std::vector<std::string> allElements() const;
};

/// One schema file, understood.
struct Family {
    std::string name; ///< of the file, of the C++ namespace
    std::string schemaFile;
    std::string prefix; ///< empty when there is no namespace
    std::string uri;
    std::vector<std::unique_ptr<Class>> classes;

    std::string written(const std::string& xmlName) const { return prefix.empty() ? xmlName : prefix + ":" + xmlName; }
    int nsId() const { return prefix.empty() ? 1 : 1000; }
};

/// Reads a schema file. Throws SchemaError.
Family readSchema(const std::string& file);
