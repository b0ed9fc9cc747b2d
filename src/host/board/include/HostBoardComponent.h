// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "HostExport.h"

#include <string>
#include <utility>
#include <vector>

/// One connector of a board: a slot, or the edge that fits into slots, with what is plugged into it as the board is shipped.
class HOST_EXPORT HostBoardComponent {
public:
    struct Data {
        std::string name;
        std::string displayName;
        std::string type;
        std::string form;
        std::vector<std::string> accepts;
        std::string connectedName;
        std::string connectedDisplayName;
        bool locked = false;
    };

    explicit HostBoardComponent(Data data) : data_(std::move(data)) {}

    /// Holds no white space.
    const std::string& getName() const { return data_.name; }
    /// For people; the name when the file gives none. So is the connected one.
    const std::string& getDisplayName() const { return data_.displayName; }
    const std::string& getType() const { return data_.type; }
    /// The type is "DIMM", ignoring case.
    bool isDIMMConnector() const;

    /// What this connector is for slots that accept it, for example "ddr4-rdimm-288"; "" for one that goes into no slot.
    const std::string& getForm() const { return data_.form; }
    /// The forms that can be plugged into this one.
    const std::vector<std::string>& getAcceptedForms() const { return data_.accepts; }

    bool isConnected() const { return !data_.connectedName.empty(); }
    /// What is plugged in, "" when nothing is.
    const std::string& getConnectedName() const { return data_.connectedName; }
    const std::string& getConnectedDisplayName() const { return data_.connectedDisplayName; }
    /// What is plugged in, or that nothing is, can't be changed.
    bool isLocked() const { return data_.locked; }

private:
    Data data_;
};
