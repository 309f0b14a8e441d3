// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

/// What a modification signal tells about its object. The numbers are part of the interface.
enum KyObjectModificationType : int {
    /// The object is going away; sent exactly once, the pointer is an identity only.
    eObjectEnding = 0,
    /// Follows eObjectEnding at once.
    eObjectEnded = 1,
    /// A single-value attribute has a new value.
    eAttributeChanged = 2,
    /// One element of a container has a new value.
    eElementChanged = 3,
    eElementInserted = 4,
    eElementRemoved = 5,
    eNbObjectModificationTypes
};
