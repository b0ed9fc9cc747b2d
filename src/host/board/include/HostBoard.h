// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "HostBoardComponent.h"
#include "HostExport.h"

#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

/// One board as its file describes it, with its connectors. Made and owned by HostBoardDataManager.
class HOST_EXPORT HostBoard {
public:
    struct Data {
        std::string id;
        std::string name;
        std::string displayName;
        std::string vendor;
        std::string version;
        std::string file;
        std::vector<HostBoardComponent> connectors;
    };
    /// The connectors of all boards of a catalog by their forms.
    using Forms = std::unordered_map<std::string, std::vector<const HostBoardComponent*>>;

    /// The forms are the catalog's and outlive the board.
    HostBoard(Data data, const Forms& forms) : data_(std::move(data)), forms_(forms) {}
    HostBoard(const HostBoard&) = delete;
    HostBoard& operator=(const HostBoard&) = delete;

    /// What platforms call the board by.
    const std::string& getId() const { return data_.id; }
    /// The id when the file gives none.
    const std::string& getName() const { return data_.name; }
    /// The name when the file gives none.
    const std::string& getDisplayName() const { return data_.displayName; }
    const std::string& getVendor() const { return data_.vendor; }
    const std::string& getVersion() const { return data_.version; }
    /// Path of the file that describes the board.
    const std::string& getFile() const { return data_.file; }

    /// All connectors, in file order. Pointers live as long as the board.
    std::vector<const HostBoardComponent*> getConnectorsList() const;

    /// The connectors of all boards of the catalog that fit into this one, each once: by the order of the forms that it accepts, then in
    /// catalog order. Never the connector itself.
    std::vector<const HostBoardComponent*> getCompatibleConnectorsList(const HostBoardComponent& connector) const;

private:
    Data data_;
    const Forms& forms_;
};
