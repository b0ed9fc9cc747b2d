// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "HostExport.h"

#include <string>
#include <vector>

/// Where this process runs: environment, install roots, tool version, temporary directory.
class HOST_EXPORT HostEnv {
public:
    /// The variable's value, "" when it is not set; `isSet` tells the two apart.
    static std::string getEnv(const std::string& name, bool* isSet = nullptr);

    /// First of the application roots: set by setHostAppRootList, else $HOST_APP_ROOT (":"-separated), else the install prefix.
    static std::string getHostAppRoot();
    static std::vector<std::string> getHostAppRootList();
    static void setHostAppRootList(const std::vector<std::string>& roots);

    /// The running tool's version, 2021 and 1 unless set.
    static std::string getMajor();
    static std::string getMinor();
    static void setVersion(const std::string& major, const std::string& minor);

    /// The product in whose name the tool runs; "" unless set.
    static std::string getProductName();
    static void setProductName(const std::string& name);

    /// Absolute path of a writable directory: the one set, else a private directory of this process (mode 0700), made on first
    /// call below $TMPDIR or else /tmp, and removed at exit; a forked process gets its own. Setting "" goes back to the private one.
    /// Raises HostError when none can be made.
    static std::string getHostTmpDir();
    static void setHostTmpDir(const std::string& directory);
};
