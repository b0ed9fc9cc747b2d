// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors

// A list in Java: four operations. A list that an operation refers to comes as a copy, so that it can't dangle.

%define HZEP_COPIED_RESULT(type...)
%typemap(out) const type & "*(type **)&$result = new type(*$1);"
%typemap(out) type & "*(type **)&$result = new type(*$1);"
HZEP_OWN_RESULT(const type &)
HZEP_OWN_RESULT(type &)
%enddef

namespace std {

template <class T>
class vector {
    HZEP_COPIED_RESULT(std::vector< T >)
public:
    vector();
    %extend {
        int size() const { return static_cast<int>($self->size()); }
        T get(int index) const {
            return hzep_script::checkItem((*$self)[hzep_script::checkIndex(index, $self->size())]);
        }
        void add(T item) { $self->push_back(item); }
    }
};

template <class K, class T>
class map {
    HZEP_COPIED_RESULT(std::map< K, T >)
public:
    map();
    %extend {
        int size() const { return static_cast<int>($self->size()); }
        T get(const K& key) const {
            const auto found = $self->find(key);
            if (found == $self->end())
                throw hzep_script::IndexError("there is no " + key);
            return found->second;
        }
        void put(const K& key, T item) { (*$self)[key] = item; }
        std::vector< K > keys() const {
            std::vector< K > keys;
            for (const auto& entry : *$self)
                keys.push_back(entry.first);
            return keys;
        }
    }
};

template <class T>
class set {
    HZEP_COPIED_RESULT(std::set< T >)
public:
    set();
    %extend {
        int size() const { return static_cast<int>($self->size()); }
        bool contains(const T& item) const { return $self->count(item) != 0; }
        void add(const T& item) { $self->insert(item); }
        std::vector< T > items() const { return {$self->begin(), $self->end()}; }
    }
};

} // namespace std
