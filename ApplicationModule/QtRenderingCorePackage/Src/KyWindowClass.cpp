// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyWindow.h"

#include "KyQEventCanvasProvider.h"
#include "KyWindowRedrawTask_p.h"

#include "KyImage.h"

#include "KyCallSignatures.h"
#include "KyMainTaskManager.h"
#include "KyTypeBuilder.h"
#include "KyURL.h"

#include <memory>

const KyType* KyWindow::msType = nullptr;
bool KyWindow::msIsClassInitialized = false;

namespace {

constexpr int cTaskPosition = -1;
/// After everything that changes what is to be seen.
constexpr int cTaskPhase = 2;

std::unique_ptr<KyWindowRedrawTask>& getTask() {
    static auto* const task = new std::unique_ptr<KyWindowRedrawTask>;
    return *task;
}

} // namespace

void KyWindow::initializeClass() {
    if (msIsClassInitialized)
        return;
    msIsClassInitialized = true;
    initializeType();
    getTask() = std::make_unique<KyWindowRedrawTask>();
    KyMainTaskManager::get().addTask(getTask().get(), cTaskPosition, cTaskPhase);
}

void KyWindow::finalizeClass() {
    if (!msIsClassInitialized)
        return;
    msIsClassInitialized = false;
    // A task that ends leaves the tree.
    getTask().reset();
    finalizeType();
}

void KyWindow::initializeType() {
    if (msType)
        return;
    KyCanvas::initializeType();
    msType = KyTypeBuilder<KyWindow>("KyWindow", KyObject::getType())
                 .attribute("Canvas", &KyWindow::getCanvas, &KyWindow::setCanvas)
                 .attribute("Width", &KyWindow::getWidth)
                 .attribute("Height", &KyWindow::getHeight)
                 .attribute("PixelRatio", &KyWindow::getPixelRatio)
                 .attribute("Title", &KyWindow::getCaption, &KyWindow::setCaption)
                 .attribute("Visible", &KyWindow::isShown, &KyWindow::setShown)
                 .attribute("AutoRedraw", &KyWindow::getAutoRedraw, &KyWindow::setAutoRedraw)
                 .attribute("MouseFocusPolicy", &KyWindow::getMouseFocusPolicy, &KyWindow::setMouseFocusPolicy)
                 .enumeration({{"eFocusGrabOnPress", eFocusGrabOnPress},
                               {"eFocusUnderPointer", eFocusUnderPointer},
                               {"eFocusCanvas", eFocusCanvas}})
                 .signal<&KyWindow::drawnSignal>("drawn")
                 .signal<&KyWindow::closedSignal>("closed")
                 .method("setSize", &KyWindow::setSize)
                 .method("requestRedraw", &KyWindow::requestRedraw)
                 .method("needsRedraw", &KyWindow::needsRedraw)
                 .method("grabPicture", &KyWindow::grabPicture)
                 .method("savePicture", &KyWindow::savePicture)
                 .staticMethod("getNbWindows", &KyWindow::getNbWindows)
                 .staticMethod("getWindow", &KyWindow::getWindow)
                 .build();
    KyCallSignatures::add("KyWindow", {"getWindow(index)", "savePicture(url)", "setSize(width, height)",
                                       "drawn(window)", "closed(window)"});
}

void KyWindow::finalizeType() {
    KyType::remove(msType);
}

const KyType* KyWindow::getType() {
    if (!msType)
        initializeType();
    return msType;
}

KyWindow* KyWindow::cast(KyObject* object) {
    return kyCast<KyWindow>(object);
}

const KyType* KyWindow::getObjectType() const {
    return getType();
}
