// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "HZEPJSONUtils.h"

#include <boost/optional.hpp>
#include <boost/property_tree/ptree.hpp>

#include <cstddef>
#include <functional>
#include <limits>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

/// Tables of the keys that an archive's JSON metadata may hold: one table per object, each key once, in the order of reading. A row
/// tells the reader which setter takes the value; a checker walks the same rows through KeyInfo.
namespace dsa_json {

using Tree = boost::property_tree::ptree;

/// The form of a key's value in a document. Scalars are text everywhere, so Number, Hex and Flag tell what the text must say.
enum class Shape { Text, Number, Hex, Flag, Object, List };

/// Derived: written out of other keys, so that nothing is lost when it isn't read.
enum class Use { Read, Written, Derived };

struct KeyInfo {
    const char* name;
    Shape shape;
    /// The keys of the object, or of each object in the list; null for scalars, for lists of scalars and for objects of free form.
    std::vector<const KeyInfo*> (*members)() = nullptr;
    /// A list whose items are read one after the other, with nothing done for the list as a whole.
    bool itemByItem = false;
    /// What the model's field can hold of a number.
    long min = std::numeric_limits<long>::min();
    long max = std::numeric_limits<long>::max();
    /// Size of the model's field for a hexadecimal text.
    std::size_t bytes = 0;
    Use use = Use::Read;
};

/// A row of the table for one class of the model. `read` is null for a key that is written only.
template <class Model>
struct Key : KeyInfo {
    using Reader = void (*)(Model& model, Tree& object, const char* name);
    Reader read = nullptr;
};

template <const auto& Table>
std::vector<const KeyInfo*> membersOf() {
    std::vector<const KeyInfo*> members;
    for (const auto& key : Table)
        members.push_back(&key);
    return members;
}

/// Reads the keys of an object in the order of the table.
template <class Model, class Table>
void fill(Model& model, Tree& object, const Table& table) {
    for (const Key<Model>& key : table) {
        if (key.read)
            key.read(model, object, key.name);
    }
}

/// Hands every child of a list over and gives its memory back at once, so that tree and model never stand in full side by side.
template <class Take>
void drain(Tree& list, Take take) {
    while (!list.empty()) {
        take(list.front());
        list.pop_front();
    }
}

template <class Setter>
struct Argument {
    using Type = long;
};
template <class Class, class Type_>
struct Argument<void (Class::*)(Type_)> {
    using Type = std::remove_cvref_t<Type_>;
};

/// Makes the rows of the table for one class. Setters are member functions, or functions that take the model first.
template <class Model>
struct Keys {
    using Row = Key<Model>;

    /// An absent key reads as "".
    template <auto Set>
    static constexpr Row text(const char* name) {
        return {{name, Shape::Text},
                [](Model& model, Tree& object, const char* key) { put<Set>(model, HZEPJSONUtils::getValue(object, key)); }};
    }

    template <auto Set>
    static constexpr Row optionalText(const char* name) {
        return {{name, Shape::Text}, [](Model& model, Tree& object, const char* key) {
                    if (HZEPJSONUtils::findKey(object, key))
                        put<Set>(model, HZEPJSONUtils::getValue(object, key));
                }};
    }

    /// Base 10, cut to the width of the setter's argument; an absent key reads as 0.
    template <auto Set>
    static constexpr Row number(const char* name) {
        return {numberInfo<Set>(name), [](Model& model, Tree& object, const char* key) { putNumber<Set>(model, object, key); }};
    }

    template <auto Set>
    static constexpr Row optionalNumber(const char* name) {
        return {numberInfo<Set>(name), [](Model& model, Tree& object, const char* key) {
                    if (HZEPJSONUtils::findKey(object, key))
                        putNumber<Set>(model, object, key);
                }};
    }

    /// Only a text that is not empty is converted.
    template <auto Set>
    static constexpr Row numberUnlessEmpty(const char* name) {
        return {numberInfo<Set>(name), [](Model& model, Tree& object, const char* key) {
                    if (!HZEPJSONUtils::getValue(object, key).empty())
                        putNumber<Set>(model, object, key);
                }};
    }

    /// Text of base 16 for a field of so many bytes.
    template <auto Set>
    static constexpr Row hex(const char* name, std::size_t bytes) {
        Row row = text<Set>(name);
        row.shape = Shape::Hex;
        row.bytes = bytes;
        return row;
    }

    template <auto Set, bool Default = false>
    static constexpr Row flag(const char* name) {
        return {{name, Shape::Flag}, [](Model& model, Tree& object, const char* key) {
                    std::invoke(Set, model,
                                Default && !HZEPJSONUtils::findKey(object, key) ? true : HZEPJSONUtils::getBoolValue(object, key));
                }};
    }

