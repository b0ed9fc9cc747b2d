// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "JSONWriter.h"

#include <functional>
#include <string>

namespace zep_platform {

/// A document as text, read again in the way it will be read: `readAgain` raises for a text that it can't take. Raises HostDataException
/// for such a document, with the key as the fault's member where one is to blame, and what rendering raises.
std::string renderChecked(const JSONWriter& document, const std::function<void(const std::string& text)>& readAgain);

/// The same for documents that any reader of JSON takes.
std::string renderChecked(const JSONWriter& document);
std::string renderChecked(const boost::property_tree::ptree& document);

/// Raises HostDataException for a text that is no UTF-8; `what` is the key or argument.
void refuseUnlessUtf8(const std::string& what, const std::string& text);

} // namespace zep_platform
