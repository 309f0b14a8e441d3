// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyTestChannels.h"

#include "KyCompositeAxisChannel.h"
#include "KyCompositeButtonChannel.h"
#include "KyCompositeOrientationChannel.h"

#include "KyException.h"

#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <memory>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

namespace {

struct Axis : KyCompositeAxisChannel {
    using KyCompositeAxisChannel::getAbsoluteValue;
    using KyCompositeAxisChannel::getDeltaValue;
    using KyCompositeAxisChannel::insertSource;
    using KyCompositeAxisChannel::setAbsoluteValue;
};
struct Button : KyCompositeButtonChannel {
    using KyCompositeButtonChannel::insertSource;
    using KyCompositeButtonChannel::setAccessMode;
};
struct Orientation : KyCompositeOrientationChannel {
    using KyCompositeOrientationChannel::insertSource;
};

std::vector<std::string> gReports;

class KyCompositeChannelTest : public testing::Test {
protected:
    KyCompositeChannelTest() {
        gReports.clear();
        KyException::setReportHandler([](const std::string& text) { gReports.push_back(text); });
    }
    ~KyCompositeChannelTest() override { KyException::setReportHandler(nullptr); }

    KyTestDevice mDevice{2, 2, 2};
};

KyQuatf makeTurn(float heading, float pitch, float roll) {
    return KyQuatf::fromEuler(KyVec3f(heading, pitch, roll));
}

void expectNear(const KyQuatf& quat, const KyQuatf& expected) {
    EXPECT_NEAR((quat - expected).length(), 0.0F, 1e-5F) << quat << " for " << expected;
}

TEST_F(KyCompositeChannelTest, AnAxisAppliesEachOperation) {
    struct Row {
        unsigned operation;
        float operand, value, delta;
    };
    // From position 0.5, reached by a step of 5.
    for (const Row& row : {Row{1, 0.25F, 0.75F, 2.5F}, Row{2, -0.5F, -0.25F, -7.5F}, Row{4, 0.25F, 0.25F, -2.5F},
                           Row{8, 0.75F, 0.75F, 2.5F}, Row{16, 2, 0.7F, 2}, Row{64, 2, 0.7F, 7}, Row{16, 9, 1, 5},
                           Row{8 + 32, 0.75F, 0.5F, 0}, Row{32, 0.75F, 0.5F, 5}, Row{3, 0.25F, 0.5F, 5},
                           Row{0, 0.25F, 0.5F, 5}, Row{128, 0.25F, 0.5F, 5}, Row{64, NAN, 0.5F, 5}}) {
        SCOPED_TRACE(testing::Message() << "operation " << row.operation << " operand " << row.operand);
        Axis axis;
        axis.setAbsoluteValue(0.5F);
        axis.insertConstant(row.operation, row.operand);
        axis.update();
        EXPECT_NEAR(axis.getAbsoluteValue(), row.value, 1e-6F);
        EXPECT_NEAR(axis.getDeltaValue(), row.delta, 1e-5F);
    }
}

TEST_F(KyCompositeChannelTest, AButtonFiresAsItsActionSays) {
    const std::vector<std::uint8_t> states{0, 1, 1, 0, 0};
    const std::vector<std::pair<int, std::vector<int>>> rows{
        {eActionWhilePressed, {0, 1, 1, 0, 0}}, {eActionWhileReleased, {1, 0, 0, 1, 1}},
        {eActionOnPress, {0, 1, 0, 0, 0}},      {eActionOnRelease, {0, 0, 0, 1, 0}},
        {eNbButtonActions, {0, 0, 0, 0, 0}},    {-1, {0, 0, 0, 0, 0}},
    };
    for (const auto& [action, firings] : rows) {
        KyTestDevice device(0, 1, 0);
        Axis axis;
        axis.setAbsolute(true);
        axis.insertConstant(eOperationSet, 0);
        axis.insertMappedButton(device.getButton(0), static_cast<KyButtonAction>(action), 5, eOperationAdd);
        for (std::size_t i = 0; i < states.size(); ++i) {
            device.setButtonValue(0, states[i]);
            axis.update();
            EXPECT_FLOAT_EQ(axis.getValue(), 0.5F * static_cast<float>(firings[i])) << action << " state " << i;
        }
    }
}

TEST_F(KyCompositeChannelTest, ComputesOnlyWhileAllConditionsHold) {
    Axis axis;
    axis.insertConstant(eOperationAdd, 0.25F);
    axis.insertCondition(mDevice.getButton(0), eConditionEqual, 1);
    axis.insertCondition(mDevice.getButton(1), eConditionDifferent, 2);
    axis.insertCondition(mDevice.getButton(1), eNbButtonConditions, 9);
    for (const auto& [first, second, isMet] : {std::tuple(0, 0, false), {1, 2, false}, {1, 0, true}, {1, 1, true}}) {
        mDevice.setButtonValue(0, static_cast<std::uint8_t>(first));
        mDevice.setButtonValue(1, static_cast<std::uint8_t>(second));
        EXPECT_EQ(axis.isConditionChecked(), isMet);
        const float before = axis.getAbsoluteValue();
        axis.update();
        EXPECT_EQ(axis.getAbsoluteValue() != before, isMet);
    }
    axis.insertCondition(mDevice.getButton(0), eConditionDifferent, 1);
    EXPECT_FALSE(axis.isConditionChecked());
    axis.setAbsoluteValue(-1);
    EXPECT_TRUE(axis.update()) << "changes from outside are told all the same";
}

TEST_F(KyCompositeChannelTest, SkipsSourcesThatAreDisabledOrGone) {
    auto device = std::make_unique<KyTestDevice>(1, 2, 1);
    Axis axis;
    Button button;
    Orientation orientation;
    device->setButtonValue(0, 1);
    device->setAxisValue(0, 0.5F);
    axis.insertMappedAxis(device->getAxis(0), eOperationAdd);
    axis.insertMappedButton(device->getButton(0), eActionWhilePressed, 1, eOperationAdd);
    button.insertMappedButton(device->getButton(0), eActionWhilePressed, 1, eOperationAddValue);
    orientation.insertMappedAxis(device->getAxis(0), eComponentRoll, eOperationPostMultiply);
    orientation.insertMappedButton(device->getButton(0), eActionWhilePressed, 1, eComponentRoll, eOperationSet);
    orientation.insertMappedOrientation(device->getOrientation(0), eOperationSet);
    const auto update = [&] { return axis.update() | button.update() | orientation.update(); };
    device->setEnabled(false);
    EXPECT_FALSE(update());
    device->setEnabled(true);
    EXPECT_TRUE(update());
    Axis gated;
    gated.insertConstant(eOperationAdd, 0.1F);
    gated.insertCondition(device->getButton(1), eConditionDifferent, 1);
    EXPECT_TRUE(gated.update());
    device.reset();
    update();
    EXPECT_FALSE(update());
    EXPECT_FALSE(gated.isConditionChecked());
}

TEST_F(KyCompositeChannelTest, PairsIndicesWithKindsByTheirPlaceInTheList) {
    mDevice.setAxisValue(0, 0.5F);
    mDevice.setAxisValue(1, 0.25F);
    mDevice.setButtonValue(0, 1);
    Axis axis;
    axis.setAbsolute(true);
    axis.insertMappedAxis(mDevice.getAxis(0), eOperationAdd);
    axis.insertMappedAxis(mDevice.getAxis(1), eOperationMultiply);
    axis.insertMappedButton(mDevice.getButton(0), eActionWhilePressed, 9, eOperationAdd, 0);
    // Axis 0 is added, axis 0 multiplies, and there is no button 1.
    axis.update();
    EXPECT_EQ(axis.getValue(), 0.25F);
}

TEST_F(KyCompositeChannelTest, BearsAnyIndexAndPosition) {
    for (const int position : {-1, 0, 1, 2, 1000, INT_MAX, INT_MIN}) {
        Axis axis;
        Button button;
        Orientation orientation;
        const auto insert = [&](auto& channel) {
            channel.insertChannel(7, position);
            for (int kind = 0; kind < 6; ++kind)
                channel.insertSource(static_cast<KyCompositeChannel::SourceKind>(kind), 1, UINT_MAX, position);
            channel.insertChannel(UINT_MAX, position);
            EXPECT_FALSE(channel.update());
        };
        insert(axis);
        insert(button);
        insert(orientation);
        axis.insertConstant(eOperationSet, 0.5F, position);
        axis.update();
        auto moved = std::move(axis);
        moved.update();
        axis.update(); // NOLINT(bugprone-use-after-move)
    }
}

TEST_F(KyCompositeChannelTest, WhatWasMovedFromBeginsAnew) {
    Axis axis;
    Axis taker;
    for (const float value : {0.25F, 0.5F, 0.75F}) {
        axis.insertConstant(eOperationSet, value);
        axis.update();
        EXPECT_EQ(axis.getAbsoluteValue(), value);
        taker = std::move(axis);
    }
    const Axis last(std::move(taker));
    taker.insertConstant(eOperationSet, 0.125F); // NOLINT(bugprone-use-after-move)
    taker.update();
    EXPECT_EQ(taker.getAbsoluteValue(), 0.125F);
}

TEST_F(KyCompositeChannelTest, AccumulatesOverUpdatesUnlessEachBeginsWithAStepOfNothing) {
    for (const bool beginsAnew : {false, true}) {
        Axis axis;
        if (beginsAnew)
            axis.insertConstant(eOperationStep, 0);
        axis.insertConstant(eOperationAccumulate, 1);
        axis.insertConstant(eOperationAccumulate, 2);
        for (const float sum : {3.0F, beginsAnew ? 3.0F : 6.0F}) {
            axis.update();
            EXPECT_NEAR(axis.getValue(), sum, 1e-5F);
        }
    }
}

TEST_F(KyCompositeChannelTest, ReportsKindsItCannotUseAtEveryUpdate) {
    Axis axis;
    Button button;
    axis.insertSource(KyCompositeChannel::eSourceOrientation, 8, 0, -1);
    button.insertSource(KyCompositeChannel::eSourceAxis, 8, 0, -1);
    button.insertSource(KyCompositeChannel::eSourceOrientation, 8, 0, -1);
    button.insertConstant(eOperationSet, 4);
    EXPECT_FALSE(axis.update());
    EXPECT_FALSE(axis.update());
    EXPECT_TRUE(button.update());
    const std::string cannot = "KyCompositeAxisChannel::getValue(): Cannot use an ";
    const std::vector<std::string> reports{
        cannot + "orientation mapped on an axis.", cannot + "orientation mapped on an axis.",
        cannot + "axis mapped on an button.", cannot + "orientation mapped on an button."};
    EXPECT_EQ(gReports, reports);
    EXPECT_EQ(button.getValue(), 4);
}

TEST_F(KyCompositeChannelTest, AnAxisMayFeedItself) {
    Axis axis;
    axis.setAbsolute(true);
    axis.setAbsoluteValue(0.25F);
    axis.insertMappedAxis(axis, eOperationAdd);
    axis.update();
    EXPECT_EQ(axis.getValue(), 0.5F);
    Axis moved(std::move(axis));
    moved.update();
    moved.update();
    EXPECT_EQ(moved.getValue(), 1.0F);
}

TEST_F(KyCompositeChannelTest, AButtonAppliesEachOperation) {
    struct Row {
        unsigned operation;
        int value;
    };
    // From 10, by a source of 3 with 5 given at insertion.
    for (const Row& row : {Row{1, 13}, Row{2, 30}, Row{4, 7}, Row{8, 3}, Row{16, 15}, Row{17, 50}, Row{18, 5},
                           Row{20, 5}, Row{0, 10}, Row{3, 10}, Row{24, 10}, Row{32, 10}}) {
        mDevice.setButtonValue(0, 3);
        Button button;
        button.setValue(10);
        button.insertMappedButton(mDevice.getButton(0), eActionWhilePressed, 5, row.operation);
        EXPECT_TRUE(button.update());
        EXPECT_EQ(button.getValue(), row.value) << row.operation;
        EXPECT_EQ(button.getPreviousValue(), row.value);
        button.setAccessMode(eAccessReadOnly);
        EXPECT_FALSE(button.update()) << "read-only, it keeps its value";
    }
}

TEST_F(KyCompositeChannelTest, AButtonThatAddsWrapsAndOneOnPressIsSetOnce) {
    Button adding, setting;
    adding.insertMappedButton(mDevice.getButton(0), eActionWhilePressed, 0, eOperationAdd);
    setting.insertMappedButton(mDevice.getButton(0), eActionOnPress, 1, eOperationSet);
    mDevice.setButtonValue(0, 100);
    EXPECT_TRUE(setting.update());
    EXPECT_EQ(setting.getValue(), 100);
    setting.setValue(7);
    mDevice.setButtonValue(0, 100);
    setting.update();
    EXPECT_EQ(setting.getValue(), 7);
    for (const int sum : {100, 200, 300 - 256}) {
        adding.update();
        EXPECT_EQ(adding.getValue(), sum);
    }
}

TEST_F(KyCompositeChannelTest, AnOrientationTurnsByAxesButtonsAndOrientations) {
    mDevice.setAxisValue(0, 0.5F);
    mDevice.setButtonValue(0, 1);
    mDevice.editOrientation(0).setAbsolute(true);
    mDevice.setOrientationValue(0, makeTurn(0.1F, 0.2F, 0.3F));
    mDevice.setOrientationValue(1, makeTurn(0, 0.4F, 0));
    mDevice.setOrientationValue(1, makeTurn(0, 0.5F, 0));
    Orientation orientation;
    orientation.setAbsolute(true);
    orientation.insertMappedOrientation(mDevice.getOrientation(0), eOperationReplace);
    orientation.insertMappedAxis(mDevice.getAxis(0), eComponentHeading, eOperationPreMultiply);
    orientation.insertMappedButton(mDevice.getButton(0), eActionWhilePressed, 0.25F, eComponentRoll,
                                   eOperationPostMultiply);
    EXPECT_TRUE(orientation.update());
    expectNear(orientation.getValue(), makeTurn(0.6F, 0.2F, 0.55F));
    EXPECT_FALSE(orientation.update());
    orientation.insertMappedOrientation(mDevice.getOrientation(1), eOperationSet);
    orientation.update();
    expectNear(orientation.getValue(), makeTurn(0, 0.5F, 0));
    orientation.insertMappedAxis(mDevice.getAxis(0), eComponentPitch, eOperationPostMultiply);
    orientation.insertMappedAxis(mDevice.getAxis(0), eNbOrientationComponents, eOperationPostMultiply);
    orientation.insertConstant(eOperationStep, makeTurn(1, 1, 1));
    orientation.insertConstant(eOperationSet, KyQuatf(NAN, 0, 0, 1), 0);
    orientation.update();
    EXPECT_TRUE(std::isfinite(orientation.getValue().length()));
}

TEST_F(KyCompositeChannelTest, ARelativeOrientationTurnsOnlyWhileSomethingActs) {
    Orientation orientation;
    orientation.insertMappedButton(mDevice.getButton(0), eActionWhilePressed, 0.1F, eComponentHeading, eOperationSet);
    mDevice.setButtonValue(0, 1);
    for (int i = 0; i < 3; ++i)
        EXPECT_TRUE(orientation.update());
    expectNear(orientation.getValue(), makeTurn(0.3F, 0, 0));
    mDevice.setButtonValue(0, 0);
    for (int i = 0; i < 10; ++i)
        EXPECT_FALSE(orientation.update());
    expectNear(orientation.getDeltaValue(), makeTurn(0.1F, 0, 0));
}

TEST_F(KyCompositeChannelTest, MapsTheRangeOfAnAxisOntoATurn) {
    const Orientation orientation;
    mDevice.setAxisValue(0, 0.5F);
    EXPECT_FLOAT_EQ(orientation.mapChannelValueToAngle(mDevice.getAxis(0)), 4.712389F);
    mDevice.editAxis(0).setMinimum(1);
    EXPECT_EQ(orientation.mapChannelValueToAngle(mDevice.getAxis(0)), 0.0F);
    Axis axis;
    axis.setMinimum(2);
    axis.setMaximum(6);
    EXPECT_EQ(axis.mapNormalizedValueToAxis(0.25F), 3.0F);
}

} // namespace
