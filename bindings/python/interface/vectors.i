// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors

// Lists, maps and sets are Python's own. One that an operation fills comes back beside the result.

// The classes of the containers have nothing in them, and are left out when the module is put together.
%nodefaultctor std::vector;
%nodefaultctor std::map;
%nodefaultctor std::set;
%nodefaultdtor std::vector;
%nodefaultdtor std::map;
%nodefaultdtor std::set;

namespace std {

%define HZEP_LIST_TYPEMAPS(item, descriptor)
    %typemap(in) const std::vector< item > & (std::vector< item > items) {
        if (!hzep_python::listFromPython($input, items, descriptor, HZEP_PLACE))
            SWIG_fail;
        $1 = &items;
    }
    %typemap(typecheck, precedence=SWIG_TYPECHECK_STRING_ARRAY) const std::vector< item > & "$1 = hzep_python::isListLike($input);"
    %typemap(in, numinputs=0) std::vector< item > & (std::vector< item > items) "$1 = &items;"
    %typemap(argout) std::vector< item > & "$result = hzep_python::addOutput($result, hzep_python::listToPython(*$1, descriptor, swig_obj[0]));"
    %typemap(argout) const std::vector< item > & "";
    %typemap(check) std::vector< item > &, const std::vector< item > & "";
    %typemap(ret) std::vector< item > &, const std::vector< item > & "";
    %typemap(out) std::vector< item > "$result = hzep_python::listToPython($1, descriptor, swig_obj[0]);"
    %typemap(out) std::vector< item > &, const std::vector< item > & "$result = hzep_python::listToPython(*$1, descriptor, swig_obj[0]);"
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
    %typemap(argout) std::map< K, T > & "$result = hzep_python::addOutput($result, hzep_python::mapToPython(*$1));"
    %typemap(out) std::map< K, T > "$result = hzep_python::mapToPython($1);"
    %typemap(out) const std::map< K, T > & "$result = hzep_python::mapToPython(*$1);"
};

template <class T>
class set {
    %typemap(in) const std::set< T > & (std::vector< T > items, std::set< T > distinct), std::set< T > & (std::vector< T > items, std::set< T > distinct) {
        if (!hzep_python::listFromPython($input, items, $descriptor(T *), HZEP_PLACE))
            SWIG_fail;
        distinct.insert(items.begin(), items.end());
        $1 = &distinct;
    }
    %typemap(typecheck, precedence=SWIG_TYPECHECK_STRING_ARRAY) const std::set< T > &, std::set< T > & "$1 = hzep_python::isListLike($input);"
    %typemap(out) std::set< T > "$result = hzep_python::setToPython($1);"
    %typemap(out) const std::set< T > & "$result = hzep_python::setToPython(*$1);"
};

} // namespace std

// A list that is read and written.
%typemap(in) std::vector< HZEPPlatform * > &platforms (std::vector< HZEPPlatform * > items) {
    if (!hzep_python::listFromPython($input, items, $descriptor(HZEPPlatform *), HZEP_PLACE))
        SWIG_fail;
    $1 = &items;
}
