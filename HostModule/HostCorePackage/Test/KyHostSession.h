// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyHost.h"
#include "KyHostStage.h"

#include "KyModuleManager.h"

#include <gtest/gtest.h>

/// A host with its stage in this process.
template <class Application>
class KyHostSession : public testing::Test {
    struct Modules {
        Modules() {
            KyModuleManager::get().initialize();
            KyHost::initializeType();
        }
        ~Modules() {
            KyModuleManager::get().finalize();
            KyHost::finalizeType();
        }
    };

    int mNbArguments = 0;
    Application mApplication{mNbArguments, nullptr};
    Modules mModules;

protected:
    KyHost mHost;
    KyHostStage mStage{200, 150};
};
