// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "JSONObjectWriter.h"
#include "JSONSerializable.h"

#define BOOST_BIND_GLOBAL_PLACEHOLDERS
#include <boost/property_tree/json_parser.hpp>

#include <sstream>
#include <string>

/// The document that an object writes.
inline std::string documentOf(const zep_platform::JSONSerializable& object) {
    zep_platform::JSONObjectWriter writer;
    object.toJSON(writer);
    std::ostringstream out;
    writer.write(out);
    return out.str();
}

/// A document typed in any layout, in the layout that is written.
inline std::string laidOut(const std::string& json) {
    std::istringstream in(json);
    boost::property_tree::ptree tree;
    boost::property_tree::read_json(in, tree);
    std::ostringstream out;
    boost::property_tree::write_json(out, tree);
    return out.str();
}