    template <auto Set>
    static constexpr Row optionalFlag(const char* name) {
        return {{name, Shape::Flag}, [](Model& model, Tree& object, const char* key) {
                    if (HZEPJSONUtils::findKey(object, key))
                        std::invoke(Set, model, HZEPJSONUtils::getBoolValue(object, key));
                }};
    }

    /// A list of texts, each handed to the setter.
    template <auto Add>
    static constexpr Row texts(const char* name) {
        return {{name, Shape::List}, withChild<[](Model& model, Tree& list) {
                    drain(list, [&model](Tree::value_type& item) { std::invoke(Add, model, item.second.data()); });
                }>};
    }

    /// An object that the model gives out for filling.
    template <auto Part, const auto& Table>
    static constexpr Row object(const char* name) {
        return {{name, Shape::Object, &membersOf<Table>},
                withChild<[](Model& model, Tree& child) { fill(std::invoke(Part, model), child, Table); }>};
    }

    /// A list of objects, for each of which the model gives a new element for filling.
    template <auto Add, const auto& Table>
    static constexpr Row list(const char* name) {
        return {{name, Shape::List, &membersOf<Table>, true}, withChild<[](Model& model, Tree& list) {
                    drain(list, [&model](Tree::value_type& item) { fill(*std::invoke(Add, model), item.second, Table); });
                }>};
    }

    /// A list of objects, each read into a `Record` of its own that is then handed to the model.
    template <class Record, const auto& Table, auto Apply>
    static constexpr Row records(const char* name) {
        return {{name, Shape::List, &membersOf<Table>, true}, withChild<[](Model& model, Tree& list) {
                    drain(list, [&model](Tree::value_type& item) {
                        Record record;
                        fill(record, item.second, Table);
                        std::invoke(Apply, model, record);
                    });
                }>};
    }

    /// A child that a function of its own reads, when the object has it.
    template <auto Read>
    static constexpr Row child(const char* name, Shape shape) {
        return {{name, shape}, withChild<Read>};
    }
    template <auto Read, const auto& Table>
    static constexpr Row child(const char* name, Shape shape) {
        return {{name, shape, &membersOf<Table>}, withChild<Read>};
    }

    static constexpr Row writtenOnly(const char* name, Shape shape = Shape::Text) { return unread({name, shape}, Use::Written); }
    template <const auto& Table>
    static constexpr Row writtenOnly(const char* name, Shape shape) {
        return unread({name, shape, &membersOf<Table>}, Use::Written);
    }
    static constexpr Row derived(const char* name, Shape shape = Shape::Text) { return unread({name, shape}, Use::Derived); }
    template <const auto& Table>
    static constexpr Row derived(const char* name, Shape shape) {
        return unread({name, shape, &membersOf<Table>}, Use::Derived);
    }

private:
    static constexpr Row unread(KeyInfo info, Use use) {
        info.use = use;
        return {info};
    }

    template <auto Set, class Value>
    static void put(Model& model, Value value) {
        if constexpr (std::is_member_object_pointer_v<decltype(Set)>)
            model.*Set = std::move(value);
        else
            std::invoke(Set, model, std::move(value));
    }

    template <auto Set>
    using Number = typename Argument<std::remove_cv_t<decltype(Set)>>::Type;

    template <auto Set>
    static constexpr KeyInfo numberInfo(const char* name) {
        using Limits = std::numeric_limits<Number<Set>>;
        KeyInfo info{name, Shape::Number};
        info.min = std::cmp_less(Limits::min(), info.min) ? info.min : static_cast<long>(Limits::min());
        info.max = std::cmp_greater(Limits::max(), info.max) ? info.max : static_cast<long>(Limits::max());
        return info;
    }

    template <auto Set>
    static void putNumber(Model& model, Tree& object, const char* key) {
        using Type = Number<Set>;
        put<Set>(model, static_cast<Type>(HZEPJSONUtils::getLongValue(object, key, 0)));
    }

    template <auto Read>
    static void withChild(Model& model, Tree& object, const char* key) {
        if (boost::optional<Tree&> child = object.get_child_optional(key)) {
            std::invoke(Read, model, *child);
            child->clear();
        }
    }
};

/// Two texts that belong together, such as a parameter's name and value.
struct Pair {
    std::string first;
    std::string second;
};

inline constexpr Key<Pair> kNameValueKeys[] = {
    Keys<Pair>::text<&Pair::first>("name"),
    Keys<Pair>::text<&Pair::second>("value"),
};

} // namespace dsa_json
