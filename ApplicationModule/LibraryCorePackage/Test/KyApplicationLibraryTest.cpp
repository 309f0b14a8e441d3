// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyApplicationLibrary.h"
#include "KyFieldToQVariantConvertersRepository.h"
#include "KyLibraryEntry.h"
#include "KyModuleManager.h"
#include "KyQtVariant.h"
#include "KyScriptEngine.h"
#include "KyType.h"

#include "KyDynamicObject.h"
#include "KyMainTaskManager.h"

#include <gtest/gtest.h>

#include <QObject>
#include <QPointer>

#include <algorithm>
#include <cstdlib>
#include <string>
#include <vector>

namespace {

TEST(KyApplicationLibrary, IsRegisteredByBeingLoaded) {
    EXPECT_TRUE(KyApplicationLibrary::msRegistered);
    EXPECT_NE(KyApplicationLibrary::msHInstance, 0);
    KyApplicationLibrary::registerModule();
    ASSERT_TRUE(KyModuleManager::get().initialize());
    EXPECT_TRUE(KyModuleManager::get().isInitialized("KyScene/KyScene"));
    EXPECT_STREQ(std::getenv("QT_OPENGL_DLL"), "opengl32.dll");
    KyModuleManager::get().finalize();
    EXPECT_EQ(KyScriptEngine::find(), nullptr);
}

TEST(KyApplicationLibrary, InitialisesAndFinalisesAThousandTimes) {
    KyModuleManager& manager = KyModuleManager::get();
    ASSERT_TRUE(manager.initialize());
    const unsigned nbTypes = KyType::getNbTypes();
    const unsigned nbTasks = KyMainTaskManager::get().getNbTasks();
    for (int round = 0; round < 1000; ++round) {
        KyApplicationLibrary::finalize();
        KyApplicationLibrary::finalize();
        KyApplicationLibrary::initialize();
        KyApplicationLibrary::initialize();
    }
    EXPECT_TRUE(KyScriptEngine::get().executeChunk("object = createKyObject('KyDynamicObject') object:destroy()"));
    EXPECT_EQ(KyType::getNbTypes(), nbTypes);
    EXPECT_EQ(KyMainTaskManager::get().getNbTasks(), nbTasks);
    manager.finalize();
    EXPECT_EQ(KyType::getNbTypes(), 0u) << "every record of the three libraries is gone";
    EXPECT_EQ(KyMainTaskManager::get().getNbTasks(), 0u);
}

TEST(KyApplicationLibrary, DescribesWindowsThenScriptsThenManipulators) {
    ASSERT_TRUE(KyModuleManager::get().initialize());
    std::vector<std::string> names;
    for (unsigned i = 0; i < KyType::getNbTypes(); ++i)
        names.push_back(KyType::getType(i)->getName());
    auto last = names.begin();
    for (const char* name :
         {"KyWindow", "KyQWindow", "KyQGLGraphicsView", "KyQGraphicsSceneViewItem", "KyQOpenGLWindow", "KyQGLWindow",
          "KyScriptEngine", "KyManipulator", "KyCameraManipulator", "KyTrackballManipulator", "KyShapeManipulator",
          "KyManipulatorEventHandler", "KyStyleParameters"}) {
        const auto found = std::ranges::find(names, name);
        ASSERT_NE(found, names.end()) << name;
        EXPECT_GE(found - names.begin(), last - names.begin()) << name;
        last = found;
    }
    KyModuleManager::get().finalize();
}

TEST(KyApplicationLibrary, ConvertsObjectsWhileItIsInitialised) {
    for (int round = 0; round < 2; ++round) {
        EXPECT_EQ(KyFieldToQVariantConvertersRepository::get(), nullptr);
        ASSERT_TRUE(KyModuleManager::get().initialize());
        const auto* repository = KyFieldToQVariantConvertersRepository::get();
        const auto* toQt = dynamic_cast<QObject*>(repository->getConverter(KyObject::getType(), false));
        EXPECT_NE(toQt, nullptr);
        EXPECT_EQ(toQt, dynamic_cast<QObject*>(repository->getConverter(static_cast<QMetaType::Type>(39))));
        KyDynamicObject object;
        object.addAttribute("QmlBinding", KyField(1));
        const QPointer<QObject> binding = KyApplication::toQVariant(KyField(&object)).value<QObject*>();
        EXPECT_EQ(KyApplication::toKyField(QVariant::fromValue(binding.data())).toKyObject(), &object);
        KyModuleManager::get().finalize();
        EXPECT_FALSE(binding);
    }
}

TEST(KyApplicationLibrary, IgnoresOtherReasonsAndProcessExit) {
    int anything = 0;
    const std::intptr_t handle = KyApplicationLibrary::msHInstance;
    ASSERT_TRUE(KyModuleManager::get().initialize());
    EXPECT_TRUE(KyApplicationLibrary::onLoad(handle, KyLibraryEntry::eThreadAttach, nullptr));
    EXPECT_TRUE(KyApplicationLibrary::onLoad(handle, KyLibraryEntry::eProcessDetach, &anything));
    EXPECT_TRUE(KyModuleManager::get().isInitialized("KyApplication/KyApplication"));
    KyModuleManager::get().finalize();
}

} // namespace
