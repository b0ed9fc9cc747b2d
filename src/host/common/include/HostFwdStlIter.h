// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "HostFwdIter.h"

/// HostFwdIter over a standard container, which must outlive it unchanged.
template <class Container>
class HostFwdStlIter : public HostFwdIter<typename Container::value_type> {
public:
    explicit HostFwdStlIter(const Container& container) : at_(container.begin()), end_(container.end()) {}

    bool hasNext() const override { return at_ != end_; }
    typename Container::value_type next() override { return *at_++; }

private:
    typename Container::const_iterator at_;
    typename Container::const_iterator end_;
};
