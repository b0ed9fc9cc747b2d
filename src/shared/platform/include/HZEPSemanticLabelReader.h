// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "HZEPSemanticCpuEndpoint.h"
#include "HZEPSemanticDebugNetwork.h"
#include "HZEPSemanticPcieBar.h"
#include "HZEPSemanticPcieEndpoint.h"
#include "HZEPSemanticUuid.h"

#include <boost/property_tree/ptree.hpp>

#include <cstddef>
#include <iosfwd>
#include <string>
#include <vector>

/// The labels of a built shell, and the metadata for run-time software that is made of them.
class HZEP_EXPORT HZEPSemanticLabelReader : public zep_platform::JSONSerializable {
public:
    /// Most names in the name of an endpoint, in which "." separates them: each makes an object in the object before it.
    static constexpr std::size_t kMaxNameParts = 100;

    /// False, after a message, for a file that is missing or is no JSON; the labels read before then stay. A faulty label is told by a
    /// message and kept as far as it was read; a label of an unknown kind is told and passed over.
    bool parseFile(const std::string& path);
    /// The same from a file's tree.
    void parseRoot(const boost::property_tree::ptree& root);
    void clear();

    /// One list after the other, each label under the key of its kind.
    void toJSON(zep_platform::JSONObjectWriter& writer) const override;

    /// Each in the order of the file.
    const std::vector<HZEPSemanticUuid>& getUuids() const { return uuids_; }
    const std::vector<HZEPSemanticPcieBar>& getPcieBars() const { return pcieBars_; }
    const std::vector<HZEPSemanticPcieEndpoint>& getPcieEndpoints() const { return pcieEndpoints_; }
    const std::vector<HZEPSemanticCpuEndpoint>& getCpuEndpoints() const { return cpuEndpoints_; }
    const std::vector<HZEPSemanticDebugNetwork>& getDebugNetworks() const { return debugNetworks_; }

    /// The partition metadata of the shell: added to a tree, or as a document in a file, which is written whole or not at all, or on a
    /// stream. All operations below raise HostDataException for a name of more than kMaxNameParts parts or bytes that are no UTF-8,
    /// HostError for a file that can't be written and json_parser_error for a stream that fails.
    void generatePartitionMetadata(boost::property_tree::ptree& out) const;
    void generatePartitionMetadata(const std::string& file) const;
    void generatePartitionMetadata(std::ostream& stream) const;

    /// The metadata that an accelerator binary for the partition at the path gets in addition.
    void generateExtMetadata(const std::string& partitionPath, boost::property_tree::ptree& out) const;
    void generateExtMetadata(const std::string& partitionPath, const std::string& file) const;
    void generateExtMetadata(const std::string& partitionPath, std::ostream& stream) const;

    /// Adds the PCIe endpoints whose partition path is a suffix of the argument, each under its name.
    void generateAddressableEndpoints(const std::string& partitionPath, boost::property_tree::ptree& out) const;

private:
    std::vector<HZEPSemanticUuid> uuids_;
    std::vector<HZEPSemanticPcieBar> pcieBars_;
    std::vector<HZEPSemanticPcieEndpoint> pcieEndpoints_;
    std::vector<HZEPSemanticCpuEndpoint> cpuEndpoints_;
    std::vector<HZEPSemanticDebugNetwork> debugNetworks_;
};
