// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "ScriptHandles.h"

#include <Python.h>

#include <new>
#include <stdexcept>
#include <string>

/// What every generated Python function does beside the call itself.
namespace hzep_python {

/// The library refused or failed: hzep_platform.PlatformError. A handle without its object: hzep_platform.ClosedError, which is one.
inline PyObject* platformError = nullptr;
inline PyObject* closedError = nullptr;

inline void addExceptions(PyObject* module) {
    platformError =
        PyErr_NewExceptionWithDoc("hzep_platform.PlatformError", "The library refused a call or failed in it.", nullptr, nullptr);
    closedError =
        PyErr_NewExceptionWithDoc("hzep_platform.ClosedError", "The object is closed, or what owned it is gone.", platformError, nullptr);
    PyModule_AddObjectRef(module, "PlatformError", platformError);
    PyModule_AddObjectRef(module, "ClosedError", closedError);
}

/// Bytes that are no UTF-8 come through, as in paths.
inline PyObject* toPython(const std::string& text) {
    return PyUnicode_DecodeUTF8(text.data(), static_cast<Py_ssize_t>(text.size()), "surrogateescape");
}

/// Text, or a path of any kind whose form is text. False for anything else: without an exception for what is of another type, else with the
/// one that says why, as for text that has no form in UTF-8.
inline bool fromPython(PyObject* given, std::string& text) {
    PyObject* const shown = PyUnicode_Check(given) ? Py_NewRef(given) : PyOS_FSPath(given);
    PyObject* const bytes = shown && PyUnicode_Check(shown) ? PyUnicode_AsEncodedString(shown, "utf-8", "surrogateescape") : nullptr;
    if (bytes)
        text.assign(PyBytes_AS_STRING(bytes), static_cast<std::size_t>(PyBytes_GET_SIZE(bytes)));
    Py_XDECREF(shown);
    Py_XDECREF(bytes);
    if (PyErr_Occurred() && PyErr_ExceptionMatches(PyExc_TypeError))
        PyErr_Clear();
    return bytes != nullptr;
}

inline void raise(PyObject* type, const std::string& text) {
    if (PyObject* const message = toPython(text)) {
        PyErr_SetObject(type, message);
        Py_DECREF(message);
    }
}

/// To be called in a handler: no exception crosses into Python.
inline void raiseCurrentException() {
    try {
        throw;
    } catch (const hzep_script::IndexError& error) {
        raise(PyExc_IndexError, error.what());
    } catch (const hzep_script::GoneError& error) {
        raise(closedError, error.what());
    } catch (const std::bad_alloc&) {
        PyErr_NoMemory();
    } catch (const std::exception& error) {
        raise(platformError, error.what());
    } catch (...) {
        raise(platformError, "Unknown exception occurred");
    }
}

} // namespace hzep_python
