// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "HPLPlatform.h"
#include "HPLScriptCaches.h"
#include "TclText.h"

#include <map>
#include <set>
#include <string>
#include <type_traits>
#include <unordered_map>
#include <utility>

// Handles between Tcl and the library. To be included behind the generator's own runtime, whose types it uses.
namespace hzep_tcl {

/// A command that stands for a native object. It is closed when the command goes, and takes along the handles that came from it.
struct Handle {
    Tcl_Interp* interp = nullptr;
    Tcl_Command token = nullptr;
    void* native = nullptr; // null once the object is gone
    swig_type_info* type = nullptr;
    bool own = false;
    bool (*isThere)(const void*) = nullptr;
    Handle* origin = nullptr; // inside whose object this one lives
    std::set<Handle*> parts = {};

    bool isUsable() const {
        for (const Handle* at = this; at; at = at->origin)
            if (!at->native || !at->isThere(at->native))
                return false;
        return true;
    }
    void setOrigin(Handle* newOrigin) {
        for (const Handle* at = newOrigin; at; at = at->origin)
            if (at == this)
                return;
        if (origin)
            origin->parts.erase(this);
        origin = newOrigin;
        if (origin)
            origin->parts.insert(this);
    }
};

inline const char* className(const swig_type_info* type) {
    return type->clientdata ? static_cast<const swig_class*>(type->clientdata)->name : SWIG_TypePrettyName(type);
}

inline Tcl_Obj* nameOf(const Handle& handle) {
    Tcl_Obj* const name = Tcl_NewObj();
    Tcl_GetCommandFullName(handle.interp, handle.token, name);
    return name;
}

int runHandle(ClientData data, Tcl_Interp* interp, int objc, Tcl_Obj* const objv[]);

/// The handles of an interpreter. One native object has one handle as long as it lives; for hardware platforms the library's cache tells.
class Handles final {
public:
    using Cache = host::tcltasks::native_cache<HPLPlatform*>;

    static Handles& of(Tcl_Interp* interp) {
        static constexpr const char* kKey = "hzep_platform::handles";
        auto* handles = static_cast<Handles*>(Tcl_GetAssocData(interp, kKey, nullptr));
        if (!handles) {
            handles = new Handles;
            Tcl_SetAssocData(
                interp, kKey,
                [](ClientData data, Tcl_Interp*) {
                    Tcl_DeleteExitHandler(&Handles::releaseAll, data);
                    delete static_cast<Handles*>(data);
                },
                handles);
            Tcl_CreateExitHandler(&Handles::releaseAll, handles);
        }
        return *handles;
    }

    /// Null without one that still leads to its object.
    Handle* find(const Tcl_Interp* interp, void* native, swig_type_info* type, HPLPlatform* hardware) {
        if (hardware) {
            Tcl_Command const* const found = Cache::findScript(hardware);
            Handle* const handle = found ? Deaths::get().handleOf(*found) : nullptr;
            if (handle && handle->interp == interp)
                return handle->isUsable() ? handle : nullptr;
        }
        const auto found = byNative_.find({native, type});
        return found != byNative_.end() && found->second->isUsable() ? found->second : nullptr;
    }

    /// Takes the place of a handle for an object that was at this address before.
    Handle& add(Tcl_Interp* interp, void* native, swig_type_info* type, HPLPlatform* hardware) {
        if (const auto stale = byNative_.find({native, type}); stale != byNative_.end()) {
            stale->second->own = false;
            Tcl_DeleteCommandFromToken(interp, stale->second->token);
        }
        auto* const handle = new Handle{.interp = interp, .native = native, .type = type};
        const std::string name = std::string("::hzep_platform::") + className(type) + "#" + std::to_string(++made_);
        handle->token = Tcl_CreateObjCommand(interp, name.c_str(), &runHandle, handle, &Handles::onDelete);
        byNative_[{native, type}] = handle;
        if (hardware) {
            Cache::enter(hardware, handle->token);
            Deaths::get().enter(*handle);
        }
        return *handle;
    }

private:
    /// Told by the cache; knows the handles of all interpreters.
    class Deaths final : public host::NativeCacheObserver<HPLPlatform*, Tcl_Command> {
    public:
        static Deaths& get() {
            static auto& deaths = *new Deaths;
            return deaths;
        }
        void nativeDied(HPLPlatform*, Tcl_Command const& token) noexcept override {
            const auto found = handles_.extract(token);
            if (!found.empty())
                found.mapped()->native = nullptr;
        }
        void enter(Handle& handle) { handles_[handle.token] = &handle; }
        void leave(const Handle& handle) { handles_.erase(handle.token); }
        Handle* handleOf(Tcl_Command token) const {
            const auto found = handles_.find(token);
            return found == handles_.end() ? nullptr : found->second;
        }

    private:
        Deaths() { Cache::observers().push_back(this); }
        std::unordered_map<Tcl_Command, Handle*> handles_;
    };

