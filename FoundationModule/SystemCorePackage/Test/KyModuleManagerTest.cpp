// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyModuleManager.h"

#include "KyException.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

namespace {
std::vector<std::string> gCalls;
std::vector<std::string> gReports;

template <char Name>
void begin() {
    gCalls.push_back(std::string("+") + Name);
}

template <char Name>
void end() {
    gCalls.push_back(std::string("-") + Name);
}

template <char Name>
bool add(std::vector<const char*> needed = {}) {
    return KyModuleManager::get().registerModule(std::string(1, Name).c_str(), needed.data(),
                                                 static_cast<unsigned>(needed.size()), &begin<Name>, &end<Name>);
}

using Texts = std::vector<std::string>;

class KyModuleManagerTest : public ::testing::Test {
protected:
    void SetUp() override {
        gCalls.clear();
        gReports.clear();
        KyException::setReportHandler([](const std::string& text) { gReports.push_back(text); });
    }
    void TearDown() override {
        for (const char* name : {"A", "B", "C", "D", "late"})
            manager.unregisterModule(name);
        KyException::setReportHandler(nullptr);
    }

    KyModuleManager& manager = KyModuleManager::get();
};
} // namespace

TEST_F(KyModuleManagerTest, PrerequisitesComeFirstAndFinalisersRunInReverse) {
    add<'A'>({"C", "B"});
    add<'B'>({"D"});
    add<'C'>({"D"});
    add<'D'>();
    EXPECT_FALSE(add<'D'>()) << "a name is registered once";
    EXPECT_TRUE(manager.initializeModule("B"));
    EXPECT_EQ(gCalls, (Texts{"+D", "+B"})) << "what it needs and no more";
    manager.finalize();
    for (int round = 0; round < 2; ++round) {
        gCalls.clear();
        EXPECT_TRUE(manager.initialize());
        EXPECT_TRUE(manager.initialize());
        manager.finalize();
        EXPECT_EQ(gCalls, (Texts{"+D", "+C", "+B", "+A", "-A", "-B", "-C", "-D"}));
    }
}

TEST_F(KyModuleManagerTest, AMissingPrerequisiteIsReportedAndOthersGoOn) {
    add<'A'>({"nowhere"});
    add<'B'>();
    EXPECT_FALSE(manager.initialize());
    EXPECT_EQ(gCalls, Texts{"+B"});
    ASSERT_EQ(gReports.size(), 1U);
    EXPECT_NE(gReports[0].find("\"nowhere\""), std::string::npos);
}

TEST_F(KyModuleManagerTest, ACycleIsReportedAndLeavesNothingInitialised) {
    add<'A'>({"B"});
    add<'B'>({"C"});
    add<'C'>({"A"});
    EXPECT_FALSE(manager.initializeModule("A"));
    EXPECT_TRUE(gCalls.empty());
    EXPECT_EQ(gReports.size(), 1U);
}

TEST_F(KyModuleManagerTest, AnInitialiserThatThrowsIsReportedAndMayBeTriedAgain) {
    static bool broken = true;
    const auto initialise = [] {
        if (broken)
            throw std::runtime_error("no device");
        gCalls.emplace_back("late");
        add<'A'>();
        EXPECT_FALSE(KyModuleManager::get().unregisterModule("late")) << "it is being initialised";
    };
    manager.registerModule("late", nullptr, 0, initialise, nullptr);
    EXPECT_FALSE(manager.initializeModule("late"));
    ASSERT_EQ(gReports.size(), 1U);
    EXPECT_NE(gReports[0].find("no device"), std::string::npos);
    EXPECT_FALSE(manager.isInitialized("late"));
    broken = false;
    EXPECT_TRUE(manager.initialize());
    EXPECT_EQ(gCalls, (Texts{"late", "+A"})) << "with the module that it brought";
}

TEST_F(KyModuleManagerTest, UnregisteringFinalisesFirstWithAllThatNeedIt) {
    add<'A'>();
    add<'B'>({"A"});
    add<'C'>({"B"});
    add<'D'>();
    manager.initialize();
    gCalls.clear();
    EXPECT_TRUE(manager.unregisterModule("A"));
    EXPECT_EQ(gCalls, (Texts{"-C", "-B", "-A"}));
    EXPECT_TRUE(manager.isRegistered("B"));
    EXPECT_FALSE(manager.unregisterModule("A"));
}
