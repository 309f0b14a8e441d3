// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

/// A box of things, to try the check of the headers' comments on.
class KyUncommented {
public:
    KyUncommented() = default;
    KyUncommented(const KyUncommented&) = delete;

    /// A new box; it belongs to the caller.
    static KyUncommented* create() { return new KyUncommented; }

    /// Metres.
    double getWidth() const { return mWidth; }
    void setWidth(double width) { mWidth = width; }
    void setWidth(int width) { mWidth = width; }

    /// @{
    /// What the box remembers.
    void remember(int thing);
    void forget(int thing);
    /// @}
    void forget();

    double getDepth() const { return mDepth; }

private:
    double mWidth = 0.0;
    double mDepth = 0.0;
};
