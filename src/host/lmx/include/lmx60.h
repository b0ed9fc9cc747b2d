// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

// The XML data-binding runtime, whole. Headers of binding families bring it along.
#include "lmx_document.h"
#include "lmx_errors.h"
#include "lmx_members.h"
#include "lmx_reader.h"
#include "lmx_spec.h"
#include "lmx_values.h"
#include "lmx_walk.h"
#include "lmx_writer.h"
#include "lmx_xml.h"
