// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyApplicationLibrary.h"
#include "KyLibraryEntry.h"
#include "KyModuleManager.h"

#include <gtest/gtest.h>

#include <windows.h>

namespace {

constexpr const char* cModule = "KyApplication/KyApplication";

} // namespace

TEST(KyApplicationEntry, TheLibraryIsAModuleFromItsLoadingOn) {
    EXPECT_TRUE(KyModuleManager::get().isRegistered(cModule));
    const auto handle = reinterpret_cast<std::intptr_t>(::GetModuleHandleA(KY_WINDOWS_CORE));
    EXPECT_NE(handle, 0);
    EXPECT_EQ(KyApplicationLibrary::msHInstance, handle);
}

TEST(KyApplicationEntry, OnlyBeingUnloadedTakesItOut) {
    int anything = 0;
    const std::intptr_t handle = KyApplicationLibrary::msHInstance;
    EXPECT_TRUE(KyApplicationLibrary::onLoad(handle, KyLibraryEntry::eThreadAttach, nullptr));
    EXPECT_TRUE(KyApplicationLibrary::onLoad(handle, KyLibraryEntry::eThreadDetach, nullptr));
    EXPECT_TRUE(KyApplicationLibrary::onLoad(handle, KyLibraryEntry::eProcessDetach, &anything));
    EXPECT_TRUE(KyModuleManager::get().isRegistered(cModule));
    EXPECT_TRUE(KyApplicationLibrary::onLoad(handle, KyLibraryEntry::eProcessDetach, nullptr));
    EXPECT_FALSE(KyModuleManager::get().isRegistered(cModule));
}
