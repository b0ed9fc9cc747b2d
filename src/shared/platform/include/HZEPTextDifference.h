// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "HZEPTextEdit.h"

#include <set>
#include <string>
#include <vector>

/// What one document tells and another one does not: of two texts of one form, value by value.
class HZEP_EXPORT HZEPTextDifference {
public:
    struct Change {
        std::string path; // in the first text, in the form of HZEPTextEdit's paths
        std::string before;
        std::string after; // "" when it is dropped
        bool isDropped;
    };

    /// Values of the first text that the second one lacks or has otherwise, in the order of the first. Texts, numbers and flags are alike
    /// when they are written with the same characters; order and empty values don't count, nor what only the second one has. Items of a
    /// list are held against those of the same name, id or type where that is one item, else of the same place. What stands at one of
    /// the paths in `passedOver` is left out. Raises HostDataException as HZEPTextEdit does.
    static std::vector<Change> find(const std::string& before, const std::string& after, HZEPTextEdit::Form form,
                                    const std::set<std::string>& passedOver = {});
};
