// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "LintTree.h"

#include <deque>
#include <set>
#include <string>

namespace lint {

/// A document with what was found in it. The tree is missing where it did not parse, or where it is not held for want of room.
struct Document {
    Document(const std::string& file, const std::string& member_, Kind kind_) : member(member_), kind(kind_), findings(file, member_) {}

    std::string member;
    Kind kind;
    std::string text;
    std::optional<Node> root;
    Findings findings;
};

/// Counts the text that is held, see kMaxHeld.
class Room {
public:
    /// Whether the document may be kept.
    bool take(std::size_t size) {
        isFull_ = isFull_ || size > HZEPMetadataLint::kMaxHeld - held_;
        held_ += isFull_ ? 0 : size;
        return !isFull_;
    }

private:
    std::size_t held_ = 0;
    bool isFull_ = false;
};

/// Reads and checks the document by itself.
void checkDocument(Document& document, std::string text);

/// Drops text and tree where there is no room for them.
void keep(Document& document, Room& room);

/// One archive with all its documents.
struct Archive {
    std::string file; ///< as it is shown
    std::deque<Document> documents;
    Findings own;
    /// Of the documents; null where there is none, or where it did not parse.
    Document* metadata = nullptr; ///< the primary ones where there are several
    Document* alternate = nullptr;
    Document* hardwareFile = nullptr;
    bool hasJson = false;
};

/// Checks an archive by itself. Raises HostError for one that can't be opened.
Archive checkArchive(const std::string& path, Room& room);

/// What a document calls the platform. Null where it says nothing.
struct Identity {
    const Node* vendor = nullptr;
    const Node* board = nullptr;
    const Node* name = nullptr;
    const Node* major = nullptr;
    const Node* minor = nullptr;
    const Node* part = nullptr; ///< of the device of interest
    const Node* isEmulation = nullptr;
};
/// Of metadata in JSON or XML.
Identity getIdentity(const Document& document);

/// Holds an archive's documents against each other.
void compareDocuments(Archive& archive);

/// A platform file with all that it names and what stands beside it, without the findings that are allowed there.
std::vector<HZEPMetadataLint::Finding> checkPlatform(const std::string& path, std::string text);

/// Hands all findings out, in the order of the documents.
void takeFindings(Archive& archive, std::vector<HZEPMetadataLint::Finding>& found);

/// Takes the findings out that a file ".hzeplint" in the folder allows, and adds what is wrong with it.
void applyIgnores(const std::string& folder, bool isWhole, std::vector<HZEPMetadataLint::Finding>& found);

/// What a file is by its name alone.
std::optional<Kind> getKindByName(const std::string& name);
bool isArchiveName(const std::string& name);

/// Texts of numbers that say the same, such as "2" and "02".
bool isSameNumber(const std::string& a, const std::string& b);

/// Regular files and folders directly in a folder, in the order of their names; no links.
std::vector<std::string> listFolder(const std::string& folder, bool folders);

/// Files of known names below a folder, and the platform files, without the folders that are other platforms'.
void listBelow(const std::string& folder, std::vector<std::string>& files);

} // namespace lint
