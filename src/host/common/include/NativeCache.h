// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include <cstddef>
#include <unordered_map>
#include <vector>

namespace host {

/// Is told when a native object dies that a script object stands for. The pair is out of the cache by then; nothing may be raised.
template <class Native, class Script>
class NativeCacheObserver {
public:
    virtual void nativeDied(Native native, const Script& script) noexcept = 0;

protected:
    ~NativeCacheObserver() = default;
};

template <class Native, class Script>
using NativeCacheObservers = std::vector<NativeCacheObserver<Native, Script>*>;

/// What the caches of every script language do alike. Cache is a language's template over Native; it has `script_type`, `observers()`, and
/// `toScript_()` and `toNative_()` for the two directions. A bridge enters the object that it made for a native one, hands the same one out
/// for as long as both live, and tells when its own dies. Not locked.
template <class Cache, class Native>
class NativeCache {
public:
    /// Takes the place of a pair that has either of the two.
    template <class Script>
    static void enter(Native native, const Script& script) {
        take(native);
        scriptDied(script);
        Cache::toScript_().emplace(native, script);
        Cache::toNative_().emplace(script, native);
    }

    /// Null without one.
    static auto findScript(Native native) noexcept {
        const auto& pairs = Cache::toScript_();
        const auto found = pairs.find(native);
        return found == pairs.end() ? nullptr : &found->second;
    }
    template <class Script>
    static Native findNative(const Script& script) noexcept {
        const auto& pairs = Cache::toNative_();
        const auto found = pairs.find(script);
        return found == pairs.end() ? nullptr : found->second;
    }

    /// To be called as the native object dies.
    static void nativeDied(Native native) noexcept {
        const auto pair = take(native);
        if (pair.empty())
            return;
        // An observer may take itself off.
        auto& observers = Cache::observers();
        for (std::size_t i = observers.size(); i-- > 0;)
            observers[i]->nativeDied(native, pair.mapped());
    }

    /// To be called as the script object dies.
    template <class Script>
    static void scriptDied(const Script& script) noexcept {
        if (const Native native = findNative(script))
            take(native);
    }

private:
    /// The pair, which is in neither direction any more; empty without one.
    static auto take(Native native) noexcept {
        auto pair = Cache::toScript_().extract(native);
        if (!pair.empty())
            Cache::toNative_().erase(pair.mapped());
        return pair;
    }
};

} // namespace host