    static void release(Handle& handle) {
        Cache::scriptDied(handle.token);
        Deaths::get().leave(handle);
        const auto* const type = static_cast<const swig_class*>(handle.type->clientdata);
        if (handle.own && handle.native && handle.isThere(handle.native) && type && type->destructor)
            type->destructor(handle.native);
        handle.native = nullptr;
        handle.own = false;
    }

    static void onDelete(ClientData data) {
        auto* const handle = static_cast<Handle*>(data);
        handle->setOrigin(nullptr);
        while (!handle->parts.empty()) {
            Handle* const part = *handle->parts.begin();
            part->setOrigin(nullptr);
            Tcl_DeleteCommandFromToken(part->interp, part->token);
        }
        auto& known = of(handle->interp).byNative_;
        std::erase_if(known, [handle](const auto& entry) { return entry.second == handle; });
        release(*handle);
        delete handle;
    }

    /// As the process ends: what belongs to the script ends in order.
    static void releaseAll(ClientData data) {
        for (auto& [native, handle] : static_cast<Handles*>(data)->byNative_)
            release(*handle);
    }

    std::map<std::pair<void*, swig_type_info*>, Handle*> byNative_;
    unsigned long made_ = 0;
};

/// What a wrapper says beside its result.
struct Call {
    Handle* self = nullptr;
    bool hasResult = true;
    int outputs = 0;

    static Call& current() {
        static Call call;
        return call;
    }
};

/// Null for what is no handle.
inline Handle* findHandle(Tcl_Interp* interp, Tcl_Obj* given) {
    Tcl_CmdInfo info;
    Tcl_Command const token = Tcl_GetCommandFromObj(interp, given);
    if (!token || !Tcl_GetCommandInfoFromToken(token, &info) || info.objProc != &runHandle)
        return nullptr;
    return static_cast<Handle*>(info.objClientData);
}

inline bool isHandle(Tcl_Interp* interp, Tcl_Obj* given, swig_type_info* type) {
    const Handle* const handle = findHandle(interp, given);
    return handle && SWIG_TypeCheckStruct(handle->type, type);
}

/// The native object of a handle, "" for none where that is allowed; false, with an error, for what is no handle of that type or closed.
inline bool fromHandle(Tcl_Interp* interp, Tcl_Obj* given, void** out, swig_type_info* type, bool orNone) {
    *out = nullptr;
    const std::string text = fromTcl(given);
    if (text.empty() && orNone)
        return true;
    const Handle* const handle = findHandle(interp, given);
    if (!handle && text.starts_with("::hzep_platform::") && text.find('#') != std::string::npos)
        return refuse(interp, "CLOSED", text + " is closed");
    swig_cast_info* const cast = handle ? SWIG_TypeCheckStruct(handle->type, type) : nullptr;
    if (!cast)
        return refuse(interp, "TYPE", std::string("expected a ") + className(type) + " but got \"" + text + "\"");
    if (!handle->isUsable())
        return refuse(interp, "CLOSED", "the object of " + text + " is gone");
    int newMemory = 0;
    *out = SWIG_TypeCast(cast, handle->native, &newMemory);
    return true;
}

/// As fromHandle, for an object that an operation takes over: the handle must own it.
inline bool fromOwningHandle(Tcl_Interp* interp, Tcl_Obj* given, void** out, swig_type_info* type) {
    if (!fromHandle(interp, given, out, type, false))
        return false;
    return findHandle(interp, given)->own || refuse(interp, "OWNER", fromTcl(given) + " has an owner already");
}

/// After a call that took the object over.
inline void giveToSelf(Tcl_Interp* interp, Tcl_Obj* given) {
    if (Handle* const handle = findHandle(interp, given)) {
        handle->own = false;
        handle->setOrigin(Call::current().self);
    }
}

/// The name of the handle for what an operation gives: "" for null, the same one for the same object.
template <class T>
Tcl_Obj* toHandle(Tcl_Interp* interp, const T* object, swig_type_info* type, bool own) {
    if (!object)
        return Tcl_NewObj();
    void* const address = const_cast<void*>(static_cast<const void*>(object));
    Handles& handles = Handles::of(interp);
    HPLPlatform* hardware = nullptr;
    if constexpr (std::is_base_of_v<HZEPHardwarePlatform, T>)
        hardware = const_cast<HPLPlatform*>(dynamic_cast<const HPLPlatform*>(object));
    Handle* handle = own ? nullptr : handles.find(interp, address, type, hardware);
    hzep_script::handOut(object);
    if (!handle) {
        handle = &handles.add(interp, address, type, hardware);
        handle->own = own;
        handle->isThere = [](const void* native) { return hzep_script::isUsable(static_cast<const T*>(native)); };
        handle->setOrigin(own ? nullptr : Call::current().self);
    }
    return nameOf(*handle);
}

} // namespace hzep_tcl
