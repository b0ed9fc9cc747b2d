// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

/// Forward iterator over the elements of a model object; made by a `create...Iter` operation and deleted by its caller.
template <class T>
class HostFwdIter {
public:
    virtual ~HostFwdIter() = default;
    virtual bool hasNext() const = 0;
    /// The element at hand, then a step on. Only to be called while hasNext() holds.
    virtual T next() = 0;
};
