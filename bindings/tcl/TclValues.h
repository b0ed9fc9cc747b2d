// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "HZEPJSONText.h"
#include "TclHandles.h"

#include <boost/core/demangle.hpp>
#include <boost/property_tree/ptree.hpp>

#include <map>
#include <memory>
#include <set>
#include <typeinfo>
#include <vector>

/// Lists, sets and maps are Tcl's own values.
namespace hzep_tcl {

template <class T>
Tcl_Obj* itemToTcl(Tcl_Interp* interp, const T& item, swig_type_info* type) {
    if constexpr (std::is_same_v<T, std::string>)
        return toTcl(item);
    else if constexpr (std::is_pointer_v<T>)
        return toHandle(interp, item, type, false);
    else
        return toHandle(interp, new T(item), type, true);
}

template <class T>
Tcl_Obj* listToTcl(Tcl_Interp* interp, const std::vector<T>& items, swig_type_info* type) {
    Tcl_Obj* const list = Tcl_NewObj();
    for (const T& item : items)
        Tcl_ListObjAppendElement(nullptr, list, itemToTcl(interp, item, type));
    return list;
}

/// Takes the iterator over.
template <class T>
Tcl_Obj* walk(Tcl_Interp* interp, HostFwdIter<T>* source) {
    const std::unique_ptr<HostFwdIter<T>> owned(source);
    std::vector<T> items;
    while (owned && owned->hasNext())
        items.push_back(owned->next());
    swig_type_info* type = nullptr;
    if constexpr (std::is_pointer_v<T>)
        type = SWIG_TypeQuery((boost::core::demangle(typeid(std::remove_pointer_t<T>).name()) + " *").c_str());
    return listToTcl(interp, items, type);
}

template <class T>
bool listFromTcl(Tcl_Interp* interp, Tcl_Obj* given, std::vector<T>& items, swig_type_info* type) {
    int size = 0;
    Tcl_Obj** elements = nullptr;
    if (Tcl_ListObjGetElements(nullptr, given, &size, &elements) != TCL_OK)
        return refuse(interp, "TYPE", "expected a list but got \"" + fromTcl(given) + "\"");
    for (int i = 0; i < size; ++i) {
        if constexpr (std::is_same_v<T, std::string>) {
            items.push_back(fromTcl(elements[i]));
        } else {
            void* address = nullptr;
            if (!fromHandle(interp, elements[i], &address, type, false))
                return false;
            const auto object = static_cast<std::remove_pointer_t<T>*>(address);
            if constexpr (std::is_pointer_v<T>)
                items.push_back(object);
            else
                items.push_back(*object);
        }
    }
    return true;
}

inline Tcl_Obj* setToTcl(const std::set<std::string>& items) {
    Tcl_Obj* const list = Tcl_NewObj();
    for (const std::string& item : items)
        Tcl_ListObjAppendElement(nullptr, list, toTcl(item));
    return list;
}

inline Tcl_Obj* mapToTcl(const std::map<std::string, std::string>& entries) {
    Tcl_Obj* const dict = Tcl_NewDictObj();
    for (const auto& [key, value] : entries)
        Tcl_DictObjPut(nullptr, dict, toTcl(key), toTcl(value));
    return dict;
}

inline Tcl_Obj* treeToTcl(const boost::property_tree::ptree& tree) {
    if (tree.empty())
        return toTcl(tree.data());
    const bool isArray = std::all_of(tree.begin(), tree.end(), [](const auto& child) { return child.first.empty(); });
    Tcl_Obj* const result = isArray ? Tcl_NewListObj(0, nullptr) : Tcl_NewDictObj();
    for (const auto& [name, child] : tree) {
        if (isArray)
            Tcl_ListObjAppendElement(nullptr, result, treeToTcl(child));
        else
            Tcl_DictObjPut(nullptr, result, toTcl(name), treeToTcl(child));
    }
    return result;
}

inline bool treeFromTcl(Tcl_Interp* interp, Tcl_Obj* given, boost::property_tree::ptree& tree, swig_type_info* type) {
    const std::string text = fromTcl(given);
    if (!findHandle(interp, given) && (text.starts_with('{') || text.starts_with('['))) {
        try {
            HZEPJSONText::read(text, tree);
            return true;
        } catch (...) {
            raiseCurrentException(interp);
            return false;
        }
    }
    void* other = nullptr;
    if (!fromHandle(interp, given, &other, type, false))
        return false;
    tree = *static_cast<const boost::property_tree::ptree*>(other);
    return true;
}

/// Results beside the first one make a list; a call without a result of its own has a single one alone.
inline void addOutput(Tcl_Interp* interp, Tcl_Obj* output) {
    Call& call = Call::current();
    const int before = call.outputs++ + (call.hasResult ? 1 : 0);
    if (before == 0) {
        Tcl_SetObjResult(interp, output);
    } else {
        Tcl_Obj* const result = Tcl_GetObjResult(interp);
        Tcl_Obj* const list = before == 1 ? Tcl_NewListObj(1, &result) : Tcl_DuplicateObj(result);
        Tcl_ListObjAppendElement(nullptr, list, output);
        Tcl_SetObjResult(interp, list);
    }
}

} // namespace hzep_tcl
