// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyHasSettings.h"

#include <QString>

#include <array>
#include <bitset>
#include <cstddef>

class KyTrackballManipulator;

/// What a person prefers, kept from one run to the next: how fast the hand turns the view, which way, and the language.
/// Scripts that set the trackball themselves have the last word.
class KyHostSettings : public KyHasSettings {
public:
    /// A factor of the trackball.
    struct Speed {
        const char* name;
        const char* label;
        double (KyTrackballManipulator::*get)() const;
        void (KyTrackballManipulator::*set)(double);
    };
    /// A direction of the trackball that can be turned round.
    struct Inversion {
        const char* name;
        const char* label;
        bool (KyTrackballManipulator::*get)() const;
        void (KyTrackballManipulator::*set)(bool);
    };
    static constexpr std::size_t cNbSpeeds = 5;
    static constexpr std::size_t cNbInversions = 3;
    static const std::array<Speed, cNbSpeeds>& getSpeeds();
    static const std::array<Inversion, cNbInversions>& getInversions();

    /// Factors of what the trackball does by itself.
    static constexpr double cSlowest = 0.1;
    static constexpr double cFastest = 10.0;

    /// Reads the document when there is one; what it lacks, and what is out of range, is as the trackball has it.
    explicit KyHostSettings(const QString& path);
    /// In the user's folder for configurations.
    static QString getDefaultPath();

    void updateDataFromSettings() override;
    /// Indices are those of the tables.
    double getSpeed(std::size_t index) const { return mSpeeds[index]; }
    bool isInverted(std::size_t index) const { return mInversions[index]; }
    void setSpeed(std::size_t index, double value);
    void setInverted(std::size_t index, bool isInverted);
    /// A code of KyLanguage; empty for the language of the system.
    const QString& getLanguage() const { return mLanguage; }
    void setLanguage(const QString& language);
    /// Speaks it; the system's where it is not known.
    void applyLanguage() const;
    /// False when the document cannot be written; its folder is made.
    bool save();

    void applyTo(KyTrackballManipulator& trackball) const;
    /// Applies only what was set since the last call, so that what scripts have set otherwise stays.
    void applyChangesTo(KyTrackballManipulator& trackball);

private:
    std::array<double, cNbSpeeds> mSpeeds;
    std::array<bool, cNbInversions> mInversions;
    QString mLanguage;
    std::bitset<cNbSpeeds> mChangedSpeeds;
    std::bitset<cNbInversions> mChangedInversions;
};
