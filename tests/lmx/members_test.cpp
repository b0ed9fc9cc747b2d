// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include <gtest/gtest.h>

#include "Outcome.h"
#include "ProbeLMX.h"

#include <memory>
#include <type_traits>

namespace {

using namespace Probe;
using lmx60::lmx_exception;

std::unique_ptr<Leaf> leaf(const std::wstring& n) {
    auto made = std::make_unique<Leaf>();
    made->SetN(n);
    return made;
}

TEST(Members, AFreshObjectHoldsDeclaredDefaultsWithFlagsFalse) {
    Values values;
    EXPECT_EQ(values.GetText(), L"a \"b\"\n");
    EXPECT_EQ(values.GetUint(), 15u);
    EXPECT_EQ(values.GetCount(), 7);
    EXPECT_EQ(values.GetLong(), 0);
    EXPECT_FALSE(values.IssetUint());
    EXPECT_EQ(values.SetUint(15), lmx60::error_none);
    EXPECT_TRUE(values.IssetUint());
    EXPECT_FALSE(values == Values()) << "flags count in a comparison";
    values.SetUint(16);
    values.UnsetUint();
    EXPECT_EQ(values.GetUint(), 15u);
    EXPECT_TRUE(values == Values());

    Tree tree;
    EXPECT_EQ(tree.GetId(), 3u);
    EXPECT_FALSE(tree.IsOccursOk()) << "a default does not set a required attribute";
    static_assert(
        !std::is_invocable_v<decltype([](auto text) -> decltype(std::declval<Values&>().SetAuto(text)) { return {}; }), const char*>,
        "text must not become a boolean");
}

TEST(Members, TextOfEachLengthKeepsItsValue) {
    Leaf before;
    for (const std::size_t length : {0, 1, 22, 23, 24, 25, 1000, 24, 23, 0}) {
        const std::wstring text(length, L'x');
        Leaf changed = before; // from shorter and from longer text
        changed.SetN(text);
        changed.SetN(changed.GetN());
        EXPECT_EQ(changed.GetN(), text);
        EXPECT_EQ(changed.GetNUtf8(), std::string(length, 'x'));
        EXPECT_FALSE(changed == before);
        before.swap(changed);
        EXPECT_EQ(before.GetN(), text);
    }
    before.SetN(L"\u00e9\u20ac");
    EXPECT_EQ(before.GetNUtf8(), "\xc3\xa9\xe2\x82\xac");
}

TEST(Members, ASingleChildIsOwned) {
    Tree tree;
    const Tree& constant = tree;
    EXPECT_THROW(constant.GetLeaf(), lmx_exception);
    EXPECT_THROW(constant.GetSpare(), lmx_exception);
    tree.UnsetSpare();
    EXPECT_FALSE(tree.IssetSpare());

    EXPECT_EQ(tree.AssignSpare(leaf(L"a").release()), nullptr);
    EXPECT_EQ(tree.AssignSpare(leaf(L"b").release()), nullptr);
    EXPECT_EQ(constant.GetSpare().GetN(), L"b");
    EXPECT_EQ(tree.AssignSpare(&tree.GetSpare()), nullptr) << "its own child stays";
    tree.AssignSpare(*leaf(L"c"));
    EXPECT_EQ(constant.GetSpare().GetN(), L"c");
    const std::unique_ptr<Leaf> given(tree.AssignSpare(nullptr));
    ASSERT_TRUE(given);
    EXPECT_EQ(given->GetN(), L"c");
    EXPECT_FALSE(tree.IssetSpare());
    EXPECT_EQ(tree.AssignSpare(nullptr), nullptr);

    tree.SetId(1);
    tree.SetTitle(L"");
    tree.AppendMany();
    tree.GetLeaf();
    EXPECT_TRUE(tree.IsOccursOk());
    std::unique_ptr<Leaf>(tree.AssignLeaf(nullptr));
    EXPECT_FALSE(tree.IsOccursOk());
    tree.GetLeaf();
    tree.ClearMany();
    EXPECT_FALSE(tree.IsOccursOk()) << "a list below its minimum";
}

TEST(Members, AListOwnsItsElements) {
    Tree tree;
    const Tree& constant = tree;
    EXPECT_THROW(constant.GetId(0), lmx_exception);
    EXPECT_THROW(tree.BackId(), lmx_exception);
    tree.GetId(5);
    EXPECT_EQ(tree.SizeId(), 6u);
    EXPECT_EQ(constant.GetId(5), Leaf());
    tree.ClearId();

    tree.AppendId().SetN(L"1");
    tree.AppendId(leaf(L"3").release());
    tree.InsertId(1, leaf(L"2").release());
    tree.InsertId(99, leaf(L"4").release());
    tree.InsertId(0).SetN(L"0");
    tree.AssignId(99, leaf(L"5").release());
    tree.AssignId(99, *leaf(L"6"));
    EXPECT_EQ(tree.AssignId(1, leaf(L"one").release()), nullptr);
    tree.AssignId(2, *leaf(L"two"));
    tree.AssignId(2, tree.GetId(2));
    tree.DeleteId(0);
    EXPECT_THROW(tree.DeleteId(6), lmx_exception);
    const std::unique_ptr<Leaf> taken(tree.AssignId(2, nullptr));
    ASSERT_TRUE(taken);
    EXPECT_EQ(taken->GetN(), L"3");
    tree.AppendId(nullptr);
    std::wstring all;
    for (std::size_t i = 0; i < constant.SizeId(); ++i) {
        all += constant.GetId(i).GetN() + L" ";
    }
    EXPECT_EQ(all, L"one two 4 5 6 ");
    EXPECT_EQ(constant.BackId().GetN(), L"6");
}

TEST(Members, CopiesAreDeepAndSwapsComplete) {
    Tree tree;
    tree.SetId(8);
    tree.GetBelow().GetBelow().SetTitle(L"deep");
    tree.AppendId().SetN(L"x");
    tree.GetPick().SelectRight();
    const std::unique_ptr<Tree> copy(tree.do_clone());
    EXPECT_TRUE(*copy == tree);
    copy->GetBelow().GetBelow().SetTitle(L"other");
    EXPECT_FALSE(*copy == tree);
    EXPECT_EQ(tree.GetBelow().GetBelow().GetTitle(), L"deep");
    Tree third;
    third = tree;
    third.swap(*copy);
    EXPECT_TRUE(*copy == tree);
    tree = static_cast<const Tree&>(tree);
    EXPECT_TRUE(*copy == tree);
    tree.reset();
    EXPECT_TRUE(tree == Tree());
}

TEST(Members, AChoiceHoldsOneMember) {
    InnerConfig config;
    EXPECT_EQ(config.GetChoice(), InnerConfig::Choice_None);
    EXPECT_EQ(InnerConfig::Choice_None, 3);
    EXPECT_FALSE(config.IsOccursOk());
    config.GetOn().SetN(L"a");
    EXPECT_EQ(config.GetChoice(), InnerConfig::Choice_On);
    config.SetWord(L"w");
    EXPECT_EQ(config.GetChoice(), InnerConfig::Choice_Word);
    EXPECT_FALSE(config.IssetOn());
    EXPECT_THROW(std::as_const(config).GetOn(), lmx_exception);
    config.SelectOff();
    EXPECT_EQ(config.GetWord(), L"");
    EXPECT_FALSE(config.IsOccursOk()) << "a selected list below its minimum";
    config.AppendOff();
    EXPECT_TRUE(config.IsOccursOk());
    config.UnsetOn();
    EXPECT_EQ(config.SizeOff(), 1u) << "unset of what isn't selected";
    EXPECT_EQ(config.AssignOn(nullptr), nullptr);
    EXPECT_EQ(config.SizeOff(), 1u);
    EXPECT_EQ(config.AssignOn(leaf(L"b").release()), nullptr);
    EXPECT_EQ(config.SizeOff(), 0u);
    const std::unique_ptr<Leaf> given(config.AssignOn(nullptr));
    EXPECT_EQ(given->GetN(), L"b");
    EXPECT_FALSE(config.IsOccursOk());
    config.SelectOn();
    config.GetOn().SetN(L"c");
    config.SelectOn();
    EXPECT_EQ(config.GetOn().GetN(), L"") << "selecting releases the old choice, the same one too";
    config.release_choice();
    EXPECT_EQ(config.GetChoice(), InnerConfig::Choice_None);
}

} // namespace
