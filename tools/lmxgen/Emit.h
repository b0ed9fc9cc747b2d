// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "Schema.h"

#include <string>

std::string emitHeader(const Family& family);
std::string emitSource(const Family& family);
