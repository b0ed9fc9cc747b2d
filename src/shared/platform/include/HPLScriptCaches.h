// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "HZEPExport.h"
#include "native_cache.h"
#include "py_native_cache.h"

/// The script objects of hardware platforms. These caches stand in the library, one per process and language, and HPLPlatform's destructor
/// tells them.
class HPLPlatform;

extern template class HZEP_EXPORT host::pyinfra::py_native_cache<HPLPlatform*>;
extern template class HZEP_EXPORT host::tcltasks::native_cache<HPLPlatform*>;
