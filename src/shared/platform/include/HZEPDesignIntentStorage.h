// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "JSONSerializable.h"

/// What a platform is meant for: four answers, each stated in the metadata or worked out by the tools. A stated one wins.
class HZEP_EXPORT HZEPDesignIntentStorage : public zep_platform::JSONSerializable {
public:
    enum Key { ServerManaged = 1, ExternalHost = 2, Embedded = 4, DataCenter = 8 };

    /// Adds the key "designIntent" with the four answers, each with its effective value and whether it was stated.
    void toJSON(zep_platform::JSONObjectWriter& writer) const override;

    /// A value that is none of the four keys changes nothing.
    void setExplicitValue(int key, bool value);
    void setComputedValue(int key, bool value);

    bool getDataCenter() const;
    bool getEmbedded() const;
    bool getExternalHost() const;
    bool getServerManaged() const;

private:
    struct Intent {
        bool explicitSet = false;
        bool explicitValue = false;
        bool computedValue = false;

        bool value() const { return explicitSet ? explicitValue : computedValue; }
    };

    Intent* find_(int key);

    Intent dataCenter_;
    Intent embedded_;
    Intent externalHost_;
    Intent serverManaged_;
};
