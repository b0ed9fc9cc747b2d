// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "HostExport.h"
#include "lmx_members.h"
#include "lmx_values.h"

#include <string>
#include <string_view>
#include <utility>

namespace lmx60 {

/// What is known of a value's text, whatever type it becomes.
struct HOST_EXPORT c_validation_spec {
    const char* type_name;              ///< for messages: "a decimal", "a whole number"
    elmx_whitespace whitespace;         ///< what happens to white space before the checks
    const char* default_text;           ///< null when the schema declares no default
    bool (*is_valid)(std::string_view); ///< the lexical check; null accepts everything
    const c_big_int* lower;             ///< null when unbounded
    const c_big_int* upper;
};

/// A validation spec with the value check and the conversions of one type.
template <class T>
struct ct_validation_spec : c_validation_spec {
    bool (*is_value_ok)(const T&); ///< null accepts everything
    void (*from_text)(std::string_view, T& value);
    std::string (*to_text)(const T&);
    bool (*is_writable)(const T&); ///< false when the value can't stand in a document; null when each can
};

/// One schema type: spec(default text) makes the validation spec of a member.
struct HOST_EXPORT string_type {
    using value_type = c_text;
    static ct_validation_spec<value_type> spec(const char* default_text = nullptr);
};
struct HOST_EXPORT unsigned_byte_type {
    using value_type = unsigned char;
    static ct_validation_spec<value_type> spec(const char* default_text = nullptr);
};
struct HOST_EXPORT short_type {
    using value_type = short;
    static ct_validation_spec<value_type> spec(const char* default_text = nullptr);
};
struct HOST_EXPORT unsigned_short_type {
    using value_type = unsigned short;
    static ct_validation_spec<value_type> spec(const char* default_text = nullptr);
};
struct HOST_EXPORT unsigned_int_type {
    using value_type = unsigned int;
    static ct_validation_spec<value_type> spec(const char* default_text = nullptr);
};
struct HOST_EXPORT long_type {
    using value_type = long long;
    static ct_validation_spec<value_type> spec(const char* default_text = nullptr);
};
struct HOST_EXPORT unsigned_long_type {
    using value_type = unsigned long long;
    static ct_validation_spec<value_type> spec(const char* default_text = nullptr);
};
struct HOST_EXPORT integer_type {
    using value_type = c_big_int;
    static ct_validation_spec<value_type> spec(const char* default_text = nullptr);
};
struct HOST_EXPORT decimal_type {
    using value_type = c_decimal;
    static ct_validation_spec<value_type> spec(const char* default_text = nullptr);
};
struct HOST_EXPORT boolean_type {
    using value_type = bool;
    static ct_validation_spec<value_type> spec(const char* default_text = nullptr);
};

/// Gives a writer a member as text, with its flag.
class HOST_EXPORT c_marshal_bridge {
public:
    virtual ~c_marshal_bridge();
    virtual bool is_set() const = 0;
    /// False when the value holds a character that no document can carry.
    virtual bool is_writable() const = 0;
    virtual std::string get_text() const = 0;
};

/// Lets a reader store text that has passed the checks into a member.
class HOST_EXPORT c_unmarshal_bridge {
public:
    virtual ~c_unmarshal_bridge();
    /// False when the value check refuses the value; the member then stays as it was.
    virtual bool assign(std::string_view text) = 0;
};

template <class Member>
class ct_marshal_bridge final : public c_marshal_bridge {
public:
    using spec_type = ct_validation_spec<typename Member::value_type>;
    ct_marshal_bridge(const Member& member, const spec_type& spec) : member_(member), spec_(spec) {}
    bool is_set() const override { return member_.is_set(); }
    bool is_writable() const override { return !spec_.is_writable || spec_.is_writable(member_.get()); }
    std::string get_text() const override { return spec_.to_text(member_.get()); }

private:
    const Member& member_;
    const spec_type& spec_;
};

template <class Member>
class ct_unmarshal_bridge final : public c_unmarshal_bridge {
public:
    using spec_type = ct_validation_spec<typename Member::value_type>;
    ct_unmarshal_bridge(Member& member, const spec_type& spec) : member_(member), spec_(spec) {}
    bool assign(std::string_view text) override {
        if (!spec_.is_value_ok) {
            spec_.from_text(text, member_.set());
            return true;
        }
        typename Member::value_type value{};
        spec_.from_text(text, value);
        const bool is_ok = spec_.is_value_ok(value);
        if (is_ok) {
            member_.set(std::move(value));
        }
        return is_ok;
    }

private:
    Member& member_;
    const spec_type& spec_;
};

/// Gives a member the default that its spec declares; the flag stays false.
template <class Member>
void init_member(Member& member, const ct_validation_spec<typename Member::value_type>& spec) {
    typename Member::value_type value{};
    spec.from_text(spec.default_text, value);
    member.preset(std::move(value));
}

} // namespace lmx60
