// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "HPLPlatform.h"
#include "HPLScriptCaches.h"
#include "PythonExceptions.h"

#include <unordered_map>
#include <utility>

// Handles between Python and the library. To be included behind the generator's own runtime, whose functions it uses.

/// The wrapper's arguments stand in a variable of this name; a wrapper without any finds this one.
static PyObject* const swig_obj[1] = {nullptr};

namespace hzep_python {

/// Where an argument stands, for messages.
struct Place {
    const char* function;
    int argument;
};

/// False, with an exception pending: the one that is already there, else a TypeError.
inline bool refuse(const Place& place, const char* expected, PyObject* given) {
    if (!PyErr_Occurred())
        PyErr_Format(PyExc_TypeError, "%s: argument %d must be %s, not %s", place.function, place.argument, expected,
                     given == Py_None ? "None" : Py_TYPE(given)->tp_name);
    return false;
}

inline bool refuseClosed(PyObject* given) {
    raise(closedError, std::string("this ") + Py_TYPE(given)->tp_name + " is closed");
    return false;
}

/// The native object of a handle; false, with an exception pending, for what is no handle of that type and for a closed one.
inline bool fromHandle(PyObject* given, void** out, swig_type_info* type, int flags, bool orNone, const Place& place) {
    *out = nullptr;
    if (given == Py_None && orNone)
        return true;
    if (given == Py_None || !SWIG_IsOK(SWIG_ConvertPtr(given, out, type, flags)))
        return refuse(place, SWIG_TypePrettyName(type), given);
    return *out || refuseClosed(given);
}

/// As fromHandle, for an object that an operation takes over: the handle must own it.
inline bool fromOwningHandle(PyObject* given, void** out, swig_type_info* type, const Place& place) {
    if (!fromHandle(given, out, type, 0, false, place))
        return false;
    if (!SWIG_Python_GetSwigThis(given)->own)
        raise(PyExc_ValueError, std::string("this ") + Py_TYPE(given)->tp_name + " has an owner already");
    return !PyErr_Occurred();
}

/// The object lives inside that of the origin, which therefore stays while the part is held.
inline void keep(PyObject* part, PyObject* origin) {
    SwigPyObject* const handle = part && origin && part != origin && !SwigPyObject_Check(part) ? SWIG_Python_GetSwigThis(part) : nullptr;
    if (!handle || PyUnicode_Check(origin) || !SWIG_Python_GetSwigThis(origin) || PyObject_HasAttrString(part, "_origin"))
        return;
    if (PyObject_SetAttrString(part, "_origin", origin) != 0)
        PyErr_Clear();
}

/// After a call that took the object over.
inline void giveTo(PyObject* handle, PyObject* owner) {
    SWIG_Python_GetSwigThis(handle)->own = 0;
    keep(handle, owner);
}

/// One hardware platform has one Python object as long as both live: the cache has the object, this the weak reference that tells of its
/// end.
class HardwareHandles final : public host::NativeCacheObserver<HPLPlatform*, void*> {
public:
    using Cache = host::pyinfra::py_native_cache<HPLPlatform*>;

    static HardwareHandles& get() {
        static auto& handles = *new HardwareHandles;
        return handles;
    }

    /// A new reference; null without one.
    static PyObject* find(HPLPlatform* native) {
        void* const* const found = Cache::findScript(native);
        return found ? Py_NewRef(static_cast<PyObject*>(*found)) : nullptr;
    }

    void enter(HPLPlatform* native, PyObject* handle) {
        static PyMethodDef onDeath = {"onDeath", &HardwareHandles::handleDied, METH_O, nullptr};
        PyObject* const address = PyLong_FromVoidPtr(handle);
        PyObject* const callback = address ? PyCFunction_New(&onDeath, address) : nullptr;
        PyObject* const reference = callback ? PyWeakref_NewRef(handle, callback) : nullptr;
        Py_XDECREF(callback);
        Py_XDECREF(address);
        if (!reference) {
            PyErr_Clear(); // without a warning of its end the object can't be kept
            return;
        }
        Cache::enter(native, handle);
        drop(handle);
        references_.emplace(handle, reference);
    }

    /// The handle doesn't lead anywhere any more.
    void leave(PyObject* handle) {
        Cache::scriptDied(static_cast<void*>(handle));
        drop(handle);
    }

    void nativeDied(HPLPlatform*, void* const& script) noexcept override {
        if (!Py_IsInitialized())
            return;
        const PyGILState_STATE state = PyGILState_Ensure();
        const auto handle = static_cast<PyObject*>(script);
        if (SwigPyObject* const own = SWIG_Python_GetSwigThis(handle)) {
            own->ptr = nullptr;
            own->own = 0;
        }
        drop(handle);
        PyGILState_Release(state);
    }

private:
    HardwareHandles() { Cache::observers().push_back(this); }

    static PyObject* handleDied(PyObject* address, PyObject*) {
        get().leave(static_cast<PyObject*>(PyLong_AsVoidPtr(address)));
        Py_RETURN_NONE;
    }
    void drop(void* handle) {
        const auto reference = references_.extract(handle);
        if (!reference.empty())
            Py_DECREF(reference.mapped());
    }

    std::unordered_map<void*, PyObject*> references_;
};

/// A handle for what an operation gives: None for null, the same one for the same hardware platform.
template <class T>
PyObject* toHandle(const T* object, swig_type_info* type, int flags, PyObject* origin) {
    if (!object)
        Py_RETURN_NONE;
    hzep_script::handOut(object);
    void* const address = const_cast<void*>(static_cast<const void*>(object));
    if constexpr (std::is_base_of_v<HZEPHardwarePlatform, T>) {
        if (auto* const native = const_cast<HPLPlatform*>(dynamic_cast<const HPLPlatform*>(object))) {
            PyObject* handle = HardwareHandles::find(native);
            if (!handle && (handle = SWIG_NewPointerObj(address, type, flags)))
                HardwareHandles::get().enter(native, handle);
            keep(handle, origin);
            return handle;
        }
    }
    PyObject* const handle = SWIG_NewPointerObj(address, type, flags);
    keep(handle, origin);
    return handle;
}

/// Once its object is gone or given back, the handle is closed.
inline PyObject* closeHandle(PyObject* handle) {
    SwigPyObject* const own = SWIG_Python_GetSwigThis(handle);
    if (!own)
        return PyErr_Format(PyExc_TypeError, "%s is no handle", Py_TYPE(handle)->tp_name);
    HardwareHandles::get().leave(handle);
    own->ptr = nullptr;
    own->own = 0;
    Py_RETURN_NONE;
}

/// Results beside the first one make a tuple; a call without a result of its own has them alone.
inline PyObject* addOutput(PyObject* result, PyObject* output) {
    if (!result || !output || result == Py_None) {
        Py_XDECREF(result);
        return output;
    }
    PyObject* const first = PyTuple_CheckExact(result) ? result : PyTuple_Pack(1, result);
    PyObject* const second = first ? PyTuple_Pack(1, output) : nullptr;
    PyObject* const both = second ? PySequence_Concat(first, second) : nullptr;
    if (first != result)
        Py_XDECREF(first);
    Py_XDECREF(second);
    Py_DECREF(result);
    Py_DECREF(output);
    return both;
}

} // namespace hzep_python
