// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "HZEPExport.h"

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

/// Changes metadata text in place: values are replaced, put in and taken out at paths, and every other byte stays: order, indent, line
/// ends, numbers, escapes, comments, a byte order mark and keys that no reader knows. What is put in is laid out as its neighbours are.
///
/// A path names a value as "systemClocks[2].frequency" does: names joined by ".", places in lists in brackets and counted from 0; a name
/// with such characters stands as ["a.b"]. Of members of one name the first counts. In XML a path begins below the document element, an
/// element is an object and its attributes are texts in it; elements of one name are counted, as in "DSA.Files.File[1].Type", and the
/// first needs no number; prefixes are left out. All paths speak of the text as it was given, whatever was changed before.
///
/// Operations raise HostDataException, whose fault has the path or the line, for a text that the readers would refuse, a path that leads
/// nowhere and a value that the text can't hold.
class HZEP_EXPORT HZEPTextEdit {
public:
    enum Form { Json, Xml };

    /// Most values of a text, and its largest size in bytes: 256 MiB. XML has the limits of its parser besides.
    static constexpr std::size_t kMaxValues = 4'000'000;
    static constexpr std::size_t kMaxSize = std::size_t{256} << 20;

    /// What a value is. Plain is a number, true, false or null; None is no value.
    enum Kind { Text, Plain, Object, List, None };

    /// What is to be put in. XML has texts, as attributes, and objects, as elements.
    struct Value {
        using Kind = HZEPTextEdit::Kind;
        using enum Kind;

        Value(std::string ofText) : text(std::move(ofText)) {}
        Value(const char* ofText) : text(ofText) {}
        Value(Kind ofKind, std::vector<Value> ofMembers) : kind(ofKind), members(std::move(ofMembers)) {}

        /// As it is to be written.
        static Value plain(std::string text);
        /// The same value as a member of an object.
        Value named(std::string as) const;

        Kind kind = Text;
        std::string name;           // of a member of an object
        std::string text;           // UTF-8
        std::vector<Value> members; // of an object, or the items of a list
    };

    HZEPTextEdit(std::string text, Form form);
    ~HZEPTextEdit();
    HZEPTextEdit(const HZEPTextEdit&) = delete;
    HZEPTextEdit& operator=(const HZEPTextEdit&) = delete;

    Kind getKind(std::string_view path) const;
    bool contains(std::string_view path) const { return getKind(path) != None; }
    /// Items of a list or members of an object, in XML elements of the path's last name; 0 when there is none.
    std::size_t getCount(std::string_view path) const;
    /// The value of a text, or a plain one as it is written; "" when there is none.
    std::string getText(std::string_view path) const;

    void replace(std::string_view path, const Value& value);

    /// Puts a value before the item of a list, or behind the last when the path names the place behind it; or a member into an object
    /// that has none of that name. A member goes behind those that `order` has before it, else to the end.
    void insert(std::string_view path, const Value& value, const std::vector<std::string>& order = {});

    void remove(std::string_view path);

    /// The changed text. It was read again, and what it holds is what the text before held, and the changes.
    std::string apply() const;

private:
    struct State;
    std::unique_ptr<State> state_;
};
