// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors

// Python: module, exceptions, strings and handles.

%module(package="hzep_platform") native
%feature("autodoc", "1");
%include <std_string.i>
%include <typemaps.i>

%{
#include "PythonExceptions.h"
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
        hzep_python::raiseClosed(text);
        SWIG_fail;
    }
%enddef

%typemap(check) const std::string & "";
%typemap(ret) const std::string & "";

// A class without objects has nothing to be kept.
#define HZEP_STATIC_ONLY_BEGIN
#define HZEP_STATIC_ONLY_END

%define HZEP_DETACHED_ITER(type...)
%typemap(out) type * {
    %set_output(SWIG_NewPointerObj(SWIG_as_voidptr(hzep_script::detach($1)), $descriptor(type *), SWIG_POINTER_OWN));
}
%extend type {
    %pythoncode %{
    def __iter__(self):
        while self.hasNext():
            yield self.next()
    %}
}
%enddef

// An argument that is read and written comes back beside the result.
%apply bool &INOUT { bool &ok };
%typemap(in) std::string &reason (std::string text) {
    std::string *given = nullptr;
    const int result = SWIG_AsPtr_std_string($input, &given);
    if (!SWIG_IsOK(result) || !given) {
        %argument_fail(result, "$type", $symname, $argnum);
    }
    text = *given;
    if (SWIG_IsNewObj(result))
        delete given;
    $1 = &text;
}
%typemap(argout) std::string &reason {
    %append_output(SWIG_From_std_string(*$1));
}
%typemap(check) std::string &reason "";
%typemap(typecheck, precedence=SWIG_TYPECHECK_STRING) std::string &reason = const std::string &;
