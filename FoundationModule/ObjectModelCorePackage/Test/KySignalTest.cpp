// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyObject.h"
#include "KySignal.h"

#include <gtest/gtest.h>

#include <memory>
#include <vector>

namespace {

struct Listener : KyHasSlots {
    void onValue(int value) { values.push_back(value); }
    void onOther(int) { ++nbOther; }
    std::vector<int> values;
    int nbOther = 0;
};

TEST(KySignal, EndsConnectionsWithEitherSide) {
    auto signal = std::make_unique<KySignal<int>>("s");
    Listener survivor;
    {
        Listener listener;
        signal->connect(&listener, &Listener::onValue);
        signal->connect(&survivor, &Listener::onValue);
        EXPECT_EQ(signal->getNbConnections(), 2u);
    }
    EXPECT_EQ(signal->getNbConnections(), 1u);
    signal->send(4);
    signal.reset();
    EXPECT_EQ(survivor.values, std::vector<int>{4});
}

TEST(KySignal, CallsSlotsInOrderAndDisconnectsTheNamedOneOnly) {
    KySignal<int> signal("s");
    std::string order;
    signal.connect([&](int) { order += 'a'; });
    signal.connect([&](int) { order += 'b'; });
    Listener listener;
    signal.connect(&listener, &Listener::onValue);
    signal.connect(&listener, &Listener::onOther);
    signal.disconnect(&listener, &Listener::onValue);
    signal.send(1);
    EXPECT_EQ(order, "ab");
    EXPECT_TRUE(listener.values.empty());
    EXPECT_EQ(listener.nbOther, 1);
    signal.disconnect(&listener);
    EXPECT_EQ(signal.getNbConnections(), 2u);
}

TEST(KySignal, BearsChangesWhileItIsSent) {
    KySignal<int> signal("s");
    int nbLate = 0;
    int nbDropped = 0;
    KyConnection dropped;
    KyConnection self = signal.connect([&](int) {
        self.disconnect();
        dropped.disconnect();
        for (int i = 0; i < 100; ++i)
            signal.connect([&](int) { ++nbLate; });
    });
    dropped = signal.connect([&](int) { ++nbDropped; });
    signal.send(1);
    EXPECT_EQ(nbDropped, 0) << "a slot dropped before its turn is not called";
    EXPECT_EQ(nbLate, 0) << "a slot connected during the sending waits for the next";
    signal.send(2);
    EXPECT_EQ(nbLate, 100);
    EXPECT_FALSE(self.isConnected());
}

TEST(KySignal, BearsItsOwnEndWhileItIsSent) {
    auto signal = std::make_unique<KySignal<int>>("s");
    int nbAfter = 0;
    signal->connect([&](int depth) {
        if (depth == 0)
            signal->send(1);
        else
            signal.reset();
    });
    signal->connect([&](int) { ++nbAfter; });
    signal->send(0);
    EXPECT_EQ(signal, nullptr);
    EXPECT_EQ(nbAfter, 0);
}

TEST(KySignal, ShowsItsArgumentsAsFields) {
    KySignal<const std::string&, double, KyObject*, void*> signal("s");
    std::vector<KyField> seen;
    signal.connectGeneric([&](std::span<const KyField> fields) { seen.assign(fields.begin(), fields.end()); });
    KyObject object;
    signal.send("name", 2.5, &object, nullptr);
    ASSERT_EQ(seen.size(), 4u);
    EXPECT_EQ(seen[0].toString(), "name");
    EXPECT_EQ(seen[2].toKyObject(), &object);
    EXPECT_TRUE(seen[3].isEmpty());
}

} // namespace
