// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors

// Documents: the writers and the trees that they hold. Told here by hand: the headers' constraints on arguments are for C++ callers.

%{
#include "HZEPJSONText.h"
#include "JSONListWriter.h"
#include "JSONObjectWriter.h"
%}

%rename(PropertyTree) boost::property_tree::ptree;
namespace boost::property_tree {
/// A JSON document or a part of one: a value, or named children in their order; the items of an array have empty names.
class ptree {
public:
    ptree();
    %extend {
        /// Raises the parser's exception for text that is no JSON.
        explicit ptree(const std::string& json) {
            auto tree = std::make_unique<boost::property_tree::ptree>();
            HZEPJSONText::read(json, *tree);
            return tree.release();
        }
        std::string getValue() const { return $self->data(); }
        std::string getValue(const std::string& path) const { return $self->get<std::string>(path, ""); }
        bool hasKey(const std::string& path) const { return $self->get_child_optional(path).has_value(); }
        int size() const { return static_cast<int>($self->size()); }
        std::string getKey(int index) const {
            return std::next($self->begin(), static_cast<long>(hzep_script::checkIndex(index, $self->size())))->first;
        }
        boost::property_tree::ptree getChild(int index) const {
            return std::next($self->begin(), static_cast<long>(hzep_script::checkIndex(index, $self->size())))->second;
        }
        std::string toJSONString() const {
            std::ostringstream text;
            HZEPJSONText::write(text, *$self);
            return text.str();
        }
    }
};
} // namespace boost::property_tree

namespace zep_platform {

class JSONObjectWriter;

class JSONSerializable {
public:
    virtual ~JSONSerializable();
    %extend {
        /// The object's own document, as it stands inside that of its platform.
        std::string toJSONString() const {
            zep_platform::JSONObjectWriter writer;
            $self->toJSON(writer);
            std::ostringstream text;
            writer.write(text);
            return text.str();
        }
    }

protected:
    JSONSerializable();
};

class JSONWriter {
public:
    ~JSONWriter();
    bool empty() const;
    %extend {
        std::string toJSONString() const {
            std::ostringstream text;
            $self->write(text);
            return text.str();
        }
    }

private:
    JSONWriter();
};

class JSONListWriter : public JSONWriter {
public:
    JSONListWriter();
    void addItem(std::string value);
    void addItem(const JSONWriter& value);
    void addItem(const JSONSerializable* value);
    %extend {
        // The writer's own operation never returns.
        void addItem(bool value) { $self->addItem(value ? "true" : "false"); }
    }
};

class JSONObjectWriter : public JSONWriter {
public:
    JSONObjectWriter();
    void writeObject(const JSONSerializable* object);
    %extend {
        void addKey(const std::string& key, const std::string& value) { $self->addKey(key, value); }
        void addKey(const std::string& key, bool value) { $self->addKey(key, value); }
        void addKey(const std::string& key, const zep_platform::JSONWriter& value) { $self->addKey(key, value); }
        void addKey(const std::string& key, const zep_platform::JSONSerializable* value) { $self->addKey(key, value); }
    }
};

} // namespace zep_platform
