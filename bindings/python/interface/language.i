// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors

// Python: module, exceptions, strings and handles.

%module(package="hzep_platform") native
%feature("autodoc", "1");
%include <typemaps.i>

%pythonbegin %{
# SPDX-License-Identifier: Apache-2.0
from ._handle import Handle
%}
%pythoncode %{
PlatformError = _native.PlatformError
ClosedError = _native.ClosedError
Handle._forget = _native.closeHandle
%}

// Handles are compared by what they lead to.
%ignore *::operator==;
%ignore *::operator!=;
// In Python these differ from their namesakes in nothing that is passed.
%rename(getProcessorGroupNames) HZEPSystemConfig::getProcessorGroups(std::vector< std::string > &) const;
%ignore HZEPPfmFileTypes::toString(TclFileType);
%extend HZEPPfmFileTypes {
    static std::string tclTypeToString(int type) { return HZEPPfmFileTypes::toString(static_cast<HZEPPfmFileTypes::TclFileType>(type)); }
}

%{
#include "PythonValues.h"
%}

%init %{
    hzep_python::addExceptions(m);
%}

%exception {
    try {
        $action
    } catch (...) {
        hzep_python::raiseCurrentException();
        SWIG_fail;
    }
}

%define HZEP_REFUSE_HANDLE(text)
    {
        hzep_python::raise(hzep_python::closedError, text);
        SWIG_fail;
    }
%enddef
#define HZEP_PLACE hzep_python::Place{"$symname", $argnum}

// Text
%typemap(in) std::string {
    if (!hzep_python::fromPython($input, $1)) {
        hzep_python::refuse(HZEP_PLACE, "str", $input);
        SWIG_fail;
    }
}
%typemap(in) const std::string & (std::string text), std::string &reason (std::string text) {
    if (!hzep_python::fromPython($input, text)) {
        hzep_python::refuse(HZEP_PLACE, "str", $input);
        SWIG_fail;
    }
    $1 = &text;
}
%typemap(out) std::string "$result = hzep_python::toPython($1);"
%typemap(out) const std::string & "$result = hzep_python::toPython(*$1);"
%typemap(typecheck, precedence=SWIG_TYPECHECK_STRING) std::string, const std::string &, std::string &reason
    "$1 = PyUnicode_Check($input) || PyObject_HasAttrString($input, \"__fspath__\");"
%typemap(check) const std::string &, std::string &reason "";
%typemap(ret) const std::string & "";

// An argument that is read and written comes back beside the result.
%typemap(argout) std::string &reason "$result = hzep_python::addOutput($result, hzep_python::toPython(*$1));"
%typemap(in) bool &ok (bool value) {
    const int truth = PyObject_IsTrue($input);
    if (truth < 0)
        SWIG_fail;
    value = truth == 1;
    $1 = &value;
}
%typemap(argout) bool &ok "$result = hzep_python::addOutput($result, PyBool_FromLong(*$1));"
%typemap(typecheck, precedence=SWIG_TYPECHECK_BOOL) bool &ok "$1 = PyBool_Check($input);"

// Handles
%typemap(in) SWIGTYPE *self (void *address = nullptr), SWIGTYPE & (void *address = nullptr) {
    if (!hzep_python::fromHandle($input, &address, $descriptor, $disown, false, HZEP_PLACE))
        SWIG_fail;
    $1 = reinterpret_cast<$ltype>(address);
}
%typemap(in) SWIGTYPE * (void *address = nullptr) {
    if (!hzep_python::fromHandle($input, &address, $descriptor, $disown, true, HZEP_PLACE))
        SWIG_fail;
    $1 = reinterpret_cast<$ltype>(address);
}
%typemap(in) SWIGTYPE (void *address = nullptr) {
    if (!hzep_python::fromHandle($input, &address, $&descriptor, 0, false, HZEP_PLACE))
        SWIG_fail;
    $1 = *reinterpret_cast<$&ltype>(address);
}
%typemap(in) SWIGTYPE *DISOWN (void *address = nullptr) {
    if (!hzep_python::fromOwningHandle($input, &address, $descriptor, HZEP_PLACE))
        SWIG_fail;
    $1 = reinterpret_cast<$ltype>(address);
}
%typemap(argout) SWIGTYPE *DISOWN "hzep_python::giveTo($input, swig_obj[0]);"
%typemap(out) SWIGTYPE *, SWIGTYPE & "$result = hzep_python::toHandle($1, $descriptor, $owner, swig_obj[0]);"
%typemap(out) SWIGTYPE "$result = hzep_python::toHandle(new $1_basetype($1), $&descriptor, SWIG_POINTER_OWN, nullptr);"

