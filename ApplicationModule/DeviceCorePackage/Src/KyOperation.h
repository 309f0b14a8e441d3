// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

/// How a source of a composite channel changes the value that the channel holds. The channels take them as plain
/// numbers, since an axis adds `eOperationNormalized` to another one.
enum KyOperation : std::uint32_t {
    /// Orientations: the same as eOperationSet.
    eOperationReplace = 0,
    eOperationAdd = 1,
    eOperationMultiply = 2,
    eOperationSubtract = 4,
    eOperationSet = 8,
    /// Axes: the source gives a step, which counts times the step factor of the composite.
    eOperationStep = 16,
    /// Axes, beside another one: the source gives 0 to 1, which stands for the minimum to the maximum.
    eOperationNormalized = 32,
    /// Axes: as eOperationStep, and the delta grows by each step, from update to update. For the sum of one update
    /// alone
    /// let the first source be a constant 0 with eOperationStep.
    eOperationAccumulate = 64,

    /// Orientations: the source turns after the value, in the frame of the world.
    eOperationPreMultiply = 1,
    /// Orientations: the source turns first, in the frame of the value.
    eOperationPostMultiply = 2,

    /// Buttons: with the value given at insertion in place of the source's.
    eOperationAddValue = 16,
    eOperationMultiplyValue = 17,
    eOperationSubtractValue = 18,
    eOperationSetValue = 20
};
