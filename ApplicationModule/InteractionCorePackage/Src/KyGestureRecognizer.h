// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyApplicationExport.h"

class KyGesture;
class KyManipulator;

/// Tells what fingers did between the previous and the current touch event of a manipulator: a pan (one finger moved),
/// a tap (one was lifted), a pinch (two moved), a tilt (one of three moved). The answer is written into the
/// manipulator's gesture of that kind and its number into the current event (-1 when there is none).
///
/// Fingers are those of the two lists of touch points at the same place. Lists whose identities differ there, or whose
/// lengths differ, give no gesture, so that nothing jumps when a finger lands or lifts; nor does a touch that begins.
/// Only a finger that comes after an empty list, and is lifted at once, still taps.
///
/// ```
/// KyGesture* gesture = KyGestureRecognizer(manipulator).recognizeGesture();
/// if (gesture && gesture->getKind() == KyGesture::ePan)
///     ...
/// ```
class KYAPPLICATION_EXPORT KyGestureRecognizer {
public:
    /// The manipulator outlives its recognizer.
    explicit KyGestureRecognizer(KyManipulator& manipulator)
        : mManipulator(manipulator) {}

    /// Null when there is no gesture to apply. Two resting fingers set the kind of a pinch, and three that of a tilt,
    /// with nothing to apply; three resting fingers go on with the tilt of the finger that moved last.
    KyGesture* recognizeGesture();

private:
    KyGesture* recognizePinch();
    KyGesture* recognizeTilt();

    KyManipulator& mManipulator;
};
