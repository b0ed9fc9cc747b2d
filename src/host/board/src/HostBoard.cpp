// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "HostBoard.h"

#include <boost/algorithm/string/predicate.hpp>

#include <locale>
#include <unordered_set>

bool HostBoardComponent::isDIMMConnector() const {
    return boost::iequals(data_.type, "DIMM", std::locale::classic());
}

std::vector<const HostBoardComponent*> HostBoard::getConnectorsList() const {
    std::vector<const HostBoardComponent*> list;
    for (const HostBoardComponent& connector : data_.connectors)
        list.push_back(&connector);
    return list;
}

std::vector<const HostBoardComponent*> HostBoard::getCompatibleConnectorsList(const HostBoardComponent& connector) const {
    std::vector<const HostBoardComponent*> list;
    std::unordered_set<const HostBoardComponent*> taken{&connector};
    for (const std::string& form : connector.getAcceptedForms()) {
        const auto fitting = forms_.find(form);
        if (fitting == forms_.end())
            continue;
        for (const HostBoardComponent* other : fitting->second)
            if (taken.insert(other).second)
                list.push_back(other);
    }
    return list;
}
