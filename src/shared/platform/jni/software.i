// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors

%{
#include "HZEPSoftwarePlatformUtils.h"
%}

%rename(ZEPSystemClock) HZEPSystemClock;
%rename(ZEPBootImg) HZEPBootImg;
%rename(ZEPProcessorGroup) HZEPProcessorGroup;
%rename(ZEPSystemConfig) HZEPSystemConfig;
%rename(ZEPSoftwarePlatform) HZEPSoftwarePlatform;
%rename(ZEPSoftwarePlatformUtils) HZEPSoftwarePlatformUtils;

%include "HZEPSystemClock.h"
%include "HZEPBootImg.h"
%include "HZEPProcessorGroup.h"
%include "HZEPSystemConfig.h"
%include "HZEPSoftwarePlatform.h"
HZEP_STATIC_ONLY_BEGIN
%include "HZEPSoftwarePlatformUtils.h"
HZEP_STATIC_ONLY_END
