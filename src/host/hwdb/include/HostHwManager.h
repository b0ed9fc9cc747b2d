// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "HostExport.h"
#include "HostHwDb.h"
#include "HostHwDef.h"

#include <map>
#include <memory>
#include <string>
#include <vector>

/// Owner of the hardware databases of the process, by their names, and of definitions opened by file. Every failure answers null
/// and raises nothing. A pointer handed out lives until the database is closed. Arguments without a name are part of the suite's
/// calls and have no meaning here. Safe to call from several threads.
class HOST_EXPORT HostHwManager {
public:
    /// Reads the definition of an archive. The manager owns it until a database takes it or it is closed.
    static HostHwDef* openDefFile(const std::string& archive, bool, bool, const std::string&);

    /// Gives up a definition that no database took; false when it is not the manager's.
    static bool closeDefFile(HostHwDef* definition);

    /// A database of a definition that openDefFile gave; the pointer to that definition ends here, also when this fails. An empty name
    /// becomes the top module's, with a number behind it when it is taken; a given name that is taken is a failure.
    static HostHwDb* createHardwareDb(HostHwDef* definition, const std::string& platformFile, bool, bool, const std::string& name, int,
                                      bool, const std::string&, bool);

    /// The same of a definition of the caller's own, handed over. The platform file is the one it was read from.
    static HostHwDb* createHardwareDbFromHDF(std::unique_ptr<HostHwDef> definition, int, bool, const std::string&, const std::string& name,
                                             bool, bool, bool, const std::string&, bool);

    /// A database of a static platform with its modules, a map of instance path to archive; null too when one of the archives has
    /// no definition. A null definition is read from the platform file.
    static HostHwDb* createHardwareDb(const std::string& platformFile, const std::map<std::string, std::string>& modules,
                                      const HostHwDef* definition, bool, bool, const std::string& name, bool);

    static HostHwDb* getHardwareDb(const std::string& name, bool);

    /// Frees the database; false when there is none of that name.
    static bool closeHardwareDb(const std::string& name);

    /// Sorted.
    static std::vector<std::string> getHardwareDbNames();
};
