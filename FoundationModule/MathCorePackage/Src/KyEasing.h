// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyFoundationExport.h"

/// Easing curves: how far a movement has come after a part of its time. "In" starts slowly, "Out" ends slowly,
/// "InOut" does both; Back and Elastic leave 0 ... 1 on the way.
///
///     KyEasing::compute(KyEasing::QuadIn, 0.5);   // 0.25
class KYFOUNDATION_EXPORT KyEasing {
public:
    /// The curves.
    enum Kind : int {
        BackIn,
        BackOut,
        BackInOut,
        BounceIn,
        BounceOut,
        BounceInOut,
        CircIn,
        CircOut,
        CircInOut,
        CubicIn,
        CubicOut,
        CubicInOut,
        ElasticIn,
        ElasticOut,
        ElasticInOut,
        ExpoIn,
        ExpoOut,
        ExpoInOut,
        LinearIn,
        LinearOut,
        LinearInOut,
        QuadIn,
        QuadOut,
        QuadInOut,
        QuartIn,
        QuartOut,
        QuartInOut,
        QuintIn,
        QuintOut,
        QuintInOut,
        SineIn,
        SineOut,
        SineInOut,
        eNbKinds
    };

    /// The part of the way after the part `time` of the duration, which is limited to 0 ... 1 (NaN counts as 0).
    /// Exactly 0 at 0 and 1 at 1; a number outside the enumeration is linear.
    static double compute(Kind kind, double time);
    /// "BackIn" ...; empty for a number outside the enumeration. The text lives for ever.
    static const char* getName(Kind kind);
};
