// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "ReaderFault.h"

#include "HZEPJSONText.h"
#include "HostErrors.h"

HostFault toReaderFault(const std::exception& error, const std::string& file, const std::string& member) {
    if (const auto* text = dynamic_cast<const HZEPJSONTextError*>(&error))
        return text->getFault().file.empty() ? text->in(file, member).getFault() : text->getFault();
    if (const auto* parse = dynamic_cast<const boost::property_tree::json_parser::json_parser_error*>(&error))
        return {file, member, parse->line(), 0, parse->message()};
    if (const auto* host = dynamic_cast<const HostErrorBase*>(&error); host && !host->getFault().file.empty())
        return host->getFault();
    return {file, member, 0, 0, error.what()};
}
