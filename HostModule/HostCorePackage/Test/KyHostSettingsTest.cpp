// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyHostSession.h"

#include "KyHostNavigationPage.h"
#include "KyHostSettings.h"

#include "KySettings.h"

#include <QApplication>
#include <QCheckBox>
#include <QDoubleSpinBox>
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
