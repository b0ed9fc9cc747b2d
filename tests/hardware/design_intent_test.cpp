// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors

#include "HZEPDesignIntentStorage.h"

#include "Documents.h"
#include "JSONObjectWriter.h"

#include <gtest/gtest.h>

#include <sstream>

TEST(DesignIntent, AStatedValueWinsWhateverComesFirst) {
    using Storage = HZEPDesignIntentStorage;
    struct Answer {
        int key;
        bool (Storage::*get)() const;
    };
    for (const Answer& answer : {Answer{8, &Storage::getDataCenter}, Answer{4, &Storage::getEmbedded}, Answer{2, &Storage::getExternalHost},
                                 Answer{1, &Storage::getServerManaged}}) {
        Storage storage;
        EXPECT_FALSE((storage.*answer.get)());
        storage.setComputedValue(answer.key, true);
        EXPECT_TRUE((storage.*answer.get)());
        storage.setExplicitValue(answer.key, false);
        EXPECT_FALSE((storage.*answer.get)());
        EXPECT_FALSE(storage.getDataCenter() || storage.getEmbedded() || storage.getExternalHost() || storage.getServerManaged());

        Storage reverse;
        reverse.setExplicitValue(answer.key, false);
        reverse.setComputedValue(answer.key, true);
        EXPECT_FALSE((reverse.*answer.get)());
    }
}

TEST(DesignIntent, WritesAllFourUnderItsOwnKey) {
    HZEPDesignIntentStorage storage;
    storage.setExplicitValue(HZEPDesignIntentStorage::Embedded, true);
    storage.setComputedValue(HZEPDesignIntentStorage::ServerManaged, true);
    for (int noKey : {0, 3, 16, -1})
        storage.setExplicitValue(noKey, true);
    zep_platform::JSONObjectWriter writer;
    writer.addKey("before", "x");
    storage.toJSON(writer);
    std::ostringstream text;
    writer.write(text);
    EXPECT_EQ(text.str(), laidOut(R"({"before": "x", "designIntent": {"dataCenter": {"value": "false", "explicit": "false"},
        "embedded": {"value": "true", "explicit": "true"}, "externalHost": {"value": "false", "explicit": "false"},
        "serverManaged": {"value": "true", "explicit": "false"}}})"));
}
