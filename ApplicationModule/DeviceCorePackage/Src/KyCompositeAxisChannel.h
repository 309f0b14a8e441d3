// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyCompositeChannel.h"
#include "KyDeviceAxisChannel.h"
#include "KyOperation.h"

#include <vector>

/// An axis that is computed from other axes, buttons and constants: each source changes the position that the axis
/// holds, and the axis conditions the result like any other. It starts enabled, relative and read-only. Positions of
/// insertion are explained at KyCompositeChannel; operations are KyOperation values, unknown ones do nothing.
///
///     KyCompositeAxisChannel speed;
///     speed.setAbsolute(true);
///     speed.insertMappedAxis(pad.getAxis(1), eOperationSet);
///     speed.insertMappedButton(pad.getButton(0), eActionWhilePressed, 5, eOperationAdd);   // 5 step factors
///     if (speed.update())
///         move(speed.getValue());
class KYAPPLICATION_EXPORT KyCompositeAxisChannel : public KyDeviceAxisChannel, public KyCompositeChannel {
public:
    KyCompositeAxisChannel();

    /// The source's value.
    void insertMappedAxis(const KyDeviceAxisChannel& axis, unsigned operation, int position = -1);
    /// `value` times this axis's step factor, while or when the action takes place.
    void insertMappedButton(const KyDeviceButtonChannel& button, KyButtonAction action, float value, unsigned operation,
                            int position = -1);
    /// A value of its own as a source, in place of a channel.
    void insertConstant(unsigned operation, float value, int position = -1);
    /// 0 to 1 onto minimum to maximum, going on beyond both.
    float mapNormalizedValueToAxis(float value) const { return (getMaximum() - getMinimum()) * value + getMinimum(); }

    /// Computes anew from what the axis holds; true when the position or the step is another than after the last
    /// update.
    bool update();

private:
    struct MappedButton {
        KyChannelReference<const KyDeviceButtonChannel> button;
        KyButtonAction action;
        float value;
    };

    using Apply = void (*)(KyCompositeAxisChannel& composite, float operand);

    /// A source with all that an update needs of it.
    struct Step {
        SourceKind kind;
        bool isNormalized;
        /// One that needs no more than its value.
        bool isPlainAxis;
        Apply apply;
        KyChannelReference<const KyDeviceAxisChannel> axis = {};
        MappedButton button = {};
        float constant = 0.0F;
    };

    static Apply findOperation(std::uint32_t operation);
    void prepareSteps();
    void prepareStep(const Source& source);
    void takeStep(const Step& step);
    void accumulate(float step);

    std::vector<KyChannelReference<const KyDeviceAxisChannel>> mMappedAxes;
    std::vector<MappedButton> mMappedButtons;
    std::vector<float> mConstants;
    std::vector<Step> mSteps;
    Count mNbPreparedIndices;
    float mPreviousAbsoluteValue = 0.0F;
    float mPreviousDeltaValue = 0.0F;
};
