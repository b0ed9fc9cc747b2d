// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "HZEPExport.h"

#include <string>

/// Where in the tool suite the library runs. Answers are kept for the life of the process.
class HZEP_EXPORT HZEPEnv {
public:
    /// "plome", "zep", "ferro" or "druvel": the product word that stands last in the install root; "unknown" without one.
    static std::string getProductName();

    /// The environment variable GRADLE_UNIT_TEST is set, to anything.
    static bool isRunningAsGradleUnitTest();
};
