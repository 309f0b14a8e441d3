// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyHost.h"
#include "KyHostStage.h"

#include "KyModuleManager.h"

#include <gtest/gtest.h>

/// A Qt application for as long as a test lasts.
template <class Application>
class KyTestApplication {
    int mNbArguments = 1;
    char mName[5] = "test";
    char* mArguments[2] = {mName, nullptr};
    Application mApplication{mNbArguments, mArguments};
};

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

    KyTestApplication<Application> mApplication;
    Modules mModules;

protected:
    KyHost mHost;
    KyHostStage mStage{200, 150};
};
