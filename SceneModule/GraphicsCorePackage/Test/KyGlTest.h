// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyOffscreenContext.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

/// A fixture with a context that is current; without one every case fails, and says why.
class KyGlTest : public testing::Test {
protected:
    void SetUp() override {
        std::string error;
        mContext = KyOffscreenContext::create(error);
        ASSERT_TRUE(mContext) << error;
    }

    std::unique_ptr<KyOffscreenContext> mContext;
};
