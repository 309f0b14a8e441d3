// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyCompositeChannel.h"
#include "KyDeviceAxisChannel.h"
#include "KyDeviceOrientationChannel.h"
#include "KyOperation.h"
#include "KyOrientationComponent.h"

#include <optional>

/// An orientation that is computed from axes, buttons, orientations and constants. An absolute one starts each update
/// with its value, a relative one with its last turn, which the result replaces and the value takes on; an update
/// without an operation changes nothing. It starts enabled and relative. The operations are eOperationReplace,
/// eOperationSet, eOperationPreMultiply and eOperationPostMultiply.
///
///     KyCompositeOrientationChannel look;
///     look.insertConstant(eOperationSet, KyQuatf());   // each update's turn anew
///     look.insertMappedAxis(pad.getAxis(2), eComponentHeading, eOperationPostMultiply);
///     look.insertMappedAxis(pad.getAxis(3), eComponentPitch, eOperationPostMultiply);
class KYAPPLICATION_EXPORT KyCompositeOrientationChannel : public KyDeviceOrientationChannel,
                                                           public KyCompositeChannel {
public:
    KyCompositeOrientationChannel();

    /// The axis's value is the angle, radians.
    void insertMappedAxis(const KyDeviceAxisChannel& axis, KyOrientationComponent component, KyOperation operation,
                          int position = -1);
    /// `angle` in radians, while or when the action takes place.
    void insertMappedButton(const KyDeviceButtonChannel& button, KyButtonAction action, float angle,
                            KyOrientationComponent component, KyOperation operation, int position = -1);
    /// The source's value when it is absolute, else its turn.
    void insertMappedOrientation(const KyDeviceOrientationChannel& orientation, KyOperation operation,
                                 int position = -1);
    /// An orientation of its own as a source; position -1 is the end of the list.
    void insertConstant(unsigned operation, const KyQuat<float>& value, int position = -1);
    /// The range of the axis onto a full turn, 0 at its minimum; 0 where the range is empty.
    float mapChannelValueToAngle(const KyDeviceAxisChannel& axis) const;

    /// Computes anew; true when the value or the turn is another than after the last update.
    bool update();

private:
    struct MappedAxis {
        KyChannelReference<const KyDeviceAxisChannel> axis;
        KyOrientationComponent component;
    };
    struct MappedButton {
        KyChannelReference<const KyDeviceButtonChannel> button;
        float angle;
        KyOrientationComponent component;
        KyButtonAction action;
    };

    std::optional<KyQuat<float>> getOperand(const Source& source) const;
    std::optional<KyQuat<float>> getOperand(const MappedAxis& mapped) const;
    std::optional<KyQuat<float>> getOperand(const MappedButton& mapped) const;
    void computeSources();

    std::vector<MappedAxis> mMappedAxes;
    std::vector<MappedButton> mMappedButtons;
    std::vector<KyChannelReference<const KyDeviceOrientationChannel>> mMappedOrientations;
    std::vector<KyQuat<float>> mConstants;
    KyQuat<float> mPreviousValue;
    KyQuat<float> mPreviousDeltaValue;
};
