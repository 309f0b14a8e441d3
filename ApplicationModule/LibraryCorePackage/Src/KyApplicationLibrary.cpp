// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyApplicationLibrary.h"

#include "Ky2DEllipse.h"
#include "Ky2DGroup.h"
#include "Ky2DImage.h"
#include "Ky2DIntersected.h"
#include "Ky2DLine.h"
#include "Ky2DNode.h"
#include "Ky2DPath.h"
#include "Ky2DProxy.h"
#include "Ky2DRect.h"
#include "Ky2DScene.h"
#include "Ky2DStyle.h"
#include "Ky2DSvgImporter.h"
#include "Ky2DText.h"
#include "Ky2DView.h"
#include "KyAxisObject.h"
#include "KyButtonObject.h"
#include "KyCameraManipulator.h"
#include "KyChannelObject.h"
#include "KyCompositeAxisObject.h"
#include "KyCompositeButtonObject.h"
#include "KyCompositeOrientationObject.h"
#include "KyDeviceInfoObject.h"
#include "KyDeviceManager.h"
#include "KyDeviceManagerObject.h"
#include "KyDeviceObject.h"
#include "KyDoxygenXmlDocMgr.h"
#include "KyDoxygenXmlDocReader.h"
#include "KyFieldToQVariantConvertersRepository.h"
#include "KyLuaBinder.h"
#include "KyManipulator.h"
#include "KyManipulatorEventHandler.h"
#include "KyNetworkConnectionObject.h"
#include "KyNetworkPasswordManager.h"
#include "KyObjectConverterEntry_p.h"
#include "KyOrientationObject.h"
#include "KyPassSurface.h"
#include "KyQAttributeItemDelegate.h"
#include "KyQGLGraphicsView.h"
#include "KyQGLWindow.h"
#include "KyQGraphicsItemIntersected.h"
#include "KyQGraphicsSceneViewItem.h"
#include "KyQOpenGLWindow.h"
#include "KyQWindow.h"
#include "KyQmlPass.h"
#include "KyQtLuaBinding.h"
#include "KyQtPass.h"
#include "KyQtPassEventHandler.h"
#include "KyQtStreamBuffers_p.h"
#include "KyScriptEngine.h"
#include "KySettingsEditorManager.h"
#include "KyShapeManipulator.h"
#include "KyStyleParameters.h"
#include "KySurfacePassEventHandler.h"
#include "KyTrackballManipulator.h"
#include "KyVirtualDevice.h"
#include "KyWindow.h"

#include "KyEnvironment.h"
#include "KyFieldType.h"

bool KyApplicationLibrary::msIsInitialized = false;

