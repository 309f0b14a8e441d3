// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

/// Switches of a shader, on or off.
enum class KyShaderState { eDepthTest, eDepthWrite, eBlend, eCullFace, eNbShaderStates };

/// Factors of blending. The numbers are seen by hosts.
enum class KyBlendFactor {
    eZero = 0,
    eSrcColor = 1,
    eOneMinusSrcColor = 2,
    eSrcAlpha = 3,
    eOne = 4,
    eOneMinusSrcAlpha = 5,
    eDstColor = 6,
    eOneMinusDstColor = 7,
    eDstAlpha = 8,
    eOneMinusDstAlpha = 9,
    eNbBlendFactors
};

/// How the two weighted colours are put together.
enum class KyBlendEquation { eSubtract = 0, eReverseSubtract = 1, eAdd = 2, eNbBlendEquations };

/// What is drawn times the source factor, combined with what is there times the destination factor. The default suits
/// premultiplied pixels: one, one minus source alpha, add.
struct KyBlendFunction {
    /// Multiplies what is drawn.
    KyBlendFactor source = KyBlendFactor::eOne;
    /// Multiplies what is there.
    KyBlendFactor destination = KyBlendFactor::eOneMinusSrcAlpha;
    /// How both are put together.
    KyBlendEquation equation = KyBlendEquation::eAdd;

    bool operator==(const KyBlendFunction&) const = default;
};
