// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors

#include "Documents.h"
#include "HZEPJSONText.h"
#include "HZEPSemanticLabelReader.h"
#include "HostErrors.h"
#include "MessageLog.h"
#include "TempDir.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>

using boost::property_tree::ptree;
using testing::ElementsAre;
using testing::HasSubstr;

namespace {

std::string partitionOf(const HZEPSemanticLabelReader& reader) {
    std::ostringstream text;
    reader.generatePartitionMetadata(text);
    return text.str();
}

std::string extensionOf(const HZEPSemanticLabelReader& reader, const std::string& path) {
    std::ostringstream text;
    reader.generateExtMetadata(path, text);
    return text.str();
}

/// An endpoint's members without what only some have.
std::string endpoint(const std::string& name, const std::string& path, const std::string& more = "") {
    return R"("endpoint_name": ")" + name + R"(", "cell_vlnv": "v", "cell": "c", "interface": "i", "addr_seg": "s", "reg_abs": "r",
        "partition": "p", "partition_path": ")" +
           path + R"(", "addr": "0x10000", "range": "010000")" + more;
}

class Labels : public testing::Test {
protected:
    bool read(const std::string& text) { return reader_.parseFile(dir_.write("labels.json", text)); }

    TempDir dir_;
    HZEPSemanticLabelReader reader_;
    MessageLog log_;
};

