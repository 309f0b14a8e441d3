// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyModuleManager.h"

#include "KyException.h"
#include "KyFoundationLibrary.h"

#include <gtest/gtest.h>

#include <array>
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
    const std::array<char, 2> name = {Name, '\0'};
    return KyModuleManager::get().registerModule(name.data(), needed.data(), static_cast<unsigned>(needed.size()),
                                                 &begin<Name>, &end<Name>);
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

TEST_F(KyModuleManagerTest, RegisteringOnlyRecords) {
    EXPECT_TRUE(add<'A'>());
    EXPECT_TRUE(manager.isRegistered("A"));
    EXPECT_FALSE(manager.isInitialized("A"));
    EXPECT_TRUE(gCalls.empty());
}

TEST_F(KyModuleManagerTest, ANameIsRegisteredOnce) {
    EXPECT_TRUE(add<'A'>());
    EXPECT_FALSE(add<'A'>());
    EXPECT_FALSE(manager.registerModule(nullptr, nullptr, 0, nullptr, nullptr));
    EXPECT_FALSE(manager.registerModule("", nullptr, 0, nullptr, nullptr));
}

TEST_F(KyModuleManagerTest, PrerequisitesComeFirstAndFinalisersRunInReverse) {
    add<'A'>({"C", "B"});
    add<'B'>({"D"});
    add<'C'>({"D"});
    add<'D'>();
    EXPECT_TRUE(manager.initialize());
    EXPECT_EQ(gCalls, (Texts{"+D", "+C", "+B", "+A"}));
    gCalls.clear();
    manager.finalize();
    EXPECT_EQ(gCalls, (Texts{"-A", "-B", "-C", "-D"}));
    EXPECT_TRUE(manager.isRegistered("A"));
}

TEST_F(KyModuleManagerTest, OneModuleBringsOnlyWhatItNeeds) {
    add<'A'>();
    add<'B'>({"C"});
    add<'C'>();
    EXPECT_TRUE(manager.initializeModule("B"));
    EXPECT_TRUE(manager.initializeModule("B"));
    EXPECT_EQ(gCalls, (Texts{"+C", "+B"}));
    EXPECT_FALSE(manager.isInitialized("A"));
}

TEST_F(KyModuleManagerTest, TwoFullRoundsRunEverythingTwice) {
    add<'A'>();
    for (int round = 0; round < 2; ++round) {
        EXPECT_TRUE(manager.initialize());
        EXPECT_TRUE(manager.initialize());
        manager.finalize();
        manager.finalize();
    }
    EXPECT_EQ(gCalls, (Texts{"+A", "-A", "+A", "-A"}));
}

TEST_F(KyModuleManagerTest, AMissingPrerequisiteIsReportedAndOthersGoOn) {
    add<'A'>({"nowhere"});
    add<'B'>();
    EXPECT_FALSE(manager.initialize());
    EXPECT_EQ(gCalls, Texts{"+B"});
    ASSERT_EQ(gReports.size(), 1U);
    EXPECT_NE(gReports[0].find("\"nowhere\""), std::string::npos);
    EXPECT_FALSE(manager.initializeModule("unknown"));
    EXPECT_EQ(gReports.size(), 2U);
}

TEST_F(KyModuleManagerTest, ACycleIsReportedAndLeavesNothingInitialised) {
    add<'A'>({"B"});
    add<'B'>({"C"});
    add<'C'>({"A"});
    EXPECT_FALSE(manager.initializeModule("A"));
    EXPECT_TRUE(gCalls.empty());
    EXPECT_EQ(gReports.size(), 1U);
    add<'D'>({"D"});
    EXPECT_FALSE(manager.initializeModule("D"));
}

TEST_F(KyModuleManagerTest, AnInitialiserThatThrowsIsReportedAndMayBeTriedAgain) {
    static bool broken = true;
    const auto initialise = [] {
        if (broken)
            throw std::runtime_error("no device");
        gCalls.emplace_back("late");
    };
    manager.registerModule("late", nullptr, 0, initialise, nullptr);
    EXPECT_FALSE(manager.initializeModule("late"));
    ASSERT_EQ(gReports.size(), 1U);
    EXPECT_NE(gReports[0].find("no device"), std::string::npos);
    EXPECT_FALSE(manager.isInitialized("late"));
    broken = false;
    EXPECT_TRUE(manager.initializeModule("late"));
    EXPECT_EQ(gCalls, Texts{"late"});
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
    EXPECT_FALSE(manager.isRegistered("A"));
    EXPECT_TRUE(manager.isRegistered("B"));
    EXPECT_TRUE(manager.isInitialized("D"));
    EXPECT_FALSE(manager.unregisterModule("A"));
    EXPECT_FALSE(manager.unregisterModule(nullptr));
}

TEST_F(KyModuleManagerTest, AModuleRegisteredByAnInitialiserIsInitialisedToo) {
    manager.registerModule(
        "late", nullptr, 0, [] { add<'A'>(); }, nullptr);
    EXPECT_TRUE(manager.initialize());
    EXPECT_TRUE(manager.isInitialized("A"));
}

TEST_F(KyModuleManagerTest, AModuleCannotBeForgottenWhileItIsBeingInitialised) {
    const auto initialise = [] { EXPECT_FALSE(KyModuleManager::get().unregisterModule("late")); };
    manager.registerModule("late", nullptr, 0, initialise, nullptr);
    EXPECT_TRUE(manager.initializeModule("late"));
    EXPECT_TRUE(manager.unregisterModule("late"));
}

TEST_F(KyModuleManagerTest, TheFoundationRegistersItselfOnce) {
    KyFoundationLibrary::registerModule();
    KyFoundationLibrary::registerModule();
    EXPECT_TRUE(manager.isRegistered("KyFoundation/KyFoundation"));
    EXPECT_TRUE(manager.initializeModule("KyFoundation/KyFoundation"));
    EXPECT_TRUE(manager.unregisterModule("KyFoundation/KyFoundation"));
    EXPECT_FALSE(manager.isRegistered("KyFoundation/KyFoundation"));
}
