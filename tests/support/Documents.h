// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "HostFwdIter.h"
#include "JSONSerializable.h"

#include <boost/property_tree/ptree.hpp>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <exception>
#include <iostream>
#include <memory>
#include <string>
#include <vector>

/// The document that an object writes.
std::string documentOf(const zep_platform::JSONSerializable& object);

/// A JSON text as a tree; raises when it is none.
boost::property_tree::ptree parse(const std::string& json);

/// A document typed in any layout, in the layout that is written.
std::string laidOut(const std::string& json);
std::string laidOut(const boost::property_tree::ptree& tree);

/// A document that was written, in lines as long as they may be.
std::string compact(const std::string& json);

/// The text of a file below the folder of all tests.
std::string readTestFile(const std::string& name);

/// Expects the text to be that of a file below the folder of all tests. With HZEP_WRITE_EXPECTED in the environment the file is
/// written in its place, to be looked at by its diff.
void expectTestFile(const std::string& name, const std::string& text);

/// Words in lines of at most 140 characters, those behind the first one indented.
std::string wrapped(const std::string& head, const std::vector<std::string>& words);

/// The text with its one occurrence of `from` replaced.
std::string edited(std::string text, const std::string& from, const std::string& to);

/// The text from the first `from` to the `to` behind it, which does not belong to it.
std::string between(const std::string& text, const std::string& from, const std::string& to);

/// Line, counted from 1, in which the text first stands.
int lineOf(const std::string& document, const std::string& text);

/// What the action raises, "" when it raises nothing.
template <class Error = std::exception, class Action>
std::string errorOf(const Action& action) {
    try {
        action();
    } catch (const Error& error) {
        return *error.what() ? error.what() : "an error without words";
    }
    return "";
}

/// What is printed to the standard output while it lives.
class Printed {
public:
    Printed() { testing::internal::CaptureStdout(); }
    ~Printed() {
        // What failed in the meantime was captured too.
        if (!taken_)
            std::cerr << testing::internal::GetCapturedStdout();
    }
    std::string take() {
        taken_ = true;
        return testing::internal::GetCapturedStdout();
    }

private:
    bool taken_ = false;
};

/// All elements of an iterator that is the caller's.
template <class T>
std::vector<T*> elementsOf(HostFwdIter<T*>* iterator) {
    const std::unique_ptr<HostFwdIter<T*>> owned(iterator);
    std::vector<T*> elements;
    while (owned->hasNext())
        elements.push_back(owned->next());
    return elements;
}
