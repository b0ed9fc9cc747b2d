// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors

%{
#include "HZEPPlatformHelper.h"
#include "HZEPPlatformMgr.h"
#include "HZEPPlatformUtils.h"
%}

%rename(ZEPPlatformMgr) HZEPPlatformMgr;
%rename(ZEPPlatformUtils) HZEPPlatformUtils;
%rename(ZEPPlatformEngineHelper) HZEPPlatformHelper;

// What the manager drops is gone for a script too. What it owns needs no handle to stay.
%include "HZEPPlatformMgr.h"
HZEP_STATIC_ONLY_BEGIN
%include "HZEPPlatformUtils.h"
HZEP_STATIC_ONLY_END
%include "HZEPPlatformHelper.h"
