// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "Ky2DScene.h"
#include "Ky2DView.h"

#include "KyCallSignatures.h"
#include "KyTypeBuilder.h"

const KyType* Ky2DView::msType = nullptr;

void Ky2DView::initializeType() {
    if (msType)
        return;
    Ky2DScene::initializeType();
    using V = Ky2DView;
    msType = KyTypeBuilder<V>("Ky2DView", KyObject::getType())
                 .factory()
                 .attribute("Scene", &V::getScene, &V::setScene)
                 .attribute("BackgroundColor", &V::getBackgroundColor, &V::setBackgroundColor)
                 .attribute("Caption", &V::getCaption, &V::setCaption)
                 .attribute("Width", &V::getWidth, &V::setWidth)
                 .attribute("Height", &V::getHeight, &V::setHeight)
                 .attribute("Shown", &V::isShown, &V::setShown)
                 .attribute("Zoom", &V::getZoom, &V::setZoom)
                 .attribute("Center", &V::getCenter, &V::setCenter)
                 .attribute("Rotation", &V::getRotation, &V::setRotation)
                 .attribute("PickedNode", &V::getPickedNode)
                 .signal<&V::nodePickedSignal>("nodePicked")
                 .method("show", [](V& view) { view.setShown(true); })
                 .method("hide", [](V& view) { view.setShown(false); })
                 .method("fit", &V::fit)
                 .method("fitNode", &V::fitNode)
                 .method("zoom", &V::zoom)
                 .method("zoomAt", &V::zoomAt)
                 .method("pan", &V::pan)
                 .method("toScene", &V::toScene)
                 .method("fromScene", &V::fromScene)
                 .method("pick", &V::pick)
                 .method("saveImage", &V::saveImage)
                 .build();
    KyCallSignatures::add("Ky2DView",
                          {"fitNode(node)", "fromScene(point)", "toScene(x, y)", "pan(dx, dy)", "pick(x, y)",
                           "saveImage(path)", "zoom(factor)", "zoomAt(factor, x, y)", "nodePicked(node)"});
}

void Ky2DView::finalizeType() {
    KyType::remove(msType);
}

const KyType* Ky2DView::getType() {
    if (!msType)
        initializeType();
    return msType;
}

const KyType* Ky2DView::getObjectType() const {
    return getType();
}

Ky2DView* Ky2DView::cast(KyObject* object) {
    return kyCast<Ky2DView>(object);
}
