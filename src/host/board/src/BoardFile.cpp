// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "BoardFile.h"

#include "../../common/src/JsonAllocator.h"
#include "HostBoardDataManager.h"
#include "HostErrors.h"
#include "HostFileUtils.h"

#include <rapidjson/document.h>
#include <rapidjson/error/en.h>

#include <algorithm>
#include <set>
#include <string_view>

namespace {

using Memory = rapidjson::MemoryPoolAllocator<JsonAllocator>;
using Document = rapidjson::GenericDocument<rapidjson::UTF8<>, Memory, JsonAllocator>;
using Value = Document::ValueType;

/// A member's value with the way to it, which faults name: "connectors[2].name".
class Member {
public:
    Member(const Value* value, std::string path) : value_(value), path_(std::move(path)) {}

    bool isThere() const { return value_ != nullptr; }
    const std::string& path() const { return path_; }

    [[noreturn]] void expected(const std::string& what) const {
        throw HostDataException((path_.empty() ? "the document" : "\"" + path_ + "\"") + " must be " + what);
    }

    Member operator[](const char* name) const {
        const auto found = value_->FindMember(name);
        return {found == value_->MemberEnd() ? nullptr : &found->value, path_.empty() ? name : path_ + "." + name};
    }

    const Member& object() const {
        if (!value_ || !value_->IsObject())
            expected("an object");
        return *this;
    }

    /// Absent: none.
    std::vector<Member> items() const {
        std::vector<Member> items;
        if (!value_)
            return items;
        if (!value_->IsArray())
            expected("a list");
        for (const Value& item : value_->GetArray())
            items.emplace_back(&item, path_ + "[" + std::to_string(items.size()) + "]");
        return items;
    }

    bool flag() const {
        if (!value_)
            return false;
        if (!value_->IsBool())
            expected("true or false");
        return value_->GetBool();
    }

    int number() const {
        if (!value_ || !value_->IsInt())
            expected("a whole number");
        return value_->GetInt();
    }

    std::string text() const {
        if (!value_ || !value_->IsString())
            expected("a text");
        std::string text(value_->GetString(), value_->GetStringLength());
        if (std::any_of(text.begin(), text.end(), [](unsigned char c) { return c < ' ' || c == 0x7f; }))
            expected("a text without control characters");
        return text;
    }
    std::string textOr(const std::string& otherwise) const { return value_ ? text() : otherwise; }

    /// Names stand in lists that are separated by blanks.
    std::string name() const {
        std::string name = text();
        if (name.empty() || name.find(' ') != std::string::npos)
            expected("a text without blanks, and not empty");
        return name;
    }

private:
    const Value* value_;
    std::string path_;
};

HostBoardComponent connectorOf(const Member& connector) {
    HostBoardComponent::Data data;
    data.name = connector["name"].name();
    data.displayName = connector["displayName"].textOr(data.name);
    data.type = connector["type"].text();
    data.form = connector["form"].textOr("");
    for (const Member& form : connector["accepts"].items())
        data.accepts.push_back(form.text());
    if (const Member connected = connector["connectedName"]; connected.isThere()) {
        data.connectedName = connected.name();
        data.connectedDisplayName = connector["connectedDisplayName"].textOr(data.connectedName);
    }
    data.locked = connector["locked"].flag();
    return HostBoardComponent(std::move(data));
}

HostBoard::Data boardOf(const Member& root) {
    HostBoard::Data data;
    const Member revision = root.object()["boardFile"];
    if (revision.number() != board_file::kRevision)
        revision.expected(std::to_string(board_file::kRevision));
    data.id = root["id"].name();
    data.name = root["name"].textOr(data.id);
    data.displayName = root["displayName"].textOr(data.name);
    data.vendor = root["vendor"].textOr("");
    data.version = root["version"].textOr("");
    std::set<std::string> names;
    for (const Member& connector : root["connectors"].items()) {
        data.connectors.push_back(connectorOf(connector.object()));
        if (!names.insert(data.connectors.back().getName()).second)
            connector["name"].expected("unlike the names of the other connectors");
    }
    return data;
}

} // namespace

HostBoard::Data board_file::read(const std::string& path) {
    const std::string text = HostFileUtils::readFile(path, HostBoardDataManager::kMaxFileSize);
    Document document;
    // Not recursive, so the size alone bounds how deep a text can nest, and how much memory its values take.
    document.Parse<rapidjson::kParseIterativeFlag | rapidjson::kParseValidateEncodingFlag>(text.data(), text.size());
    if (document.HasParseError()) {
        const auto end = text.begin() + static_cast<std::ptrdiff_t>(std::min(document.GetErrorOffset(), text.size()));
        throw HostDataException("line " + std::to_string(1 + std::count(text.begin(), end, '\n')) + ": " +
                                rapidjson::GetParseError_En(document.GetParseError()));
    }
    return boardOf(Member(&document, ""));
}
