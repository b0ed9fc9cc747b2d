// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "JSONListWriter.h"
#include "JSONObjectWriter.h"

#include <string>
#include <string_view>
#include <utility>

/// The shapes that the model's documents have in common.
namespace model_json {

/// A list of what the elements write; they are pointers to JSONSerializable.
template <class Elements>
void addObjects(zep_platform::JSONObjectWriter& writer, std::string_view key, const Elements& elements) {
    zep_platform::JSONListWriter list;
    for (const auto* element : elements) {
        zep_platform::JSONObjectWriter item;
        item.writeObject(*element);
        list.addItem(std::move(item));
    }
    writer.addKey(key, std::move(list));
}

template <class Texts>
void addTexts(zep_platform::JSONObjectWriter& writer, std::string_view key, const Texts& texts) {
    zep_platform::JSONListWriter list;
    for (const std::string& text : texts)
        list.addItem(text);
    writer.addKey(key, std::move(list));
}

/// A list of objects of two members, one for each entry of a map or list of pairs.
template <class Pairs>
void addPairs(zep_platform::JSONObjectWriter& writer, std::string_view key, const Pairs& pairs, const char* firstKey,
              const char* secondKey) {
    zep_platform::JSONListWriter list;
    for (const auto& [first, second] : pairs) {
        zep_platform::JSONObjectWriter item;
        item.addKey(firstKey, first);
        item.addKey(secondKey, second);
        list.addItem(std::move(item));
    }
    writer.addKey(key, std::move(list));
}

} // namespace model_json
