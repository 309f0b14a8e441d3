// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyHostSettings.h"

#include "KyLanguage.h"
#include "KySettings.h"
#include "KyTrackballManipulator.h"

#include <QCoreApplication>
#include <QDir>
#include <QStandardPaths>

#include <algorithm>

namespace {

using Trackball = KyTrackballManipulator;

const QString cPath = QStringLiteral("View/Navigation");
const QString cLanguagePath = QStringLiteral("View/Language");
const QString cLanguageName = QStringLiteral("code");

} // namespace

const std::array<KyHostSettings::Speed, KyHostSettings::cNbSpeeds>& KyHostSettings::getSpeeds() {
    static constexpr std::array<Speed, cNbSpeeds> cSpeeds{{
        {"orbitSpeed", QT_TRANSLATE_NOOP("KyHostNavigationPage", "&Turn"), &Trackball::getOrbitSpeed,
         &Trackball::setOrbitSpeed},
        {"panSpeed", QT_TRANSLATE_NOOP("KyHostNavigationPage", "&Shift"), &Trackball::getPanSpeed,
         &Trackball::setPanSpeed},
        {"zoomSpeed", QT_TRANSLATE_NOOP("KyHostNavigationPage", "&Zoom"), &Trackball::getZoomSpeed,
         &Trackball::setZoomSpeed},
        {"moveSpeed", QT_TRANSLATE_NOOP("KyHostNavigationPage", "&Walk"), &Trackball::getMoveSpeed,
         &Trackball::setMoveSpeed},
        {"rotateSpeed", QT_TRANSLATE_NOOP("KyHostNavigationPage", "&Look round"), &Trackball::getRotateSpeed,
         &Trackball::setRotateSpeed},
    }};
    return cSpeeds;
}

const std::array<KyHostSettings::Inversion, KyHostSettings::cNbInversions>& KyHostSettings::getInversions() {
    static constexpr std::array<Inversion, cNbInversions> cInversions{{
        {"orbitInverse", QT_TRANSLATE_NOOP("KyHostNavigationPage", "The scene &follows when turning"),
         &Trackball::getOrbitInverseCtrl, &Trackball::setOrbitInverseCtrl},
        {"moveInverse", QT_TRANSLATE_NOOP("KyHostNavigationPage", "The scene follows when wal&king"),
         &Trackball::getMoveInverseCtrl, &Trackball::setMoveInverseCtrl},
        {"rotateInverse", QT_TRANSLATE_NOOP("KyHostNavigationPage", "The scene follows when looking &round"),
         &Trackball::getRotateInverseCtrl, &Trackball::setRotateInverseCtrl},
    }};
    return cInversions;
}

KyHostSettings::KyHostSettings(const QString& path) {
    const Trackball trackball;
    for (std::size_t i = 0; i < cNbSpeeds; ++i)
        mSpeeds[i] = (trackball.*getSpeeds()[i].get)();
    for (std::size_t i = 0; i < cNbInversions; ++i)
        mInversions[i] = (trackball.*getInversions()[i].get)();
    editSettings()->setFilePath(path);
    if (editSettings()->open())
        updateDataFromSettings();
}

QString KyHostSettings::getDefaultPath() {
    return QDir(QStandardPaths::writableLocation(QStandardPaths::AppConfigLocation)).filePath("settings.xml");
}

void KyHostSettings::updateDataFromSettings() {
    for (std::size_t i = 0; i < cNbSpeeds; ++i) {
        const double factor = getSettings()->getAttribute(cPath, getSpeeds()[i].name, mSpeeds[i]);
        if (factor >= cSlowest && factor <= cFastest)
            mSpeeds[i] = factor;
    }
    for (std::size_t i = 0; i < cNbInversions; ++i)
        mInversions[i] = getSettings()->getAttribute(cPath, getInversions()[i].name, mInversions[i]);
    mLanguage = getSettings()->getAttribute(cLanguagePath, cLanguageName, QString());
}

void KyHostSettings::setLanguage(const QString& language) {
    mLanguage = language;
    editSettings()->setAttribute(cLanguagePath, cLanguageName, language);
}

void KyHostSettings::setSpeed(std::size_t index, double value) {
    mSpeeds[index] = std::clamp(value, cSlowest, cFastest);
    mChangedSpeeds.set(index);
    editSettings()->setAttribute(cPath, getSpeeds()[index].name, mSpeeds[index]);
}

void KyHostSettings::setInverted(std::size_t index, bool isInverted) {
    mInversions[index] = isInverted;
    mChangedInversions.set(index);
    editSettings()->setAttribute(cPath, getInversions()[index].name, isInverted);
}

void KyHostSettings::applyLanguage() const {
    if (!KyLanguage::set(mLanguage))
        KyLanguage::set(KyLanguage::getOfSystem());
}

bool KyHostSettings::save() {
    return QDir().mkpath(getSettings()->getFileDir(false)) && editSettings()->save();
}

void KyHostSettings::applyTo(KyTrackballManipulator& trackball) const {
    for (std::size_t i = 0; i < cNbSpeeds; ++i)
        (trackball.*getSpeeds()[i].set)(mSpeeds[i]);
    for (std::size_t i = 0; i < cNbInversions; ++i)
        (trackball.*getInversions()[i].set)(mInversions[i]);
}

void KyHostSettings::applyChangesTo(KyTrackballManipulator& trackball) {
    for (std::size_t i = 0; i < cNbSpeeds; ++i)
        if (mChangedSpeeds[i])
            (trackball.*getSpeeds()[i].set)(mSpeeds[i]);
    for (std::size_t i = 0; i < cNbInversions; ++i)
        if (mChangedInversions[i])
            (trackball.*getInversions()[i].set)(mInversions[i]);
    mChangedSpeeds.reset();
    mChangedInversions.reset();
}
