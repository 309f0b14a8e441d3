// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyModuleManager.h"

#include <gtest/gtest.h>

#include <windows.h>

#include <algorithm>

// In a program that is not linked with the library.
TEST(KyApplicationEntry, TheModuleComesAndGoesWithTheLibrary) {
    const KyModuleManager& manager = KyModuleManager::get();
    const auto isRegistered = [&](const char* module) { return manager.isRegistered(module); };
    const char* const modules[] = {"KyApplication/KyApplication", "KyScene/KyScene"};
    EXPECT_TRUE(std::ranges::none_of(modules, isRegistered));
    for (int round = 0; round < 3; ++round) {
        const HMODULE library = ::LoadLibraryA(KY_WINDOWS_CORE);
        ASSERT_NE(library, nullptr);
        EXPECT_TRUE(std::ranges::all_of(modules, isRegistered));
        EXPECT_TRUE(KyModuleManager::get().initialize());
        EXPECT_TRUE(manager.isInitialized("KyApplication/KyApplication"));
        EXPECT_TRUE(::FreeLibrary(library));
        EXPECT_TRUE(std::ranges::none_of(modules, isRegistered)) << "nobody else needs the scene library";
        KyModuleManager::get().finalize();
    }
}
