// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "HostExport.h"
#include "HostHwDef.h"

#include <cstdint>
#include <memory>
#include <string>

/// The form in which hardware definitions are kept. Arguments without a name are part of the suite's calls and have no meaning here.
class HOST_EXPORT HostHwDefUtils {
public:
    /// Largest definition that is read: 64 MiB. Deepest nesting of its elements: 64.
    static constexpr std::uint64_t kMaxDefinitionSize = 64ULL << 20;
    static constexpr std::size_t kMaxDepth = 64;

    /// The definition in the archive's member "hwdef.xml", or else "sysdef.xml"; null, and never an exception, when there is none
    /// or it can't be read.
    static std::unique_ptr<HostHwDef> getHDF(const std::string& archive, bool, const std::string&);
    /// The same; `fault` says why there is none.
    static std::unique_ptr<HostHwDef> getHDF(const std::string& archive, std::string& fault);

    /// Reads a definition from its XML text. False, and in `fault` why and at what line, for a text that is none.
    static bool parse(const std::string& xml, HostHwDef& definition, std::string& fault);

    /// The XML text that parse() reads: of a definition that was read the same one again, the instances in its order. Raises HostError for
    /// a definition that the form has no room for.
    static std::string render(const HostHwDef& definition);
};
