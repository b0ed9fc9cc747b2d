// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "Documents.h"
#include "HPLPlatform.h"
#include "MessageLog.h"
