// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include <gtest/gtest.h>

#include "Outcome.h"
#include "ProbeLMX.h"

#include <sstream>

namespace {

using namespace lmx60;

int codeOf(const std::string& attribute, const std::string& value) {
    Probe::Values values;
    return readInto(values, "<p:values xmlns:p='urn:probe' p:" + attribute + "='" + value + "'/>").code;
}

TEST(Values, BoundsAreHeldByValueOnTheText) {
    const struct {
        const char* type;
        const char* below;
        const char* lowest;
        const char* highest;
        const char* above;
    } rows[] = {
        {"byte", "-1", "0", "255", "256"},
        {"short", "-32769", "-32768", "32767", "32768"},
        {"ushort", "-1", "0", "65535", "65536"},
        {"uint", "-1", "0", "4294967295", "4294967296"},
        {"long", "-9223372036854775809", "-9223372036854775808", "9223372036854775807", "9223372036854775808"},
        {"ulong", "-1", "0", "18446744073709551615", "18446744073709551616"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.type);
        EXPECT_EQ(codeOf(row.type, row.below), error_below_bound);
        EXPECT_EQ(codeOf(row.type, row.lowest), error_none);
        EXPECT_EQ(codeOf(row.type, row.highest), error_none);
        EXPECT_EQ(codeOf(row.type, row.above), error_above_bound);
        EXPECT_EQ(codeOf(row.type, "99999999999999999999999"), error_above_bound);
        EXPECT_EQ(codeOf(row.type, "-99999999999999999999999"), error_below_bound);
        EXPECT_EQ(codeOf(row.type, " \n +0000000000000000000000000007\t"), error_none);
        for (const char* wrong : {"", "abc", "1 2", "1.0", "0x1", "+", "--1", "1e3"}) {
            EXPECT_EQ(codeOf(row.type, wrong), error_not_valid) << wrong;
        }
    }
}

TEST(Values, OtherTypesAreCheckedByTheirForm) {
    for (const char* good : {"0", "-000", "+123456789012345678901234567890"}) {
        EXPECT_EQ(codeOf("integer", good), error_none) << good;
    }
    for (const char* good : {"1", "-1.50", ".5", "5.", "+00.00", " 2.0 "}) {
        EXPECT_EQ(codeOf("decimal", good), error_none) << good;
    }
    for (const char* good : {"true", "false", "1", " 0 "}) {
        EXPECT_EQ(codeOf("auto", good), error_none) << good;
    }
    EXPECT_EQ(codeOf("integer", "1.0"), error_not_valid);
    for (const char* bad : {"", ".", "1.2.3", "1e5", "INF", "1,5"}) {
        EXPECT_EQ(codeOf("decimal", bad), error_not_valid) << bad;
    }
    for (const char* bad : {"", "TRUE", "yes", "01"}) {
        EXPECT_EQ(codeOf("auto", bad), error_not_valid) << bad;
    }
}

TEST(Values, ReadValuesArriveAsTheirTypes) {
    Probe::Values values;
    EXPECT_EQ(readInto(values,
                       "<v:values xmlns:v='urn:probe' v:text=' two  blanks ' v:byte='200' v:short='-5' v:long='-9223372036854775808' "
                       "v:ulong='18446744073709551615' v:integer='-0012' v:decimal='+01.50' v:auto='1'><v:note> kept &amp; "
                       "<![CDATA[<so>]]></v:note><v:count> 9 </v:count></v:values>")
                  .code,
              0);
    EXPECT_EQ(values.GetText(), L" two  blanks ");
    EXPECT_EQ(values.GetByte(), 200);
    EXPECT_EQ(values.GetShort(), -5);
    EXPECT_EQ(values.GetLong(), std::numeric_limits<long long>::min());
    EXPECT_EQ(values.GetUlong(), std::numeric_limits<unsigned long long>::max());
    EXPECT_EQ(values.GetInteger().get_as_string(), "-12");
    EXPECT_EQ(values.GetInteger().get(), -12);
    EXPECT_EQ(values.GetDecimal().get_as_string(), "+01.50");
    EXPECT_DOUBLE_EQ(values.GetDecimal().get(), 1.5);
    EXPECT_TRUE(values.GetAuto());
    EXPECT_EQ(values.GetNote(), L" kept & <so>");
    EXPECT_EQ(values.GetCount(), 9);
    EXPECT_FALSE(values.IssetUshort());

    // A reference in the first, a middle or the last value leaves its neighbours what they are.
    for (const char* attributes : {"v:byte='&#50;0' v:text='a' v:long='3'", "v:byte='20' v:text='&#97;' v:long='3'",
                                   "v:byte='20' v:text='a' v:long='&#51;'", "v:byte='&#50;0' v:text='a' v:long='&#51;'"}) {
        Probe::Values each;
        EXPECT_EQ(readInto(each, "<v:values xmlns:v='urn:probe' " + std::string(attributes) + "/>").code, 0);
        EXPECT_EQ(each.GetByte(), 20) << attributes;
        EXPECT_EQ(each.GetText(), L"a") << attributes;
        EXPECT_EQ(each.GetLong(), 3) << attributes;
    }
}

TEST(Values, BigNumbersCompareByValue) {
    const char* rising[] = {"-100000000000000000000", "-99999999999999999999", "-1", "0", "7", "10", "123456789012345678901234567890"};
    for (std::size_t i = 0; i < std::size(rising); ++i) {
        for (std::size_t j = 0; j < std::size(rising); ++j) {
            const c_big_int left{std::string(rising[i])}, right{std::string(rising[j])};
            EXPECT_EQ(left < right, i < j) << left << " " << right;
            EXPECT_EQ(left == right, i == j);
            EXPECT_EQ(compare(rising[i], right) > 0, i > j);
        }
    }
    EXPECT_EQ(c_big_int(std::string("-99999999999999999999")).get(), std::numeric_limits<long long>::min());
    EXPECT_EQ(c_big_int(std::string("99999999999999999999")).get_unsigned(), std::numeric_limits<unsigned long long>::max());
    EXPECT_EQ(c_big_int(-9).get(), -9);

    const char* decimals[] = {"-10.5", "-10.25", "-.5", "0.1", "0.15", "2", "10.01"};
    for (std::size_t i = 0; i < std::size(decimals); ++i) {
        for (std::size_t j = 0; j < std::size(decimals); ++j) {
            EXPECT_EQ(c_decimal(decimals[i]) < c_decimal(decimals[j]), i < j) << decimals[i] << " " << decimals[j];
        }
    }
    EXPECT_EQ(c_decimal("1.0"), c_decimal("+001.00"));
    EXPECT_EQ(c_decimal("-0"), c_decimal("0.0"));
    std::ostringstream out;
    out << c_decimal("1.10") << ' ' << c_big_int(std::string("-007"));
    EXPECT_EQ(out.str(), "1.10 -7");
}

} // namespace
