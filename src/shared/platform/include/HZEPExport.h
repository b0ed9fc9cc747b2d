// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

/// Marks what the shared library shows to its callers; everything else is hidden.
#define HZEP_EXPORT __attribute__((visibility("default")))
