// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors

// What every language shares: how headers read, and what becomes of pointers.

%include <stdint.i>

#define HZEP_EXPORT
#define HOST_EXPORT
#define HostVector std::vector
%ignore operator==;
%ignore operator!=;
// Two operations that differ in `const` alone are one for a script.
#pragma SWIG nowarn=402,503,509,512,516

%apply size_t { std::size_t };

%{
#include "HZEPDevice.h"
#include "HZEPHardwarePlatform.h"
#include "HZEPPlatform.h"
#include "HZEPReconfigurablePartition.h"
#include "HZEPSoftwarePlatform.h"
#include "HZEPSystemConfig.h"
#include "HZEPProcessorGroup.h"
#include "HZEPBootImg.h"
#include "ScriptHandles.h"

#include <boost/property_tree/ptree.hpp>

#include <map>
#include <set>
#include <sstream>
#include <vector>
%}

// A pointer that comes back from a script is followed only while its object is there; null stands for "none", but not as the object that
// an operation is called on.
%typemap(check) SWIGTYPE *self {
    if (!hzep_script::isCallable($1, "$symname"))
        HZEP_REFUSE_HANDLE("this $1_basetype is closed, or its object is gone")
}
%typemap(check) SWIGTYPE *, SWIGTYPE & {
    if ($1 && !hzep_script::isUsable($1))
        HZEP_REFUSE_HANDLE("the object of this $1_basetype is gone")
}
%typemap(ret) SWIGTYPE *, SWIGTYPE & {
    hzep_script::handOut($1);
}
