// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "NativeCache.h"

#include <unordered_map>

struct Tcl_Command_;

namespace host::tcltasks {

/// Which Tcl object stands for which native one. A script object is a command, told by its token; a command of an interpreter that is gone
/// must have been taken out before.
template <class Native>
class native_cache : public NativeCache<native_cache<Native>, Native> {
public:
    using script_type = Tcl_Command_*;

    // Never destroyed: native objects may die after every static.
    static NativeCacheObservers<Native, script_type>& observers() {
        static auto& list = *new NativeCacheObservers<Native, script_type>;
        return list;
    }
    static std::unordered_map<Native, script_type>& get_n2t_cache() {
        static auto& pairs = *new std::unordered_map<Native, script_type>;
        return pairs;
    }
    static std::unordered_map<script_type, Native>& get_t2n_cache() {
        static auto& pairs = *new std::unordered_map<script_type, Native>;
        return pairs;
    }

private:
    friend class NativeCache<native_cache, Native>;
    static auto& toScript_() { return get_n2t_cache(); }
    static auto& toNative_() { return get_t2n_cache(); }
};

} // namespace host::tcltasks
