// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "HPLBoard.h"

#include "AsciiCase.h"
#include "ModelJson.h"

using zep_platform::JSONListWriter;
using zep_platform::JSONObjectWriter;

void HPLBoard::DimmConnector::toJSON(JSONObjectWriter& writer) const {
    writer.addKey("name", name_);
    writer.addKey("displayName", displayName_);
    writer.addKey("type", type_);
    writer.addKey("connectedName", connectedName_);
    writer.addKey("connectedDisplayName", connectedDisplayName_);
    writer.addKey("connected", connected_);
    writer.addKey("locked", locked_);
}

void HPLBoard::toJSON(JSONObjectWriter& writer) const {
    writer.addKey("name", name_);
    writer.addKey("vendor", vendor_);
    writer.addKey("part", part_);
    writer.addKey("boardPart", boardPart_);
    writer.addKey("imageFileHdpi", imgFileHdpi_);
    writer.addKey("imageFileMdpi", imgFileMdpi_);
    writer.addKey("imageFileLdpi", imgFileLdpi_);
    model_json::addObjects(writer, "connectors", connectors_);
    // Readers of the document know drivers only as this count.
    JSONListWriter drivers;
    for (std::size_t i = 0; i < drivers_.size(); ++i)
        drivers.addItem("true");
    writer.addKey("drivers", std::move(drivers));
    writer.addKey("pcie", &pcieId_);
}

HPLDriver* HPLBoard::addDriver() {
    return drivers_.add();
}

HostFwdIter<HPLDriver*>* HPLBoard::createDriverIter() const {
    return drivers_.createIter();
}

HPLBoard::DimmConnector* HPLBoard::addDimmConnector() {
    return connectors_.add();
}

HPLBoard::DimmConnector* HPLBoard::addDimmConnector(const std::string& name, const std::string& displayName, const std::string& type,
                                                    const std::string& connectedName, const std::string& connectedDisplayName,
                                                    bool connected, bool locked) {
    DimmConnector* connector = connectors_.add();
    connector->setName(name);
    connector->setDisplayName(displayName);
    connector->setType(type);
    connector->setConnectedName(connectedName);
    connector->setConnectedDisplayName(connectedDisplayName);
    connector->setConnected(connected);
    connector->setLocked(locked);
    return connector;
}

void HPLBoard::getConnectorsVec(std::vector<DimmConnector*>& out) const {
    connectors_.appendTo(out);
}

void HPLBoard::getDimmConnectors(std::vector<std::string>& out) const {
    for (const DimmConnector* connector : connectors_)
        out.push_back(connector->getName());
}

void HPLBoard::getLockedDimmConnectors(std::vector<std::string>& out) const {
    for (const DimmConnector* connector : connectors_) {
        if (connector->isLocked())
            out.push_back(connector->getName());
    }
}

void HPLBoard::getConnectedDimmConnectors(std::vector<std::string>& names, std::vector<std::string>& connectedNames) const {
    for (const DimmConnector* connector : connectors_) {
        if (connector->isConnected()) {
            names.push_back(connector->getName());
            connectedNames.push_back(connector->getConnectedName());
        }
    }
}

template <class Takes>
std::string HPLBoard::joinConnections_(Takes takes) const {
    std::string joined;
    for (const DimmConnector* connector : connectors_) {
        if (!connector->isConnected() || !takes(*connector))
            continue;
        if (!joined.empty())
            joined += ' ';
        joined.append(connector->getName()).append(" ").append(connector->getConnectedName());
    }
    return joined;
}

std::string HPLBoard::getBoardConnectionsString() const {
    return joinConnections_([](const DimmConnector&) { return true; });
}

std::string HPLBoard::getLockedBoardConnectionsString() const {
    return joinConnections_([](const DimmConnector& connector) { return connector.isLocked(); });
}

std::string HPLBoard::getUnlockedBoardConnectionsString() const {
    return joinConnections_([](const DimmConnector& connector) { return !connector.isLocked(); });
}

std::string HPLBoard::getConnectorDisplayName(const std::string& name) const {
    for (const DimmConnector* connector : connectors_) {
        if (ascii::equalsIgnoringCase(connector->getName(), name))
            return connector->getDisplayName();
        if (ascii::equalsIgnoringCase(connector->getConnectedName(), name))
            return connector->getConnectedDisplayName();
    }
    return "";
}
