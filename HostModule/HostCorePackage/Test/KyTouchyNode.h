// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "Ky2DProxy.h"

#include <string>

/// A grey or fully transparent plate of 100 x 30 that takes the pointer, the keys and the wheel, and notes what it got.
class KyTouchyNode : public Ky2DProxy {
public:
    /// Of the environment: whether the test program is to run as the host, with this class.
    static constexpr const char* cVariable = "KY_TEST_TOUCHY_HOST";

    static KyObject* factory() { return new KyTouchyNode; }
    static void initializeType();
    static void finalizeType();
    const KyType* getObjectType() const override { return msType; }

    KyTouchyNode();

    void makeTransparent();
    int getClicks() const { return mClicks; }
    /// Where the pointer was last, within 0 to 100.
    int getDragged() const { return mDragged; }
    const std::string& getText() const { return mText; }
    /// Notches away from the hand.
    int getTurns() const { return mTurns; }

private:
    class Plate;

    int mClicks = 0, mDragged = 0, mTurns = 0;
    std::string mText;

    static const KyType* msType;
};
