// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "HostExport.h"

#include <cstddef>
#include <string>
#include <string_view>

/// JSON text as a stream of events, for every reader of JSON: what is JSON and how much of it is read is decided here alone. A byte order
/// mark is passed over, numbers stay text whatever their size, and all text is UTF-8 without lone surrogates.
class HOST_EXPORT HostJson {
public:
    /// Deepest nesting of objects and lists that is read.
    static constexpr std::size_t kMaxDepth = 1000;
    /// Largest document, in bytes.
    static constexpr std::size_t kMaxBytes = std::size_t{64} << 20;
    /// A value costs whoever keeps it some 300 bytes, and an object or list often becomes a part of a model of 1,000 bytes, however short
    /// their texts are. So a document has only so many of them, and more the longer it is; the sparest writers spend 17 bytes a value.
    static constexpr std::size_t kFreeValues = 200'000;
    static constexpr std::size_t kBytesPerValue = 20;
    static constexpr std::size_t kFreeContainers = 50'000;
    static constexpr std::size_t kBytesPerContainer = 50;

    /// Most values, objects and lists among them, in a document of so many bytes.
    static constexpr std::size_t getMaxValues(std::size_t bytes) { return kFreeValues + bytes / kBytesPerValue; }
    /// Most objects and lists in a document of so many bytes.
    static constexpr std::size_t getMaxContainers(std::size_t bytes) { return kFreeContainers + bytes / kBytesPerContainer; }

    /// Takes what a document holds, in its order. Texts live as long as the call; `offset` is how far the text is read. An answer of false
    /// ends the reading; what is raised passes to the caller of read().
    class HOST_EXPORT Events {
    public:
        virtual ~Events();
        virtual bool key(std::string_view name, std::size_t offset) = 0;
        /// A text without its escapes, or a number or word as it is written.
        virtual bool value(std::string_view text, std::size_t offset) = 0;
        /// The offset is that of the bracket.
        virtual bool open(bool isList, std::size_t offset) = 0;
        virtual bool close(std::size_t offset) = 0;
    };

    /// Why a text is not read for its size, in words, before any of it is; "" for one that is.
    static std::string getRefusal(std::string_view text);

    /// False for a text that getRefusal() refuses, that is no JSON, holds a zero byte, or is nested deeper than kMaxDepth, and when the
    /// events end the reading.
    static bool read(std::string_view text, Events& events);

    /// The same for a value out of a text that was read: its size is not judged again.
    static bool readPart(std::string_view text, Events& events);
};
