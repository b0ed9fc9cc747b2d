// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "PythonHandles.h"

#include <boost/property_tree/ptree.hpp>

#include <map>
#include <set>
#include <string>
#include <type_traits>
#include <vector>

/// Lists, sets, maps and property trees are Python's own values.
namespace hzep_python {

/// A reference that is given back.
class Held {
public:
    explicit Held(PyObject* object) : object_(object) {}
    ~Held() { Py_XDECREF(object_); }
    Held(const Held&) = delete;
    Held& operator=(const Held&) = delete;
    PyObject* get() const { return object_; }
    PyObject* release() { return std::exchange(object_, nullptr); }
    explicit operator bool() const { return object_ != nullptr; }

private:
    PyObject* object_;
};

template <class T>
PyObject* itemToPython(const T& item, swig_type_info* type, PyObject* origin) {
    if constexpr (std::is_same_v<T, std::string>)
        return toPython(item);
    else if constexpr (std::is_pointer_v<T>)
        return toHandle(item, type, 0, origin);
    else
        return toHandle(new T(item), type, SWIG_POINTER_OWN, nullptr);
}

template <class T>
PyObject* listToPython(const std::vector<T>& items, swig_type_info* type, PyObject* origin) {
    Held list(PyList_New(static_cast<Py_ssize_t>(items.size())));
    for (std::size_t i = 0; list && i < items.size(); ++i) {
        PyObject* const item = itemToPython(items[i], type, origin);
        if (!item)
            return nullptr;
        PyList_SET_ITEM(list.get(), static_cast<Py_ssize_t>(i), item);
    }
    return list.release();
}

template <class T>
bool itemFromPython(PyObject* given, T& item, swig_type_info* type, const Place& place) {
    if constexpr (std::is_same_v<T, std::string>) {
        return fromPython(given, item) || refuse(place, "a list of str", given);
    } else {
        void* address = nullptr;
        if (!fromHandle(given, &address, type, 0, false, place))
            return false;
        const auto object = static_cast<std::remove_pointer_t<T>*>(address);
        if (!hzep_script::isUsable(object)) {
            raise(closedError, "the object of an item is gone");
            return false;
        }
        if constexpr (std::is_pointer_v<T>)
            item = object;
        else
            item = *object;
        return true;
    }
}

/// Anything that can be walked, but text.
inline bool isListLike(PyObject* given) {
    return !PyUnicode_Check(given) && !PyBytes_Check(given) && (PySequence_Check(given) || PyIter_Check(given) || PyAnySet_Check(given));
}

template <class T>
bool listFromPython(PyObject* given, std::vector<T>& items, swig_type_info* type, const Place& place) {
    if (!isListLike(given))
        return refuse(place, "a list", given);
    const Held walk(PyObject_GetIter(given));
    while (walk) {
        const Held next(PyIter_Next(walk.get()));
        if (!next)
            break;
        if (!itemFromPython(next.get(), items.emplace_back(), type, place))
            return false;
    }
    return !PyErr_Occurred();
}

inline PyObject* setToPython(const std::set<std::string>& items) {
    Held set(PySet_New(nullptr));
    for (const std::string& item : items) {
        const Held text(toPython(item));
        if (!set || !text || PySet_Add(set.get(), text.get()) != 0)
            return nullptr;
    }
    return set.release();
}

inline PyObject* mapToPython(const std::map<std::string, std::string>& entries) {
    Held map(PyDict_New());
    for (const auto& [key, value] : entries) {
        const Held name(toPython(key)), text(toPython(value));
        if (!map || !name || !text || PyDict_SetItem(map.get(), name.get(), text.get()) != 0)
            return nullptr;
    }
    return map.release();
}

/// A value is a str, an array a list, all else a dict, whose last child of a name counts. An empty tree is "".
inline PyObject* treeToPython(const boost::property_tree::ptree& tree) {
    if (tree.empty())
        return toPython(tree.data());
    if (Py_EnterRecursiveCall(" in a property tree") != 0)
        return nullptr;
    bool isArray = true;
    for (const auto& child : tree)
        isArray = isArray && child.first.empty();
    Held result(isArray ? PyList_New(0) : PyDict_New());
    bool ok = static_cast<bool>(result);
    for (auto child = tree.begin(); ok && child != tree.end(); ++child) {
        const Held value(treeToPython(child->second));
        const Held name(isArray ? Py_NewRef(Py_None) : toPython(child->first));
        ok = value && name &&
             (isArray ? PyList_Append(result.get(), value.get()) : PyDict_SetItem(result.get(), name.get(), value.get())) == 0;
    }
    Py_LeaveRecursiveCall();
    return ok ? result.release() : nullptr;
}

inline bool treeFromPython(PyObject* given, boost::property_tree::ptree& tree, swig_type_info* type, const Place& place);

inline bool childFromPython(PyObject* given, boost::property_tree::ptree& parent, const std::string& name, swig_type_info* type,
                            const Place& place) {
    boost::property_tree::ptree& child = parent.push_back({name, {}})->second;
    return treeFromPython(given, child, type, place);
}

/// A dict, a list, or a value: text, a number, a truth value, None for "null"; or a PropertyTree.
inline bool treeFromPython(PyObject* given, boost::property_tree::ptree& tree, swig_type_info* type, const Place& place) {
    if (Py_EnterRecursiveCall(" in a property tree") != 0)
        return false;
    constexpr const char* kExpected = "a dict, a list or a value";
    bool ok = true;
    if (PyDict_Check(given)) {
        PyObject *key = nullptr, *value = nullptr;
        std::string name;
        for (Py_ssize_t at = 0; ok && PyDict_Next(given, &at, &key, &value);) {
            // A key that is a path runs code, which may drop the entry.
            const Held heldKey(Py_NewRef(key)), heldValue(Py_NewRef(value));
            ok =
                (fromPython(key, name) || refuse(place, "a dict with keys of str", key)) && childFromPython(value, tree, name, type, place);
        }
    } else if (PyList_Check(given) || PyTuple_Check(given)) {
        for (Py_ssize_t i = 0; ok && i < PySequence_Fast_GET_SIZE(given); ++i) {
            const Held item(Py_NewRef(PySequence_Fast_GET_ITEM(given, i)));
            ok = childFromPython(item.get(), tree, "", type, place);
        }
    } else if (PyUnicode_Check(given)) {
        ok = fromPython(given, tree.data()) || refuse(place, kExpected, given);
    } else if (given == Py_None || PyBool_Check(given)) {
        tree.data() = given == Py_None ? "null" : given == Py_True ? "true" : "false";
    } else if (PyLong_Check(given) || PyFloat_Check(given)) {
        const Held text(PyObject_Str(given));
        ok = (text && fromPython(text.get(), tree.data())) || refuse(place, kExpected, given);
    } else {
        void* other = nullptr;
        if (!SWIG_IsOK(SWIG_ConvertPtr(given, &other, type, 0)))
            ok = refuse(place, kExpected, given);
        else if (!other)
            ok = refuseClosed(given);
        else
            tree = *static_cast<const boost::property_tree::ptree*>(other);
    }
    Py_LeaveRecursiveCall();
    return ok;
}

} // namespace hzep_python