namespace {

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

/// Modes that scripts, editors and settings know by name.
void registerEnumeratedFields() {
    KyFieldManager& manager = KyFieldManager::get();
    manager.registerEnumFieldType("KyStrokeModeField", eNbStrokeMode, KyGraphics::gStrokeModeNames);
    manager.registerEnumFieldType("KyFillModeField", eNbFillMode, KyGraphics::gFillModeNames);
    manager.registerEnumFieldType("KyStrokeJoinField", eNbStrokeJoin, KyGraphics::gStrokeJoinNames);
    manager.registerEnumFieldType("KyStrokeCapField", eNbStrokeCap, KyGraphics::gStrokeCapNames);
}

constexpr Step cInitialization[] = {
    &chooseDesktopOpenGL,
    &KyWindow::initializeClass,
    &KyQGraphicsItemIntersected::initializeType,
    &KyQWindow::initializeType,
    &KyQGLGraphicsView::initializeType,
    &KyQGraphicsSceneViewItem::initializeType,
    &KyQOpenGLWindow::initializeType,
    &KyQGLWindow::initializeType,
    &KyDeviceManager::initializeClass,
    &KyScriptEngine::initializeClass,
    &KyLuaBinder::initializeClass,
    &KyQtLuaBinding::initializeClass,
    &KyFieldToQVariantConvertersRepository::initializeSingleton,
    &KyObjectConverterEntry::enter,
    &KyQtStreamBuffers::addCreator,
    &KyManipulator::initializeType,
    &KyCameraManipulator::initializeType,
    &KyTrackballManipulator::initializeClass,
    &KyShapeManipulator::initializeClass,
    &KyManipulatorEventHandler::initializeClass,
    &KyNetworkPasswordManager::initializeClass,
    &KySettingsEditorManager::initializeClass,
    &KyStyleParameters::initializeClass,
    &KyQAttributeItemDelegate::initializeDefaultEditors,
    &KyDoxygenXmlDocMgr::initializeClass,
    &KyDoxygenXmlDocReader::initializeType,
    &Ky2DStyle::initializeClass,
    &Ky2DScene::initializeClass,
    &Ky2DNode::initializeClass,
    &Ky2DRect::initializeClass,
    &Ky2DEllipse::initializeClass,
    &Ky2DPath::initializeClass,
    &Ky2DText::initializeClass,
    &Ky2DGroup::initializeClass,
    &Ky2DIntersected::initializeType,
    &Ky2DLine::initializeClass,
    &Ky2DImage::initializeClass,
    &Ky2DProxy::initializeClass,
    &Ky2DView::initializeType,
    &KyQtPass::initializeType,
    &KyQtPassEventHandler::initializeClass,
    &KyQmlPass::initializeType,
    &KyPassSurface::initializeType,
    &KySurfacePassEventHandler::initializeType,
    &Ky2DSvgImporter::initializeType,
    &KyChannelObject::initializeType,
    &KyAxisObject::initializeType,
    &KyButtonObject::initializeType,
    &KyOrientationObject::initializeType,
    &KyCompositeAxisObject::initializeType,
    &KyCompositeButtonObject::initializeType,
    &KyCompositeOrientationObject::initializeType,
    &KyDeviceInfoObject::initializeType,
    &KyDeviceObject::initializeType,
    &KyVirtualDevice::initializeType,
    &KyDeviceManagerObject::initializeClass,
    &KyNetworkConnectionObject::initializeClass,
    &registerEnumeratedFields,
};

constexpr Step cFinalization[] = {
    &closeScripts,
    &Ky2DProxy::finalizeType,
    &Ky2DLine::finalizeType,
    &Ky2DRect::finalizeType,
    &Ky2DEllipse::finalizeType,
    &Ky2DPath::finalizeType,
    &Ky2DText::finalizeType,
    &Ky2DGroup::finalizeType,
    &Ky2DNode::finalizeType,
    &Ky2DStyle::finalizeType,
    &Ky2DIntersected::finalizeType,
    &Ky2DScene::finalizeType,
    &Ky2DImage::finalizeType,
    &KyQtPassEventHandler::finalizeType,
    &KyQtPass::finalizeType,
    &Ky2DView::finalizeType,
    &KyQmlPass::finalizeClass,
    &KySurfacePassEventHandler::finalizeType,
    &KyPassSurface::finalizeType,
    &Ky2DSvgImporter::finalizeType,
    &KyNetworkConnectionObject::finalizeClass,
    &KyDeviceManagerObject::finalizeClass,
    &KyVirtualDevice::finalizeType,
    &KyDeviceObject::finalizeType,
    &KyDeviceInfoObject::finalizeType,
    &KyCompositeOrientationObject::finalizeType,
    &KyCompositeButtonObject::finalizeType,
    &KyCompositeAxisObject::finalizeType,
    &KyOrientationObject::finalizeType,
    &KyButtonObject::finalizeType,
    &KyAxisObject::finalizeType,
    &KyChannelObject::finalizeType,
    &KyDoxygenXmlDocReader::finalizeType,
    &KyDoxygenXmlDocMgr::finalizeClass,
    &KyQAttributeItemDelegate::finalizeEditors,
    &KyStyleParameters::finalizeClass,
    &KySettingsEditorManager::finalizeClass,
    &KyNetworkPasswordManager::finalizeClass,
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
    &KyQtLuaBinding::finalizeClass,
    &KyDeviceManager::finalizeClass,
    &KyWindow::finalizeClass,
    &KyQGraphicsItemIntersected::finalizeType,
    &KyQGLGraphicsView::finalizeType,
    &KyQGraphicsSceneViewItem::finalizeType,
    &KyQOpenGLWindow::finalizeType,
    &KyQGLWindow::finalizeType,
    &KyQWindow::finalizeType,
};

} // namespace

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
