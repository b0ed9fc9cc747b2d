// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "HostErrors.h"
#include "ScriptHandles.h"

#include <Python.h>

#include <new>
#include <stdexcept>

/// What every generated Python function does beside the call itself.
namespace hzep_python {

/// The library refused or failed: hzep_platform.PlatformError. A handle without its object: hzep_platform.ClosedError, which is one.
inline PyObject* platformError = nullptr;
inline PyObject* closedError = nullptr;

inline void addExceptions(PyObject* module) {
    platformError = PyErr_NewExceptionWithDoc("hzep_platform.PlatformError", "The library refused a call or failed in it.", nullptr, nullptr);
    closedError = PyErr_NewExceptionWithDoc("hzep_platform.ClosedError", "The object is closed, or what owned it is gone.", platformError, nullptr);
    PyModule_AddObjectRef(module, "PlatformError", platformError);
    PyModule_AddObjectRef(module, "ClosedError", closedError);
}

inline void raiseClosed(const char* text) {
    PyErr_SetString(closedError, text);
}

/// To be called in a handler: no exception crosses into Python.
inline void raiseCurrentException() {
    try {
        throw;
    } catch (const hzep_script::IndexError& error) {
        PyErr_SetString(PyExc_IndexError, error.what());
    } catch (const std::bad_alloc&) {
        PyErr_NoMemory();
    } catch (const std::exception& error) {
        PyErr_SetString(platformError, error.what());
    } catch (...) {
        PyErr_SetString(platformError, "Unknown exception occurred");
    }
}

} // namespace hzep_python
