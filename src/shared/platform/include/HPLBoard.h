// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "HPLDriver.h"
#include "HPLPCIeId.h"
#include "HZEPOwnedList.h"
#include "JSONSerializable.h"

#include <string>
#include <utility>
#include <vector>

/// The board that a platform targets. Lists are appended to what `out` holds.
class HZEP_EXPORT HPLBoard : public zep_platform::JSONSerializable {
public:
    /// A memory module's slot and what is plugged into it.
    class HZEP_EXPORT DimmConnector : public zep_platform::JSONSerializable {
    public:
        DimmConnector() = default;
        DimmConnector(const DimmConnector&) = delete;
        DimmConnector& operator=(const DimmConnector&) = delete;

        void toJSON(zep_platform::JSONObjectWriter& writer) const override;

        const std::string& getName() const { return name_; }
        void setName(std::string name) { name_ = std::move(name); }
        const std::string& getDisplayName() const { return displayName_; }
        void setDisplayName(std::string displayName) { displayName_ = std::move(displayName); }
        const std::string& getType() const { return type_; }
        void setType(std::string type) { type_ = std::move(type); }
        const std::string& getConnectedName() const { return connectedName_; }
        void setConnectedName(std::string connectedName) { connectedName_ = std::move(connectedName); }
        const std::string& getConnectedDisplayName() const { return connectedDisplayName_; }
        void setConnectedDisplayName(std::string connectedDisplayName) { connectedDisplayName_ = std::move(connectedDisplayName); }
        bool isConnected() const { return connected_; }
        void setConnected(bool connected) { connected_ = connected; }
        bool isLocked() const { return locked_; }
        void setLocked(bool locked) { locked_ = locked; }

    private:
        std::string name_;
        std::string displayName_;
        std::string type_ = "DIMM";
        std::string connectedName_;
        std::string connectedDisplayName_;
        bool connected_ = false;
        bool locked_ = false;
    };

    HPLBoard() = default;
    HPLBoard(const HPLBoard&) = delete;
    HPLBoard& operator=(const HPLBoard&) = delete;

    /// Of the drivers only their count is written: "drivers" holds "true" once a driver.
    void toJSON(zep_platform::JSONObjectWriter& writer) const override;

    const std::string& getName() const { return name_; }
    void setName(std::string name) { name_ = std::move(name); }
    const std::string& getVendor() const { return vendor_; }
    void setVendor(std::string vendor) { vendor_ = std::move(vendor); }
    const std::string& getPart() const { return part_; }
    void setPart(std::string part) { part_ = std::move(part); }
    const std::string& getBoardPart() const { return boardPart_; }
    void setBoardPart(std::string boardPart) { boardPart_ = std::move(boardPart); }
    const std::string& getImgFileHdpi() const { return imgFileHdpi_; }
    void setImgFileHdpi(std::string imgFileHdpi) { imgFileHdpi_ = std::move(imgFileHdpi); }
    const std::string& getImgFileMdpi() const { return imgFileMdpi_; }
    void setImgFileMdpi(std::string imgFileMdpi) { imgFileMdpi_ = std::move(imgFileMdpi); }
    const std::string& getImgFileLdpi() const { return imgFileLdpi_; }
    void setImgFileLdpi(std::string imgFileLdpi) { imgFileLdpi_ = std::move(imgFileLdpi); }

    const HPLPCIeId& getPCIeId() const { return pcieId_; }
    HPLPCIeId& getWriteablePCIeId() { return pcieId_; }

    HPLDriver* addDriver();
    HostFwdIter<HPLDriver*>* createDriverIter() const;

    DimmConnector* addDimmConnector();
    DimmConnector* addDimmConnector(const std::string& name, const std::string& displayName, const std::string& type,
                                    const std::string& connectedName, const std::string& connectedDisplayName, bool connected, bool locked);
    bool hasDimmConnectors() const { return !connectors_.empty(); }
    void getConnectorsVec(std::vector<DimmConnector*>& out) const;

    /// Names of all connectors, of the locked ones, and of the connected ones with what they are connected to.
    void getDimmConnectors(std::vector<std::string>& out) const;
    void getLockedDimmConnectors(std::vector<std::string>& out) const;
    void getConnectedDimmConnectors(std::vector<std::string>& names, std::vector<std::string>& connectedNames) const;

    /// "name connectedName" of each connected connector, joined with blanks; the other two take only locked or unlocked ones.
    std::string getBoardConnectionsString() const;
    std::string getLockedBoardConnectionsString() const;
    std::string getUnlockedBoardConnectionsString() const;

    /// Display name of the first connector that has this name, ignoring case, or is connected to it: its own or the connected
    /// one's. "" when there is none.
    std::string getConnectorDisplayName(const std::string& name) const;

private:
    template <class Takes>
    std::string joinConnections_(Takes takes) const;

    std::string name_;
    std::string vendor_;
    std::string part_;
    std::string boardPart_;
    std::string imgFileHdpi_;
    std::string imgFileMdpi_;
    std::string imgFileLdpi_;
    HPLPCIeId pcieId_;
    HZEPOwnedList<HPLDriver> drivers_;
    HZEPOwnedList<DimmConnector> connectors_;
};
