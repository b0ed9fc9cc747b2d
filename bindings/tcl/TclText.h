// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "ScriptHandles.h"

#include <tcl.h>

#include <new>
#include <stdexcept>
#include <string>
#include <string_view>

/// Text and errors between Tcl and the library.
namespace hzep_tcl {

inline Tcl_Encoding utf8() {
    static Tcl_Encoding const encoding = Tcl_GetEncoding(nullptr, "utf-8");
    return encoding;
}

inline Tcl_Obj* toTcl(std::string_view text) {
    Tcl_DString converted;
    Tcl_ExternalToUtfDString(utf8(), text.data(), static_cast<int>(text.size()), &converted);
    Tcl_Obj* const made = Tcl_NewStringObj(Tcl_DStringValue(&converted), Tcl_DStringLength(&converted));
    Tcl_DStringFree(&converted);
    return made;
}

inline std::string fromTcl(Tcl_Obj* given) {
    int length = 0;
    const char* const bytes = Tcl_GetStringFromObj(given, &length);
    Tcl_DString converted;
    Tcl_UtfToExternalDString(utf8(), bytes, length, &converted);
    std::string text(Tcl_DStringValue(&converted), static_cast<std::size_t>(Tcl_DStringLength(&converted)));
    Tcl_DStringFree(&converted);
    return text;
}

/// The error's code is {HZEP KIND text}. False.
inline bool refuse(Tcl_Interp* interp, const char* kind, const std::string& text) {
    Tcl_Obj* const message = toTcl(text);
    Tcl_Obj* const code[] = {Tcl_NewStringObj("HZEP", -1), Tcl_NewStringObj(kind, -1), message};
    Tcl_SetObjErrorCode(interp, Tcl_NewListObj(3, code));
    Tcl_SetObjResult(interp, message);
    return false;
}

/// To be called in a handler: no exception crosses into Tcl.
inline void raiseCurrentException(Tcl_Interp* interp) {
    try {
        throw;
    } catch (const hzep_script::IndexError& error) {
        refuse(interp, "INDEX", error.what());
    } catch (const hzep_script::GoneError& error) {
        refuse(interp, "CLOSED", error.what());
    } catch (const std::bad_alloc&) {
        refuse(interp, "MEMORY", "out of memory");
    } catch (const std::exception& error) {
        refuse(interp, "PLATFORM", error.what());
    } catch (...) {
        refuse(interp, "PLATFORM", "Unknown exception occurred");
    }
}

/// "true" or "false" as such.
inline bool isTruthWord(Tcl_Obj* given) {
    const std::string_view text = Tcl_GetString(given);
    return text == "true" || text == "false";
}

inline bool isTruthValue(Tcl_Obj* given) {
    int value = 0;
    return Tcl_GetBooleanFromObj(nullptr, given, &value) == TCL_OK;
}

} // namespace hzep_tcl
