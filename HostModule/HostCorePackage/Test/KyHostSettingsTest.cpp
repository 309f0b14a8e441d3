// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyHostSession.h"

#include "KyHostNavigationPage.h"
#include "KyHostNetwork.h"
#include "KyHostSettings.h"

#include "KyNetworkConnection.h"
#include "KyQProxySettingsEditor.h"
#include "KyQSettingsDialog.h"
#include "KySettings.h"

#include <QApplication>
#include <QCheckBox>
#include <QDoubleSpinBox>
#include <QLineEdit>
#include <QTemporaryDir>

namespace {

class KyHostSettingsTest : public KyHostSession<QApplication> {
protected:
    QTemporaryDir mFolder;
    const QString mPath = mFolder.filePath("new/settings.xml");
};

TEST_F(KyHostSettingsTest, WhatThePageAcceptsHoldsNowAndInTheNextRun) {
    KyTrackballManipulator& trackball = mStage.getTrackball();
    const double panSpeed = trackball.getPanSpeed();
    {
        KyHostSettings settings(mPath);
        KyHostNavigationPage page(settings, [&] { settings.applyTo(trackball); });
        page.findChild<QDoubleSpinBox*>("orbitSpeed")->setValue(2.5);
        page.findChild<QCheckBox*>("moveInverse")->toggle();
        EXPECT_NE(2.5, trackball.getOrbitSpeed());
        EXPECT_TRUE(page.accept());
        EXPECT_EQ(2.5, trackball.getOrbitSpeed());
    }
    const bool isInverse = trackball.getMoveInverseCtrl();
    trackball.setMoveInverseCtrl(!isInverse);
    trackball.setOrbitSpeed(1.0);
    KyHostSettings(mPath).applyTo(trackball);
    EXPECT_EQ(2.5, trackball.getOrbitSpeed());
    EXPECT_EQ(isInverse, trackball.getMoveInverseCtrl());
    EXPECT_EQ(panSpeed, trackball.getPanSpeed());
}

TEST_F(KyHostSettingsTest, WhatNobodyTouchedStays) {
    KyTrackballManipulator& trackball = mStage.getTrackball();
    KyHostSettings settings(mPath);
    settings.setSpeed(0, 1.23456);
    settings.applyChangesTo(trackball);
    KyHostNavigationPage page(settings, [&] { settings.applyChangesTo(trackball); });
    EXPECT_TRUE(page.accept());
    EXPECT_FALSE(QFile::exists(mPath));
    trackball.setPanSpeed(7.0);
    page.findChild<QDoubleSpinBox*>("zoomSpeed")->setValue(3.0);
    EXPECT_TRUE(page.accept());
    EXPECT_EQ(1.23456, settings.getSpeed(0));
    EXPECT_EQ(7.0, trackball.getPanSpeed());
    EXPECT_EQ(3.0, trackball.getZoomSpeed());
    EXPECT_EQ("", settings.getSettings()->getAttribute("View/Navigation", "panSpeed"));
}

TEST_F(KyHostSettingsTest, TheProxyAndTheOtherSettingsSurviveEachOther) {
    const QString networkPath = mFolder.filePath("new/network.xml");
    KyNetworkConnection& connection = KyNetworkConnection::get();
    KyHostNetwork::load(networkPath);
    KyHostSettings settings(mPath);
    const KyHostNavigationPage navigation(settings, nullptr);
    const KyQProxySettingsEditor proxy(connection);
    KyQSettingsDialog dialog;
    dialog.show();
    const auto enter = [&](const QString& host, double speed) {
        proxy.findChild<QCheckBox*>("useSystemConfiguration")->setChecked(false);
        proxy.findChild<QLineEdit*>("host")->setText(host);
        navigation.findChild<QDoubleSpinBox*>("zoomSpeed")->setValue(speed);
        EXPECT_TRUE(dialog.apply());
    };
    enter("one.example", 2.0);
    enter("two.example", 3.0);
    connection.setHttpProxyHost("");
    KyHostNetwork::load(networkPath);
    EXPECT_EQ("two.example", connection.getHttpProxyHost());
    EXPECT_EQ(3.0, KyHostSettings(mPath).getSpeed(2));
}

TEST_F(KyHostSettingsTest, AProblemIsToldUntilItIsSaved) {
    QFile file(mFolder.filePath("new"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly)) << "in the place of the folder";
    KyHostSettings settings(mPath);
    KyHostNavigationPage page(settings, nullptr);
    page.findChild<QDoubleSpinBox*>("zoomSpeed")->setValue(3.0);
    for (int i = 0; i < 2; ++i) {
        EXPECT_FALSE(page.accept());
        EXPECT_TRUE(page.getProblem().contains(mPath));
    }
    ASSERT_TRUE(file.remove());
    EXPECT_TRUE(page.accept() && page.getProblem().isEmpty() && QFile::exists(mPath));
}

TEST_F(KyHostSettingsTest, CancelledEditsAreForgottenAndTextsFollowTheLanguage) {
    KyHostSettings settings(mPath);
    KyHostNavigationPage page(settings, nullptr);
    auto* const speed = page.findChild<QDoubleSpinBox*>("zoomSpeed");
    const double before = speed->value();
    speed->setValue(before + 1.0);
    page.hide();
    page.show();
    EXPECT_EQ(before + 1.0, speed->value());
    page.reset();
    EXPECT_EQ(before, speed->value());
    page.setGroupName("other");
    QEvent event(QEvent::LanguageChange);
    QCoreApplication::sendEvent(&page, &event);
    EXPECT_EQ("View", page.getGroupName());
}

TEST_F(KyHostSettingsTest, ValuesThatMakeNoSenseAreTheTrackballsOwn) {
    for (const char* value : {"0", "-3", "1e999", "nan", "", "fast"}) {
        KyHostSettings written(mPath);
        written.editSettings()->setAttribute("View/Navigation", "zoomSpeed", value);
        ASSERT_TRUE(written.save());
        KyHostSettings(mPath).applyTo(mStage.getTrackball());
        EXPECT_EQ(1.1, mStage.getTrackball().getZoomSpeed()) << value;
    }
}

} // namespace
