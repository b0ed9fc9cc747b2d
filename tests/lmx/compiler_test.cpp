// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include <gtest/gtest.h>

#include "TempDir.h"

#include <cstdlib>
#include <filesystem>
#include <sys/wait.h>

namespace {

struct Answer {
    int exit;
    std::string errors;
};

Answer compile(const TempDir& dir, const std::string& schema) {
    const std::string command = "'" LMXGEN "' '" + schema + "' '" + dir.path() + "' 2>'" + dir.path("errors") + "'";
    const int status = std::system(command.c_str());
    return {WEXITSTATUS(status), dir.read("errors")};
}

std::string schema(const std::string& body, const std::string& attributes = "") {
    return "<xs:schema xmlns:xs='http://www.w3.org/2001/XMLSchema' xmlns:lmx='urn:tolvan:lmx' xmlns:o='urn:o' " + attributes + ">\n" +
           body + "\n</xs:schema>\n";
}

std::string type(const std::string& content) {
    return schema("<xs:element name='a'><xs:complexType>\n" + content + "\n</xs:complexType></xs:element>");
}

TEST(Compiler, WhatItDoesNotKnowStopsItWithFileAndLine) {
    const struct {
        std::string text;
        int line;
        const char* says;
    } rows[] = {
        {schema("<xs:simpleType name='s'/>"), 2, "'simpleType' is not known here"},
        {schema("<xs:import namespace='urn:x'/>"), 2, "'import'"},
        {schema("<o:element name='a'/>"), 2, "'element' is not known here"},
        {schema("", "blockDefault='all'"), 1, "attribute 'blockDefault'"},
        {schema("", "lmx:unknown='1'"), 1, "attribute 'lmx:unknown'"},
        {schema("", "o:x='1'"), 1, "foreign namespace"},
        {schema("", "targetNamespace='urn:o'"), 1, "'elementFormDefault' must be qualified"},
        {schema("", "targetNamespace='urn:none' elementFormDefault='qualified' attributeFormDefault='qualified'"), 1, "has no prefix"},
        {schema("<xs:element name='a' type='xs:string'/>"), 2, "a global element must have a complex type"},
        {schema("<xs:element name='a' type='T'/>"), 2, "no complex type 'T'"},
        {schema("<xs:complexType name='T'/><xs:element name='a' type='T'/>\n<xs:element name='b' type='T'/>"), 3, "already that of"},
        {schema("<xs:complexType name='T'/>\n<xs:complexType name='T'/>"), 3, "declared twice"},
        {schema("<xs:group name='g'><xs:sequence>\n<xs:group ref='g'/></xs:sequence></xs:group>"), 2, "holds itself"},
        {schema("text<!-- -->"), 2, "only elements may stand here"},
        {type("<xs:all/>"), 3, "'all'"},
        {type("<xs:anyAttribute/>"), 3, "'anyAttribute'"},
        {type("<xs:sequence/><xs:attribute name='x' type='xs:int'/>"), 3, "the type 'xs:int' is not known"},
        {type("<xs:attribute name='x'/>"), 3, "needs the attribute 'type'"},
        {type("<xs:attribute name='x' type='xs:string' fixed='f'/>"), 3, "attribute 'fixed'"},
        {type("<xs:attribute name='x' type='xs:string' use='prohibited'/>"), 3, "use may be"},
        {type("<xs:attribute name='x-y' type='xs:string'/>"), 3, "'x-y' can't become a C++ name"},
        {type("<xs:attribute name='x' type='xs:string'/>\n<xs:attribute name='X' type='xs:string'/>"), 4, "the member name 'X' is taken"},
        {type("<xs:attribute name='x' type='xs:unsignedByte' default='256'/>"), 3, "the default '256' is no unsignedByte"},
        {type("<xs:attribute name='x' type='xs:boolean' default='yes'/>"), 3, "the default 'yes' is no boolean"},
        {type("<xs:attribute name='x' type='xs:string' use='required' default='d'/>"), 3, "a required attribute can't have a default"},
        {type("<xs:sequence>\n<xs:element name='e'/></xs:sequence>"), 4, "the element 'e' has no type"},
        {type("<xs:sequence>\n<xs:element name='e' type='xs:string' maxOccurs='unbounded'/></xs:sequence>"), 4, "can't repeat"},
        {type("<xs:sequence>\n\n<xs:element ref='a' maxOccurs='2'/></xs:sequence>"), 5, "maxOccurs may be 1 or unbounded"},
        {type("<xs:sequence><xs:choice>\n</xs:choice></xs:sequence>"), 3, "needs lmx:member"},
        {type("<xs:sequence><xs:any/></xs:sequence>"), 3, "'any'"},
        {type("<xs:sequence minOccurs='0'/>"), 3, "attribute 'minOccurs'"},
        {type("<xs:choice/>"), 3, "a choice needs something to choose from"},
        {type("<xs:sequence><xs:element name='e'><xs:simpleType/></xs:element></xs:sequence>"), 3, "'simpleType'"},
        {type("<xs:sequence><xs:element name='A'>\n<xs:complexType/></xs:element></xs:sequence>"), 3,
         "the class name 'A' is taken (line 2)"},
    };
    TempDir dir;
    for (const auto& row : rows) {
        SCOPED_TRACE(row.text);
        const std::string file = dir.write("Family.xsd", row.text);
        const Answer run = compile(dir, file);
        EXPECT_EQ(run.exit, 1);
        EXPECT_EQ(run.errors.rfind(file + ":" + std::to_string(row.line) + ": ", 0), 0u) << run.errors;
        EXPECT_NE(run.errors.find(row.says), std::string::npos) << run.errors;
        EXPECT_FALSE(std::filesystem::exists(dir.path("FamilyLMX.h")));
    }
    EXPECT_EQ(compile(dir, dir.path("none.xsd")).exit, 1);
}

TEST(Compiler, AFileIsWrittenOnlyWhenItsTextChanges) {
    TempDir dir;
    const std::string file = dir.write("Family.xsd", type("<xs:attribute name='x' type='xs:string'/>"));
    ASSERT_EQ(compile(dir, file).exit, 0);
    const auto long_ago = std::filesystem::file_time_type::clock::now() - std::chrono::hours(1);
    std::filesystem::last_write_time(dir.path("FamilyLMX.h"), long_ago);
    ASSERT_EQ(compile(dir, file).exit, 0);
    EXPECT_EQ(std::filesystem::last_write_time(dir.path("FamilyLMX.h")), long_ago);
    dir.write("Family.xsd", type("<xs:attribute name='y' type='xs:string'/>"));
    ASSERT_EQ(compile(dir, file).exit, 0);
    EXPECT_GT(std::filesystem::last_write_time(dir.path("FamilyLMX.h")), long_ago);
}

} // namespace
