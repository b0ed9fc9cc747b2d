// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors

%{
#include "CatalogService.h"
#include "NativeCatalogService.h"
#include "NativeDictService.h"
#include "NativeDocService.h"
#include "NativeKeyService.h"
#include "NativeObjectService.h"
#include "NativePlatformRepoService.h"
#include "NativeTransformService.h"
%}

namespace zep::platform {
using zep_platform::PlatformLoader;
}

// A script has no optional references: the copy that getChild gives.
%ignore zep::platform::ObjectService::getChildOptional;
%ignore zep::platform::NativeObjectService::getChildOptional;

%include "PlatformRepoService.h"
%include "NativePlatformRepoService.h"
%include "CatalogService.h"
%include "NativeCatalogService.h"
%include "ObjectService.h"
%include "NativeObjectService.h"
%include "KeyService.h"
%include "NativeKeyService.h"
%include "DictService.h"
%include "NativeDictService.h"
%include "TransformService.h"
%include "NativeTransformService.h"
%include "DocService.h"
%include "NativeDocService.h"