TEST_F(Labels, BecomeTheThreeDocuments) {
    ASSERT_TRUE(read(R"({
        "debug_network": {"physical_function": 10, "bar": 3, "bar_addr": "16", "system_addr": "0xABCDEF0123456789", "partition": "p",
            "partition_path": "/", "supports_nanocore_debug": true, "supports_jtag_fallback": "True"},
        "uuid": {"uuid_type": "logic", "uuid_design_component": "shell", "uuid": "first"},
        "pcie_bar": {"bar_type": "AXI_Bridge_Master", "physical_function": 10, "bar": 4, "offset": "65536"},
        "uuid": {"uuid_type": "interface", "uuid_design_component": "pr0", "uuid": "i0"},
        "pcie_bar": {"bar_type": "DMA", "physical_function": 0, "bar": 0, "dma_type": "qdma", "range": "0x20"},
        "pcie_endpoint": {"physical_function": 1, "bar": 2, )" +
                     endpoint("ep_a", "/", R"(, "interrupt_source": "irq", "interrupt_sink": "in", "interrupt_sink_cell": "msix",
            "interrupt_sink_cell_vlnv": "m", "interrupt_sink_start": 5, "interrupt_sink_end": "300", "firmware_product": "fw",
            "firmware_branch": "main", "firmware_version": "1..2.3.4")") +
                     R"(},
        "pcie_endpoint": {"physical_function": 0, "bar": 0, )" +
                     endpoint("ep_b", "/pr0", R"(, "interrupt_sink_start": 7, "firmware_product": "fw")") +
                     R"(},
        "cpu_endpoint": {"cpu_type": "nano", )" +
                     endpoint("ep_c", "/") + R"(},
        "uuid": {"uuid_type": "logic", "uuid_design_component": "", "uuid": "last"},
        "pcie_bar": {"bar_type": "SOMETHING", "physical_function": 0, "bar": 1},
        "debug_network": {"physical_function": 0, "bar": 0, "bar_addr": "0", "system_addr": "0", "partition": "p",
            "partition_path": "/", "supports_nanocore_debug": "false", "supports_jtag_fallback": "true"}})"));
    EXPECT_TRUE(log_.lines.empty());
    EXPECT_EQ(reader_.getPcieBars()[0].getDmaType(), "INVALID");
    EXPECT_FALSE(reader_.getPcieEndpoints()[1].interruptValid());

    // Not what was read: types of bars, addresses of endpoints and all numbers take another form.
    EXPECT_EQ(documentOf(reader_), laidOut(R"({"uuid": {"uuid_type": "logic", "uuid_design_component": "shell", "uuid": "first"},
        "uuid": {"uuid_type": "interface", "uuid_design_component": "pr0", "uuid": "i0"}, "uuid": {"uuid_type": "logic", "uuid": "last"},
        "pcie_bar": {"bar_type": "false", "physical_function": "10", "bar": "4", "offset": "65536", "range": "65536"},
        "pcie_bar": {"bar_type": "true", "physical_function": "0", "bar": "0", "dma_type": "qdma"}, "pcie_bar": {"bar_type": "true",
        "physical_function": "0", "bar": "1"}, "pcie_endpoint": {"physical_function": "1", "bar": "2", "endpoint_name": "ep_a",
        "cell_vlnv": "v", "cell": "c", "interface": "i", "addr_seg": "s", "reg_abs": "r", "partition": "p", "partition_path": "\/",
        "addr_offset": "65536", "addr_range": "4096", "has_firmware": "true", "firmware_product": "fw", "firmware_branch": "main",
        "firmware_has_version": "true", "firmware_version": "1..2.3.4", "has_interrupt": "true", "interrupt_source": "irq",
        "interrupt_sink": "in", "interrupt_sink_cell": "msix", "interrupt_sink_cell_vlnv": "m", "interrupt_sink_start": "5",
        "interrupt_sink_end": "300"}, "pcie_endpoint": {"physical_function": "0", "bar": "0", "endpoint_name": "ep_b", "cell_vlnv": "v",
        "cell": "c", "interface": "i", "addr_seg": "s", "reg_abs": "r", "partition": "p", "partition_path": "\/pr0", "addr_offset": "65536",
        "addr_range": "4096", "has_firmware": "true", "firmware_product": "fw", "firmware_has_version": "false", "has_interrupt": "false"},
        "cpu_endpoint": {"cpu_type": "nano", "endpoint_name": "ep_c", "cell_vlnv": "v", "cell": "c", "interface": "i", "addr_seg": "s",
        "reg_abs": "r", "partition": "p", "partition_path": "\/", "addr_offset": "65536", "addr_range": "4096", "has_firmware": "false",
        "has_interrupt": "false"}, "debug_network": {"physical_function": "10", "bar": "3", "bar_addr": "16",
        "system_addr": "12379813738877118345", "partition": "p", "partition_path": "\/", "supports_nanocore_debug": "true",
        "supports_jtag_fallback": "false"}, "debug_network": {"physical_function": "0", "bar": "0", "bar_addr": "0", "system_addr": "0",
        "partition": "p", "partition_path": "\/", "supports_nanocore_debug": "false", "supports_jtag_fallback": "true"}})"));

    EXPECT_EQ(partitionOf(reader_), laidOut(R"({"partition_metadata": {"interfaces": [{"interface_uuid": "i0"}],
        "pcie": {"bars": [{"pcie_physical_function": "0xA", "pcie_base_address_register": "0x4", "offset": "0x0000000000010000",
        "range": "0x0000000000010000"}, {"pcie_physical_function": "0x0", "pcie_base_address_register": "0x0",
        "offset": "0x0000000000000000", "range": "0x0000000000000020"}, {"pcie_physical_function": "0x0",
        "pcie_base_address_register": "0x1", "offset": "0x0000000000000000", "range": "0x0000000000010000"}]},
        "addressable_endpoints": {"ep_qdma_00": {"pcie_physical_function": "0x0", "pcie_base_address_register": "0x0",
        "offset": "0x0000000000000000", "range": "0x0000000000000020", "register_abstraction_type": "tolvan:reg_abs:qdma:1.0"},
        "ep_a": {"pcie_physical_function": "0x1", "pcie_base_address_register": "0x2", "offset": "0x0000000000010000",
        "range": "0x0000000000001000", "register_abstraction_type": "r", "msix_interrupt_start_index": "0x05",
        "msix_interrupt_end_index": "0x12C", "firmware": {"firmware_product_name": "fw", "firmware_branch_name": "main",
        "firmware_version_major": "1", "firmware_version_minor": "2", "firmware_version_revision": "3"}}},
        "schema_version": {"minor": "0x0", "major": "0x1"}, "logic_uuid": "last"}})"));

    EXPECT_EQ(extensionOf(reader_, "/top/pr0"), laidOut(R"(
        {"acclib": {"append_sections": {"partition_metadata": {"interfaces": [{"interface_uuid": "i0"}],
        "addressable_endpoints": {"ep_b": {"pcie_physical_function": "0x0", "pcie_base_address_register": "0x0",
        "offset": "0x0000000000010000", "range": "0x0000000000001000", "register_abstraction_type": "r",
        "firmware": {"firmware_product_name": "fw", "firmware_branch_name": ""}}}, "schema_version": {"minor": "0x0", "major": "0x1"}}}},
        "tracelens_debug": {"debug_networks": {"pf10": {"is_user_visible": "true", "name": "Debug network for physical function 10",
        "pcie_pf": "10", "bar_number": "3", "axi_baseaddr": "0xABCDEF0123456789", "supports_nanocore_debug": "true",
        "supports_jtag_fallback": "false"}, "mgmt": {"is_user_visible": "false", "name": "Management Debug Network", "pcie_pf": "0",
        "bar_number": "0", "axi_baseaddr": "0x0000000000000000", "supports_nanocore_debug": "false", "supports_jtag_fallback": "true"}}}})"));
    EXPECT_THAT(extensionOf(reader_, "/top/"), testing::AllOf(HasSubstr("ep_a"), Not(HasSubstr("ep_b"))));
    reader_.generateExtMetadata("/top/pr0", dir_.path("ext.json"));
    EXPECT_EQ(dir_.read("ext.json"), extensionOf(reader_, "/top/pr0"));
    EXPECT_THROW(reader_.generatePartitionMetadata(dir_.path("none/partition.json")), HostError);
}

TEST_F(Labels, OfNoneGiveTheLeastDocuments) {
    EXPECT_EQ(documentOf(reader_), "{\n}\n");
    EXPECT_EQ(partitionOf(reader_), laidOut(R"({"partition_metadata": {"schema_version": {"minor": "0x0", "major": "0x1"},
        "logic_uuid": "UNDEFINED"}})"));
    EXPECT_EQ(extensionOf(reader_, "/"), laidOut(R"(
        {"acclib": {"append_sections": {"partition_metadata": {"schema_version": {"minor": "0x0", "major": "0x1"}}}}})"));
}

