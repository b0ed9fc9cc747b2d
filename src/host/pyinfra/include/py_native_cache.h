// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "NativeCache.h"

#include <unordered_map>

namespace host::pyinfra {

/// Which Python object stands for which native one. A script object is a PyObject* that is not counted; here nobody knows Python.
template <class Native>
class py_native_cache : public NativeCache<py_native_cache<Native>, Native> {
public:
    using script_type = void*;

    // Never destroyed: native objects may die after every static.
    static NativeCacheObservers<Native, script_type>& observers() {
        static auto& list = *new NativeCacheObservers<Native, script_type>;
        return list;
    }
    static std::unordered_map<Native, script_type>& get_n2py_cache() {
        static auto& pairs = *new std::unordered_map<Native, script_type>;
        return pairs;
    }
    static std::unordered_map<script_type, Native>& get_py2n_cache() {
        static auto& pairs = *new std::unordered_map<script_type, Native>;
        return pairs;
    }

private:
    friend class NativeCache<py_native_cache, Native>;
    static auto& toScript_() { return get_n2py_cache(); }
    static auto& toNative_() { return get_py2n_cache(); }
};

} // namespace host::pyinfra
