// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "TclHandles.h"

#include <iterator>
#include <sstream>
#include <vector>

/// The commands of the package: a class, `CLASS new ?ARGUMENT...?` and `CLASS OPERATION ?ARGUMENT...?`, and a handle,
/// `HANDLE OPERATION ?ARGUMENT...?` and `HANDLE close`.
namespace hzep_tcl {

/// The generator's functions by their flat names, `CLASS_OPERATION`.
inline std::map<std::string, swig_wrapper, std::less<>>& functions() {
    static auto& all = *new std::map<std::string, swig_wrapper, std::less<>>;
    return all;
}

/// Of the class or of one that it is derived from; null without one.
inline swig_wrapper findMethod(const swig_class& type, const char* name) {
    static auto& tables = *new std::map<const swig_class*, std::map<std::string, swig_wrapper, std::less<>>>;
    auto& table = tables[&type];
    if (table.empty())
        for (const swig_method* method = type.methods; method && method->name; ++method)
            table.emplace(method->name, method->method);
    if (const auto found = table.find(name); found != table.end())
        return found->second;
    for (const char** base = type.base_names; base && *base; ++base) {
        const swig_type_info* const info = SWIG_TypeQueryModule(type.module, type.module, *base);
        if (const swig_wrapper found =
                info && info->clientdata ? findMethod(*static_cast<const swig_class*>(info->clientdata), name) : nullptr)
            return found;
    }
    return nullptr;
}

/// The generator tells a wrong number of arguments as "...:hzep_platform::CLASS_OPERATION self NAME... argument N".
inline std::string tellUsage(const std::string& told, const std::string& command) {
    const std::size_t at = told.find(":hzep_platform::");
    if (!told.starts_with("Wrong ") || at == std::string::npos)
        return told;
    std::istringstream words(told.substr(at + 1));
    const std::vector<std::string> all(std::istream_iterator<std::string>(words), {});
    std::string usage = "wrong # args: should be \"" + command;
    for (std::size_t i = 1; i + 2 < all.size(); ++i)
        if (all[i] != "self")
            usage += " " + all[i];
    return usage + "\"";
}

inline int invoke(Tcl_Interp* interp, swig_wrapper wrapper, Handle* self, std::vector<Tcl_Obj*> words, const std::string& command) {
    const Call outer = std::exchange(Call::current(), Call{.self = self});
    Tcl_ResetResult(interp);
    for (Tcl_Obj* word : words)
        Tcl_IncrRefCount(word);
    const int outcome = wrapper(nullptr, interp, static_cast<int>(words.size()), words.data());
    for (Tcl_Obj* word : words)
        Tcl_DecrRefCount(word);
    Call::current() = outer;
    if (outcome != TCL_OK) {
        Tcl_Obj* const options = Tcl_GetReturnOptions(interp, outcome);
        Tcl_Obj* const key = Tcl_NewStringObj("-errorcode", -1);
        Tcl_Obj* code = nullptr;
        Tcl_IncrRefCount(options);
        Tcl_IncrRefCount(key);
        Tcl_DictObjGet(nullptr, options, key, &code);
        if (!code || !std::string_view(Tcl_GetString(code)).starts_with("HZEP "))
            refuse(interp, "TYPE", tellUsage(fromTcl(Tcl_GetObjResult(interp)), command));
        Tcl_DecrRefCount(key);
        Tcl_DecrRefCount(options);
    }
    return outcome;
}

inline int runHandle(ClientData data, Tcl_Interp* interp, int objc, Tcl_Obj* const objv[]) {
    auto* const handle = static_cast<Handle*>(data);
    if (objc < 2) {
        Tcl_WrongNumArgs(interp, 1, objv, "operation ?arg ...?");
        return TCL_ERROR;
    }
    const char* const operation = Tcl_GetString(objv[1]);
    if (std::string_view(operation) == "close" && objc == 2)
        return Tcl_DeleteCommandFromToken(interp, handle->token) == 0 ? TCL_OK : TCL_ERROR;
    const swig_wrapper wrapper = findMethod(*static_cast<const swig_class*>(handle->type->clientdata), operation);
    if (!wrapper) {
        refuse(interp, "TYPE", std::string(className(handle->type)) + " has no operation \"" + fromTcl(objv[1]) + "\"");
        return TCL_ERROR;
    }
    std::vector<Tcl_Obj*> words = {objv[1], nameOf(*handle)};
    words.insert(words.end(), objv + 2, objv + objc);
    return invoke(interp, wrapper, handle, std::move(words), fromTcl(objv[0]) + " " + operation);
}

inline int runClass(ClientData data, Tcl_Interp* interp, int objc, Tcl_Obj* const objv[]) {
    const auto& type = *static_cast<const swig_class*>(data);
    if (objc < 2) {
        Tcl_WrongNumArgs(interp, 1, objv, "new|operation ?arg ...?");
        return TCL_ERROR;
    }
    const char* const operation = Tcl_GetString(objv[1]);
    swig_wrapper wrapper = nullptr;
    if (std::string_view(operation) == "new") {
        wrapper = type.constructor;
    } else if (!findMethod(type, operation)) {
        const auto found = functions().find(std::string(type.name) + "_" + operation);
        wrapper = found == functions().end() ? nullptr : found->second;
    }
    if (!wrapper) {
        refuse(interp, "TYPE", std::string("the class ") + type.name + " has no operation \"" + fromTcl(objv[1]) + "\"");
        return TCL_ERROR;
    }
    return invoke(interp, wrapper, nullptr, std::vector<Tcl_Obj*>(objv + 1, objv + objc), fromTcl(objv[0]) + " " + operation);
}

/// Puts the classes' commands in the place of the generator's own. Containers and iterators have none: they are lists and dicts.
inline void install(Tcl_Interp* interp, const swig_command_info* commands, std::string_view prefix) {
    for (; commands->name; ++commands) {
        Tcl_DeleteCommand(interp, commands->name);
        if (commands->wrapper != reinterpret_cast<swig_wrapper>(&SWIG_Tcl_ObjectConstructor)) {
            functions().emplace(std::string_view(commands->name).substr(prefix.size()), commands->wrapper);
            continue;
        }
        const std::string_view type = SWIG_TypePrettyName(*static_cast<const swig_class*>(commands->clientdata)->type);
        if (!type.starts_with("std::") && !type.starts_with("HostFwdIter<"))
            Tcl_CreateObjCommand(interp, commands->name, &runClass, commands->clientdata, nullptr);
    }
    // A script may import the classes.
    if (Tcl_Namespace* const own = Tcl_FindNamespace(interp, "::hzep_platform", nullptr, 0))
        Tcl_Export(interp, own, "*", 0);
}

} // namespace hzep_tcl