TEST_F(Labels, AreKeptAsFarAsTheyCanBeRead) {
    struct Case {
        const char* label;
        std::vector<std::string> keys;
        const char* read;
    };
    const std::string noName = R"("pcie_endpoint": {"physical_function": 3, "bar": 4})";
    const std::string badRange = R"("pcie_endpoint": {"bar": 1, )" + endpoint("ep", "/", R"(, "interrupt_sink_end": "x")") + "}";
    const Case cases[] = {
        {R"("uuid": {"uuid_design_component": "c", "uuid": "u"})", {"@74-82@"}, R"("uuid_type": "logic")"},
        {R"("uuid": {"uuid_type": "other", "uuid": "u"})", {"@74-82@"}, R"("uuid_type": "UNKNOWN")"},
        {R"("pcie_bar": {"bar_type": "DMA", "physical_function": 2, "bar": 1})", {"@74-85@"}, R"("dma_type": "INVALID")"},
        {R"("pcie_bar": {"bar_type": "AXI_Bridge_Master", "physical_function": "2x", "bar": 1})", {"@74-85@"}, R"("range": "0")"},
        {R"("pcie_bar": {"bar_type": "AXI_Bridge_Master", "physical_function": 2, "bar": 1, "offset": "9", "range": "0x10000000000000000"})",
         {"@74-85@"},
         R"("offset": "9")"},
        {noName.c_str(), {"@74-84@"}, R"("bar": "4")"},
        {badRange.c_str(), {"@74-84@", "@74-83@"}, R"("addr_range": "4096")"},
        {R"("cpu_endpoint": {})", {"@74-84@", "@74-80@"}, R"("addr_offset": "0")"},
        {R"("debug_network": {"physical_function": 5, "bar": "4294967296"})", {"@74-81@"}, R"("physical_function": "5")"},
        {R"("other": {}, "other2": "x")", {"@74-88@%s|other", "@74-88@%s|other2"}, "{"},
        {R"("uuid": "text")", {"@74-82@"}, R"("uuid_type": "logic")"},
    };
    for (const Case& test : cases) {
        SCOPED_TRACE(test.label);
        log_.lines.clear();
        EXPECT_TRUE(read("{" + std::string(test.label) + "}"));
        std::vector<std::string> expected;
        for (const std::string& key : test.keys)
            expected.push_back((key.find('|') == key.npos ? "error|" : "critical warning|") + key);
        EXPECT_EQ(log_.lines, expected);
        EXPECT_THAT(documentOf(reader_), HasSubstr(test.read));
    }
}

TEST_F(Labels, StayWhenAnotherFileCantBeRead) {
    ASSERT_TRUE(read(R"({"uuid": {"uuid_type": "logic", "uuid_design_component": "c", "uuid": "u"}})"));
    const std::string none = dir_.path("none.json");
    EXPECT_FALSE(reader_.parseFile(none));
    EXPECT_FALSE(reader_.parseFile(dir_.path()));
    EXPECT_FALSE(read("{\n\"uuid\""));
    EXPECT_THAT(log_.lines, ElementsAre("error|@74-87@%s|" + none, "error|@74-87@%s|" + dir_.path(),
                                        testing::StartsWith("error|@74-86@%s%s|" + dir_.path("labels.json") + "|" +
                                                            dir_.path("labels.json") + "(2): ")));
    EXPECT_EQ(reader_.getUuids().size(), 1u);
    EXPECT_TRUE(read("{}"));
    EXPECT_TRUE(reader_.getUuids().empty());
}

TEST_F(Labels, NamesNestAtTheirPoints) {
    const auto read = [this](const std::string& name) {
        ASSERT_TRUE(this->read(R"({"pcie_endpoint": {"physical_function": 0, "bar": 0, )" + endpoint(name, "") + "}}"));
    };
    for (const char* name : {"", ".", "a.", ".a", "a..b", "a\\u0000b"}) {
        read(name);
        ptree partition, again;
        reader_.generatePartitionMetadata(partition);
        HZEPJSONText::read(partitionOf(reader_), again);
        EXPECT_EQ(partition, again) << name;
    }
    ASSERT_TRUE(this->read(R"({"pcie_endpoint": {"physical_function": 0, "bar": 0, )" + endpoint("a.b", "/") +
                           R"(}, "pcie_endpoint": {"physical_function": 7, "bar": 0, )" + endpoint("a.c", "/") + "}}"));
    ptree partition;
    reader_.generatePartitionMetadata(partition);
    const ptree& endpoints = partition.get_child("partition_metadata.addressable_endpoints");
    EXPECT_EQ(endpoints.size(), 1u);
    EXPECT_EQ(endpoints.get<std::string>("a.c.pcie_physical_function"), "0x7");

    read(std::string(HZEPSemanticLabelReader::kMaxNameParts - 1, '.'));
    EXPECT_NO_THROW(partitionOf(reader_));
    read(std::string(1'000'000, '.'));
    EXPECT_THROW(partitionOf(reader_), HostDataException);
}

} // namespace