%typemap(out) SWIGTYPE *create "$result = hzep_python::toHandle($1, $descriptor, SWIG_POINTER_OWN, nullptr);"

// A handle without an origin has none in any language.
#define HZEP_STATIC_ONLY_BEGIN
#define HZEP_STATIC_ONLY_END

%define HZEP_DETACHED_ITER(type...)
%typemap(out) type * "$result = hzep_python::toHandle(hzep_script::detach($1), $descriptor, SWIG_POINTER_OWN, swig_obj[0]);"
%extend type {
    %pythoncode %{
    def __iter__(self):
        return self

    def __next__(self):
        if not self.hasNext():
            raise StopIteration
        return self.next()
    %}
}
%enddef

// The mode is one of the three numbers that HwMetadataModes gives.
%typemap(in) zep_platform::PlatformLoader::HwMetadataMode, zep::platform::PlatformLoader::HwMetadataMode {
    int overflow = 0;
    const long mode = PyLong_Check($input) ? PyLong_AsLongAndOverflow($input, &overflow) : -1;
    if (mode < zep_platform::PlatformLoader::PreferAlternateJson || mode > zep_platform::PlatformLoader::XmlOnly) {
        hzep_python::refuse(HZEP_PLACE, "one of HwMetadataModes", $input);
        SWIG_fail;
    }
    $1 = static_cast<zep_platform::PlatformLoader::HwMetadataMode>(mode);
}
%typemap(out) zep_platform::PlatformLoader::HwMetadataMode "$result = PyLong_FromLong(static_cast<long>($1));"
%typemap(typecheck, precedence=SWIG_TYPECHECK_INTEGER) zep_platform::PlatformLoader::HwMetadataMode, zep::platform::PlatformLoader::HwMetadataMode
    "$1 = PyLong_Check($input) && !PyBool_Check($input);"

// Property trees
%typemap(in) const boost::property_tree::ptree & (boost::property_tree::ptree tree), boost::property_tree::ptree &doc (boost::property_tree::ptree tree) {
    if (!hzep_python::treeFromPython($input, tree, $descriptor, HZEP_PLACE))
        SWIG_fail;
    $1 = &tree;
}
%typemap(typecheck, precedence=SWIG_TYPECHECK_POINTER) const boost::property_tree::ptree &, boost::property_tree::ptree &doc
    "$1 = PyDict_Check($input) || PyList_Check($input) || (SWIG_Python_GetSwigThis($input) && SWIG_IsOK(SWIG_ConvertPtr($input, nullptr, $descriptor, 0)));"
%typemap(in, numinputs=0) boost::property_tree::ptree &out (boost::property_tree::ptree tree), boost::property_tree::ptree &tree (boost::property_tree::ptree tree)
    "$1 = &tree;"
%typemap(argout) boost::property_tree::ptree &out, boost::property_tree::ptree &tree
    "$result = hzep_python::addOutput($result, hzep_python::treeToPython(*$1));"
%typemap(in) const boost::property_tree::ptree &tree = const boost::property_tree::ptree &;
%typemap(argout) const boost::property_tree::ptree & "";
%typemap(argout) const boost::property_tree::ptree &tree "";
%typemap(out) boost::property_tree::ptree "$result = hzep_python::treeToPython($1);"
%typemap(out) boost::property_tree::ptree boost::property_tree::ptree::getChild
    "$result = hzep_python::toHandle(new boost::property_tree::ptree($1), $&descriptor, SWIG_POINTER_OWN, nullptr);"
%extend boost::property_tree::ptree {
    %pythoncode %{
    def __len__(self):
        return self.size()

    def __iter__(self):
        return ((self.getKey(i), self.getChild(i)) for i in range(self.size()))
    %}
}

%native(closeHandle) PyObject *closeHandle(PyObject *, PyObject *arguments);
%{
static PyObject *closeHandle(PyObject *, PyObject *arguments) {
    PyObject *handle = nullptr;
    return PyArg_UnpackTuple(arguments, "closeHandle", 1, 1, &handle) ? hzep_python::closeHandle(handle) : nullptr;
}
%}
