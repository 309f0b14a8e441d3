// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyCompositeChannel.h"
#include "KyDeviceButtonChannel.h"
#include "KyOperation.h"

/// A button that is computed from other buttons and constants, in numbers of 8 bits that wrap. It starts enabled and
/// open for writing; read-only, it keeps its value. Operations are KyOperation values: eOperationAdd to eOperationSet
/// take the source's value, eOperationAddValue to eOperationSetValue the one given here. After an update there is no
/// press or release to be seen in it, so other composites use it by what it holds.
///
///     KyCompositeButtonChannel fire;
///     fire.insertConstant(eOperationSet, 0);
///     fire.insertMappedButton(pad.getButton(0), eActionWhilePressed, 1, eOperationSetValue);
///     fire.insertMappedButton(mouse.getButton(0), eActionWhilePressed, 1, eOperationSetValue);
class KYAPPLICATION_EXPORT KyCompositeButtonChannel : public KyDeviceButtonChannel, public KyCompositeChannel {
public:
    KyCompositeButtonChannel();

    /// The button's action gives the value; position -1 is the end of the list.
    void insertMappedButton(const KyDeviceButtonChannel& button, KyButtonAction action, std::uint8_t value,
                            unsigned operation, int position = -1);
    /// A value of its own as a source.
    void insertConstant(unsigned operation, std::uint8_t value, int position = -1);

    /// Computes anew from what the button holds; true when the value is another than after the last update.
    bool update();

private:
    struct MappedButton {
        KyChannelReference<const KyDeviceButtonChannel> button;
        KyButtonAction action;
        std::uint8_t value;
    };

    void useSource(const Source& source);
    void useButton(const MappedButton& mapped, std::uint32_t operation);
    void computeOperation(std::uint32_t operation, unsigned operand);

    std::vector<MappedButton> mMappedButtons;
    std::vector<std::uint8_t> mConstants;
};
