// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "HostErrors.h"
#include "HostZip.h"
#include "HostZipUpdate.h"
#include "TempDir.h"
#include "ZipBuilder.h"

#include <gtest/gtest.h>

namespace {

class Digest : public testing::Test {
protected:
    std::string digestOf(const ZipBuilder& archive) {
        const std::string path = dir_.write("any.kar", archive.bytes());
        HostZip::attachDigestEn(path);
        EXPECT_TRUE(HostZip::verifyDigest(path));
        return HostZip::getDigest(path);
    }

    TempDir dir_;
    const std::string archive_ = dir_.path("plat.kar");
};

TEST_F(Digest, IsWhatTheDocumentationSays) {
    // Over name length, name, size and SHA-256 of the content of each member, worked out by another program.
    EXPECT_EQ(digestOf(ZipBuilder().add("b.txt", "hi").add("a/").add("a/c")),
              "a352f346f19f092725bbbc0364a18210e80db3467a7e9b19433a037da194741a");
    EXPECT_EQ(digestOf(ZipBuilder()), "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855");

    // The first revision has the contents themselves in place of their hashes.
    const std::string first = "hzep-digest-1:sha256:a2ba5c94c2efa25a6a24de1bfb2a553bc77d7c06898f5bcaaae371fcedd81956";
    for (const char* content : {"hi", "ho"}) {
        ZipBuilder(archive_).add("b.txt", content).add("a/").add("a/c").setComment(first).write();
        EXPECT_EQ(HostZip::verifyDigest(archive_), content == std::string("hi"));
    }
    HostZip::attachDigestEn(archive_);
    EXPECT_TRUE(HostZip::verifyDigest(archive_));
    EXPECT_EQ(dir_.read("plat.kar").find("hzep-digest-1"), std::string::npos);
}

TEST_F(Digest, WhatHasNotChangedIsNotReadAgain) {
    const auto add = [&](bool withDigest) {
        HostZipUpdate update(archive_);
        update.put("added", "small");
        if (withDigest)
            update.attachDigest();
        update.commit();
    };
    const auto flip = [&](const std::string& mark, std::size_t behind) {
        std::string bytes = dir_.read("plat.kar");
        char& byte = bytes[bytes.find(mark) + behind];
        byte = static_cast<char>(byte ^ 1);
        dir_.write("plat.kar", bytes);
    };
    const std::string field("hz\x2d\0\x01", 5);
    ZipBuilder(archive_).addStored("a", "alpha").add("folder/").add("b", std::string(5000, 'b')).write();
    add(true);
    EXPECT_TRUE(HostZip::verifyDigest(archive_));

    // A hash that the stamp does not speak of is worked out anew.
    flip(field, field.size() + 12);
    add(true);
    EXPECT_TRUE(HostZip::verifyDigest(archive_));

    // Damage is not read, and so neither found nor blessed: verifying finds it.
    flip("alpha", 0);
    add(true);
    EXPECT_THROW(HostZip::verifyDigest(archive_), HostError);

    // Without a stamp to speak of them there are no hashes, and everything is read.
    add(false);
    EXPECT_EQ(dir_.read("plat.kar").find(field), std::string::npos);
    EXPECT_THROW(add(true), HostError);
}

TEST_F(Digest, CoversContentNotForm) {
    const std::string text(1000, 't');
    const std::string digest = digestOf(ZipBuilder().add("a", text).add("b", "beta"));
    EXPECT_EQ(digestOf(ZipBuilder().add("b", "beta").addStored("a", text).setComment("note")), digest);
    for (const ZipBuilder& other : {ZipBuilder().add("a", text).add("b", "Beta"), ZipBuilder().add("a", text).add("c", "beta"),
                                    ZipBuilder().add("a", text), ZipBuilder().add("a", text).add("b", "beta").add("c", ""),
                                    ZipBuilder().add("a", text).add("bb", "eta"), ZipBuilder().add("a", "beta").add("b", text)})
        EXPECT_NE(digestOf(other), digest);
}

TEST_F(Digest, StandsInTheCommentUntilTheArchiveChanges) {
    ZipBuilder(archive_).add("a", "alpha").setComment("line one\nline two").write();
    EXPECT_EQ(HostZip::getDigest(archive_), "");
    EXPECT_FALSE(HostZip::verifyDigest(archive_));

    HostZip::attachDigestEn(archive_);
    const std::string once = dir_.read("plat.kar");
    const std::string digest = HostZip::getDigest(archive_);
    EXPECT_EQ(digest.size(), 64u);
    EXPECT_TRUE(once.ends_with("line one\nline two\nhzep-digest-2:sha256:" + digest));
    HostZip::attachDigestEn(archive_);
    EXPECT_EQ(dir_.read("plat.kar"), once);

    // One byte of a stamp or of a name is enough.
    std::string tampered = once;
    tampered.back() = tampered.back() == '0' ? '1' : '0';
    dir_.write("plat.kar", tampered);
    EXPECT_FALSE(HostZip::verifyDigest(archive_));
    tampered = once;
    tampered[30] = 'b';
    tampered[tampered.find("PK\x01\x02") + 46] = 'b';
    dir_.write("plat.kar", tampered);
    EXPECT_FALSE(HostZip::verifyDigest(archive_));

    dir_.write("plat.kar", once);
    HostZipUpdate update(archive_);
    update.put("b", "beta");
    update.commit();
    EXPECT_EQ(HostZip::getDigest(archive_), "");
    EXPECT_TRUE(dir_.read("plat.kar").ends_with("line one\nline two"));
}

TEST_F(Digest, WhatCannotBeReadCannotBeStamped) {
    ZipBuilder::Member damaged{.name = "a", .content = "alpha"};
    damaged.crc = 1;
    const std::vector<ZipBuilder> archives = {
        ZipBuilder().add(damaged),
        ZipBuilder().add({.name = "a", .content = "0123456789abcdef", .flags = 1}),
        ZipBuilder().add("a", "1").add("a", "2"),
        ZipBuilder().add("folder/", "content"),
        ZipBuilder().add("a", "1").setComment(std::string(65'500, 'c')),
    };
    for (const ZipBuilder& builder : archives) {
        const std::string bytes = builder.bytes();
        dir_.write("plat.kar", bytes);
        try {
            HostZip::attachDigestEn(archive_);
            ADD_FAILURE() << "stamped";
        } catch (const HostError& error) {
            EXPECT_TRUE(std::string(error.what()).starts_with(archive_ + ": ")) << error.what();
        }
        EXPECT_EQ(dir_.read("plat.kar"), bytes);
    }
    EXPECT_THROW(HostZip::verifyDigest(dir_.path("none")), HostError);
}

} // namespace
