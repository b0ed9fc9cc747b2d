// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors

#include "HZEPDesignIntentStorage.h"

#include "JSONObjectWriter.h"

#include <utility>

void HZEPDesignIntentStorage::toJSON(zep_platform::JSONObjectWriter& writer) const {
    zep_platform::JSONObjectWriter intents;
    const auto add = [&intents](const char* key, const Intent& intent) {
        zep_platform::JSONObjectWriter entry;
        entry.addKey("value", intent.value());
        entry.addKey("explicit", intent.explicitSet);
        intents.addKey(key, std::move(entry));
    };
    add("dataCenter", dataCenter_);
    add("embedded", embedded_);
    add("externalHost", externalHost_);
    add("serverManaged", serverManaged_);
    writer.addKey("designIntent", std::move(intents));
}

void HZEPDesignIntentStorage::setExplicitValue(int key, bool value) {
    if (Intent* intent = find_(key)) {
        intent->explicitSet = true;
        intent->explicitValue = value;
    }
}

void HZEPDesignIntentStorage::setComputedValue(int key, bool value) {
    if (Intent* intent = find_(key))
        intent->computedValue = value;
}

bool HZEPDesignIntentStorage::getDataCenter() const {
    return dataCenter_.value();
}
bool HZEPDesignIntentStorage::getEmbedded() const {
    return embedded_.value();
}
bool HZEPDesignIntentStorage::getExternalHost() const {
    return externalHost_.value();
}
bool HZEPDesignIntentStorage::getServerManaged() const {
    return serverManaged_.value();
}

HZEPDesignIntentStorage::Intent* HZEPDesignIntentStorage::find_(int key) {
    switch (key) {
    case DataCenter:
        return &dataCenter_;
    case Embedded:
        return &embedded_;
    case ExternalHost:
        return &externalHost_;
    case ServerManaged:
        return &serverManaged_;
    default:
        return nullptr;
    }
}
