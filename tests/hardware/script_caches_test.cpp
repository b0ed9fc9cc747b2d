// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "HPLPlatform.h"
#include "HPLScriptCaches.h"

#include <gtest/gtest.h>

#include <memory>
#include <utility>
#include <vector>

namespace {

using Cache = host::pyinfra::py_native_cache<HPLPlatform*>;

class Deaths final : public host::NativeCacheObserver<HPLPlatform*, void*> {
public:
    Deaths() { Cache::observers().push_back(this); }
    ~Deaths() { Cache::observers().pop_back(); }
    void nativeDied(HPLPlatform* native, void* const& script) noexcept override {
        EXPECT_EQ(Cache::findScript(native), nullptr);
        told.emplace_back(native, script);
    }
    std::vector<std::pair<HPLPlatform*, void*>> told;
};

TEST(ScriptCaches, APairGoesWithEitherOfItsObjects) {
    Deaths deaths;
    int one = 0, other = 0;
    auto platform = std::make_unique<HPLPlatform>();
    HPLPlatform* const native = platform.get();

    Cache::enter(native, &one);
    ASSERT_NE(Cache::findScript(native), nullptr);
    EXPECT_EQ(*Cache::findScript(native), &one);
    EXPECT_EQ(Cache::findNative(static_cast<void*>(&one)), native);
    Cache::enter(native, &other);
    EXPECT_EQ(Cache::findNative(static_cast<void*>(&one)), nullptr);

    Cache::scriptDied(static_cast<void*>(&other));
    EXPECT_EQ(Cache::findScript(native), nullptr);
    Cache::enter(native, &one);
    HPLPlatform second;
    Cache::enter(&second, &one); // an object stands for one platform
    EXPECT_EQ(Cache::findScript(native), nullptr);
    Cache::enter(native, &other);
    EXPECT_TRUE(deaths.told.empty());

    platform.reset();
    EXPECT_EQ(deaths.told, (std::vector<std::pair<HPLPlatform*, void*>>{{native, &other}}));
    EXPECT_TRUE(Cache::get_n2py_cache().size() == 1 && Cache::get_py2n_cache().size() == 1);
    Cache::scriptDied(static_cast<void*>(&one));
    EXPECT_TRUE(Cache::get_n2py_cache().empty() && Cache::get_py2n_cache().empty());
}

} // namespace
