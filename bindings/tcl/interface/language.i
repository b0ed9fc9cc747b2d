// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors

// Tcl: module, errors, strings and handles.

%module hzep_platform

%{
#include "TclCommands.h"
#include "TclValues.h"
%}

%init %{
    hzep_tcl::install(interp, swig_commands, SWIG_prefix);
%}

%exception {
    try {
        $action
    } catch (...) {
        hzep_tcl::raiseCurrentException(interp);
        SWIG_fail;
    }
}

%define HZEP_REFUSE_HANDLE(text)
    {
        hzep_tcl::refuse(interp, "CLOSED", text);
        SWIG_fail;
    }
%enddef

// Results beside the function's own make a list with it; without one they stand alone.
%typemap(out) void "hzep_tcl::Call::current().hasResult = false;"

// Text
%typemap(in) std::string "$1 = hzep_tcl::fromTcl($input);"
%typemap(in) const std::string & (std::string text), std::string &reason (std::string text) {
    text = hzep_tcl::fromTcl($input);
    $1 = &text;
}
%typemap(out) std::string "Tcl_SetObjResult(interp, hzep_tcl::toTcl($1));"
%typemap(out) const std::string & "Tcl_SetObjResult(interp, hzep_tcl::toTcl(*$1));"
%typemap(typecheck, precedence=SWIG_TYPECHECK_STRING) std::string, const std::string &, std::string &reason "$1 = 1;"
%typemap(check) const std::string &, std::string &reason "";
%typemap(ret) const std::string & "";

// All is text in Tcl: where the writers take either, two words alone are truth values.
%typemap(typecheck, precedence=SWIG_TYPECHECK_BOOL) bool, bool &ok "$1 = hzep_tcl::isTruthValue($input);"
%typemap(typecheck, precedence=SWIG_TYPECHECK_BOOL) bool value "$1 = hzep_tcl::isTruthWord($input);"

// An argument that is read and written comes back beside the result.
%typemap(argout) std::string &reason "hzep_tcl::addOutput(interp, hzep_tcl::toTcl(*$1));"
%typemap(in) bool &ok (bool value) {
    int given = 0;
    if (Tcl_GetBooleanFromObj(interp, $input, &given) != TCL_OK)
        SWIG_fail;
    value = given != 0;
    $1 = &value;
}
%typemap(argout) bool &ok "hzep_tcl::addOutput(interp, Tcl_NewBooleanObj(*$1));"

// Handles
%typemap(in) SWIGTYPE *self (void *address = nullptr), SWIGTYPE & (void *address = nullptr) {
    if (!hzep_tcl::fromHandle(interp, $input, &address, $descriptor, false))
        SWIG_fail;
    $1 = reinterpret_cast<$ltype>(address);
}
%typemap(in) SWIGTYPE * (void *address = nullptr) {
    if (!hzep_tcl::fromHandle(interp, $input, &address, $descriptor, true))
        SWIG_fail;
    $1 = reinterpret_cast<$ltype>(address);
}
%typemap(in) SWIGTYPE (void *address = nullptr) {
    if (!hzep_tcl::fromHandle(interp, $input, &address, $&descriptor, false))
        SWIG_fail;
    $1 = *reinterpret_cast<$&ltype>(address);
}
%typemap(in) SWIGTYPE *DISOWN (void *address = nullptr) {
    if (!hzep_tcl::fromOwningHandle(interp, $input, &address, $descriptor))
        SWIG_fail;
    $1 = reinterpret_cast<$ltype>(address);
}
%typemap(argout) SWIGTYPE *DISOWN "hzep_tcl::giveToSelf(interp, $input);"
%typemap(typecheck, precedence=SWIG_TYPECHECK_POINTER) SWIGTYPE *, SWIGTYPE &, const SWIGTYPE &, SWIGTYPE *DISOWN
    "$1 = hzep_tcl::isHandle(interp, $input, $descriptor);"
%typemap(typecheck, precedence=SWIG_TYPECHECK_POINTER) SWIGTYPE "$1 = hzep_tcl::isHandle(interp, $input, $&descriptor);"
%typemap(out) SWIGTYPE *, SWIGTYPE & "Tcl_SetObjResult(interp, hzep_tcl::toHandle(interp, $1, $descriptor, $owner));"
%typemap(out) SWIGTYPE "Tcl_SetObjResult(interp, hzep_tcl::toHandle(interp, new $1_basetype($1), $&descriptor, true));"

#define HZEP_STATIC_ONLY_BEGIN
#define HZEP_STATIC_ONLY_END

// What an iterator walks is a list.
%define HZEP_DETACHED_ITER(type...)
%typemap(out) type * "Tcl_SetObjResult(interp, hzep_tcl::walk(interp, $1));"
%enddef

// The mode is one of the three numbers that HwMetadataModes gives.
%typemap(in) zep_platform::PlatformLoader::HwMetadataMode, zep::platform::PlatformLoader::HwMetadataMode {
    int mode = -1;
    if (Tcl_GetIntFromObj(nullptr, $input, &mode) != TCL_OK || mode < zep_platform::PlatformLoader::PreferAlternateJson ||
        mode > zep_platform::PlatformLoader::XmlOnly) {
        hzep_tcl::refuse(interp, "TYPE", "expected one of HwMetadataModes but got \"" + hzep_tcl::fromTcl($input) + "\"");
        SWIG_fail;
    }
    $1 = static_cast<zep_platform::PlatformLoader::HwMetadataMode>(mode);
}
%typemap(out) zep_platform::PlatformLoader::HwMetadataMode "Tcl_SetObjResult(interp, Tcl_NewIntObj(static_cast<int>($1)));"
%typemap(typecheck, precedence=SWIG_TYPECHECK_INTEGER) zep_platform::PlatformLoader::HwMetadataMode, zep::platform::PlatformLoader::HwMetadataMode {
    int mode = 0;
    $1 = Tcl_GetIntFromObj(nullptr, $input, &mode) == TCL_OK;
}

// Property trees: a handle, or the text of a JSON document.
%typemap(in) const boost::property_tree::ptree & (boost::property_tree::ptree tree), boost::property_tree::ptree &doc (boost::property_tree::ptree tree) {
    if (!hzep_tcl::treeFromTcl(interp, $input, tree, $descriptor))
        SWIG_fail;
    $1 = &tree;
}
%typemap(typecheck, precedence=SWIG_TYPECHECK_POINTER) const boost::property_tree::ptree &, boost::property_tree::ptree &doc
    "$1 = hzep_tcl::isHandle(interp, $input, $descriptor);"
%typemap(in, numinputs=0) boost::property_tree::ptree &out (boost::property_tree::ptree tree), boost::property_tree::ptree &tree (boost::property_tree::ptree tree)
    "$1 = &tree;"
%typemap(argout) boost::property_tree::ptree &out, boost::property_tree::ptree &tree
    "hzep_tcl::addOutput(interp, hzep_tcl::toHandle(interp, new boost::property_tree::ptree(*$1), $descriptor, true));"
%typemap(out) Tcl_Obj * "Tcl_SetObjResult(interp, $1);"
%extend boost::property_tree::ptree {
    /// A value as text, an array as a list, all else as a dict, whose last child of a name counts.
    Tcl_Obj *asDict() const { return hzep_tcl::treeToTcl(*$self); }
}
