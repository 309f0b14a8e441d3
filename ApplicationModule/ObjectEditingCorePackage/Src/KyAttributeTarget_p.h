// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyAttributeInterface.h"
#include "KyObject.h"

#include <string>

/// Names one value of an object without holding either: every use looks the attribute up, so that objects and
/// attributes may end at any time. What accessors throw is reported and counts as a failure.
struct KyAttributeTarget {
    KyObjectReference object;
    std::string name = {};
    std::string category = {};
    /// Of a container's element, -1 for the attribute itself.
    int index = -1;

    bool operator==(const KyAttributeTarget&) const = default;

    /// Null when the object or the attribute is gone.
    const KyAttributeInterface* find() const;
    /// False, and `value` unchanged, when there is no such value.
    bool read(KyField& value) const;
    /// False when the attribute refuses the value.
    bool write(const KyField& value) const;
    /// Whether a container's element still has that value: elements may have changed places unseen. True for others.
    bool isStill(const KyField& value) const;
    /// Number of values of a container; 0 when it is gone.
    int countValues() const;
};
