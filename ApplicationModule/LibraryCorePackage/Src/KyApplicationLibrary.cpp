// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyApplicationLibrary.h"

#include "KyCameraManipulator.h"
#include "KyDoxygenXmlDocMgr.h"
#include "KyDoxygenXmlDocReader.h"
#include "KyFieldToQVariantConvertersRepository.h"
#include "KyLuaBinder.h"
#include "KyManipulator.h"
#include "KyManipulatorEventHandler.h"
#include "KyObjectConverterEntry_p.h"
#include "KyQGLGraphicsView.h"
#include "KyQGLWindow.h"
#include "KyQGraphicsSceneViewItem.h"
#include "KyQOpenGLWindow.h"
#include "KyQWindow.h"
#include "KyQtStreamBuffers_p.h"
#include "KyScriptEngine.h"
#include "KyShapeManipulator.h"
#include "KyStyleParameters.h"
#include "KyTrackballManipulator.h"
#include "KyWindow.h"

#include "KySceneLibrary.h"

#include "KyEnvironment.h"
#include "KyFoundationLibrary.h"
#include "KyLibraryEntry.h"
#include "KyModuleManager.h"

#include <array>

std::intptr_t KyApplicationLibrary::msHInstance = 0;
bool KyApplicationLibrary::msRegistered = false;
bool KyApplicationLibrary::msIsInitialized = false;

namespace {

constexpr const char* cModuleName = "KyApplication/KyApplication";
constexpr std::array cPrerequisites{"KyFoundation/KyFoundation", "KyScene/KyScene"};

using Step = void (*)();

/// The GUI toolkit is to use the desktop's driver.
void chooseDesktopOpenGL() {
    setEnvironmentVariable("QT_OPENGL_DLL", "opengl32.dll");
}

/// While all types live: objects that only scripts hold end here.
void closeScripts() {
    if (KyScriptEngine* engine = KyScriptEngine::find())
        engine->closeLuaState();
}

constexpr Step cInitialization[] = {
    &chooseDesktopOpenGL,
    &KyWindow::initializeClass,
    &KyQWindow::initializeType,
    &KyQGLGraphicsView::initializeType,
    &KyQGraphicsSceneViewItem::initializeType,
    &KyQOpenGLWindow::initializeType,
    &KyQGLWindow::initializeType,
    &KyScriptEngine::initializeClass,
    &KyLuaBinder::initializeClass,
    &KyFieldToQVariantConvertersRepository::initializeSingleton,
    &KyObjectConverterEntry::enter,
    &KyQtStreamBuffers::addCreator,
    &KyManipulator::initializeType,
    &KyCameraManipulator::initializeType,
    &KyTrackballManipulator::initializeClass,
    &KyShapeManipulator::initializeClass,
    &KyManipulatorEventHandler::initializeClass,
    &KyStyleParameters::initializeClass,
    &KyDoxygenXmlDocMgr::initializeClass,
    &KyDoxygenXmlDocReader::initializeType,
};

constexpr Step cFinalization[] = {
    &closeScripts,
    &KyDoxygenXmlDocReader::finalizeType,
    &KyDoxygenXmlDocMgr::finalizeClass,
    &KyStyleParameters::finalizeClass,
    &KyManipulatorEventHandler::finalizeType,
    &KyShapeManipulator::finalizeType,
    &KyCameraManipulator::finalizeType,
    &KyTrackballManipulator::finalizeType,
    &KyManipulator::finalizeType,
    &KyQtStreamBuffers::removeCreator,
    &KyObjectConverterEntry::withdraw,
    &KyFieldToQVariantConvertersRepository::finalizeSingleton,
    &KyQtStreamBuffers::closeAll,
    &KyScriptEngine::finalizeClass,
    &KyLuaBinder::finalizeClass,
    &KyWindow::finalizeClass,
    &KyQGLGraphicsView::finalizeType,
    &KyQGraphicsSceneViewItem::finalizeType,
    &KyQOpenGLWindow::finalizeType,
    &KyQGLWindow::finalizeType,
    &KyQWindow::finalizeType,
};

} // namespace

void KyApplicationLibrary::registerModule() {
    if (msRegistered)
        return;
    KyFoundationLibrary::registerModule();
    KySceneLibrary::registerModule();
    KyModuleManager::get().registerModule(cModuleName, cPrerequisites.data(),
                                          static_cast<unsigned>(cPrerequisites.size()), &initialize, &finalize);
    msRegistered = true;
}

void KyApplicationLibrary::unregisterModule() {
    KyModuleManager::get().unregisterModule(cModuleName);
}

void KyApplicationLibrary::initialize() {
    if (msIsInitialized)
        return;
    msIsInitialized = true;
    for (const Step step : cInitialization)
        step();
}

void KyApplicationLibrary::finalize() {
    if (!msIsInitialized)
        return;
    msIsInitialized = false;
    for (const Step step : cFinalization)
        step();
}

bool KyApplicationLibrary::onLoad(std::intptr_t handle, unsigned reason, void* reserved) {
    msHInstance = handle;
    if (reason == KyLibraryEntry::eProcessAttach)
        registerModule();
    else if (reason == KyLibraryEntry::eProcessDetach && !reserved)
        unregisterModule();
    return true;
}
