// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors

// Lists and sets are Tcl's lists, maps its dicts. One that an operation fills comes back beside the result.

%nodefaultctor std::vector;
%nodefaultctor std::map;
%nodefaultctor std::set;
%nodefaultdtor std::vector;
%nodefaultdtor std::map;
%nodefaultdtor std::set;

namespace std {

%define HZEP_LIST_TYPEMAPS(item, descriptor)
    %typemap(in) const std::vector< item > & (std::vector< item > items) {
        if (!hzep_tcl::listFromTcl(interp, $input, items, descriptor))
            SWIG_fail;
        $1 = &items;
    }
    %typemap(typecheck, precedence=SWIG_TYPECHECK_STRING_ARRAY) const std::vector< item > & "$1 = 1;"
    %typemap(in, numinputs=0) std::vector< item > & (std::vector< item > items) "$1 = &items;"
    %typemap(argout) std::vector< item > & "hzep_tcl::addOutput(interp, hzep_tcl::listToTcl(interp, *$1, descriptor));"
    %typemap(argout) const std::vector< item > & "";
    %typemap(check) std::vector< item > &, const std::vector< item > & "";
    %typemap(ret) std::vector< item > &, const std::vector< item > & "";
    %typemap(out) std::vector< item > "Tcl_SetObjResult(interp, hzep_tcl::listToTcl(interp, $1, descriptor));"
    %typemap(out) std::vector< item > &, const std::vector< item > & "Tcl_SetObjResult(interp, hzep_tcl::listToTcl(interp, *$1, descriptor));"
%enddef

template <class T>
class vector {
    HZEP_LIST_TYPEMAPS(T, $descriptor(T *))
};
template <class T>
class vector<T *> {
    HZEP_LIST_TYPEMAPS(T *, $descriptor(T *))
};

template <class K, class T>
class map {
    %typemap(in, numinputs=0) std::map< K, T > & (std::map< K, T > entries) "$1 = &entries;"
    %typemap(argout) std::map< K, T > & "hzep_tcl::addOutput(interp, hzep_tcl::mapToTcl(*$1));"
    %typemap(out) std::map< K, T > "Tcl_SetObjResult(interp, hzep_tcl::mapToTcl($1));"
    %typemap(out) const std::map< K, T > & "Tcl_SetObjResult(interp, hzep_tcl::mapToTcl(*$1));"
};

template <class T>
class set {
    %typemap(in) const std::set< T > & (std::vector< T > items, std::set< T > distinct), std::set< T > & (std::vector< T > items, std::set< T > distinct) {
        if (!hzep_tcl::listFromTcl(interp, $input, items, $descriptor(T *)))
            SWIG_fail;
        distinct.insert(items.begin(), items.end());
        $1 = &distinct;
    }
    %typemap(typecheck, precedence=SWIG_TYPECHECK_STRING_ARRAY) const std::set< T > &, std::set< T > & "$1 = 1;"
    %typemap(out) std::set< T > "Tcl_SetObjResult(interp, hzep_tcl::setToTcl($1));"
    %typemap(out) const std::set< T > & "Tcl_SetObjResult(interp, hzep_tcl::setToTcl(*$1));"
};

} // namespace std

// A list that is read and written.
%typemap(in) std::vector< HZEPPlatform * > &platforms (std::vector< HZEPPlatform * > items) {
    if (!hzep_tcl::listFromTcl(interp, $input, items, $descriptor(HZEPPlatform *)))
        SWIG_fail;
    $1 = &items;
}
