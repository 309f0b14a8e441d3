// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyScene.h"

#include "KyLight.h"

#include "KyTypeBuilder.h"

const KyType* KyScene::msType = nullptr;

namespace {

void collectLights(const KyNode& node, std::vector<KyLight*>& lights) {
    if (!node.isVisible())
        return;
    for (unsigned i = 0; i < node.getNbChildren(); ++i) {
        KyNode* child = node.getChild(i);
        if (auto* light = kyCast<KyLight>(static_cast<KyObject*>(child)); light && light->isVisible())
            lights.push_back(light);
        collectLights(*child, lights);
    }
}

} // namespace

void KyScene::initializeType() {
    if (msType)
        return;
    msType = KyTypeBuilder<KyScene>("KyScene", KyNode::getType())
                 .factory()
                 .attribute("Background", &KyScene::getBackgroundTop, &KyScene::setBackground)
                 .attribute("BackgroundTop", &KyScene::getBackgroundTop, &KyScene::setBackgroundTop)
                 .attribute("BackgroundBottom", &KyScene::getBackgroundBottom, &KyScene::setBackgroundBottom)
                 .attribute("SkyColor", &KyScene::getSkyColor, &KyScene::setSkyColor)
                 .attribute("GroundColor", &KyScene::getGroundColor, &KyScene::setGroundColor)
                 .container("Lights", &KyScene::getNbLights, &KyScene::getLight)
                 .build();
}

void KyScene::finalizeType() {
    KyType::remove(msType);
}

const KyType* KyScene::getType() {
    if (!msType)
        initializeType();
    return msType;
}

const KyType* KyScene::getObjectType() const {
    return getType();
}

KyScene* KyScene::cast(KyObject* object) {
    return kyCast<KyScene>(object);
}

KyObject* KyScene::factory() {
    return new KyScene;
}

std::vector<KyLight*> KyScene::getLights() const {
    std::vector<KyLight*> lights;
    collectLights(*this, lights);
    return lights;
}

KyLight* KyScene::getLight(unsigned index) const {
    const std::vector<KyLight*> lights = getLights();
    return index < lights.size() ? lights[index] : nullptr;
}

void KyScene::assign(KyColor& member, const KyColor& color, const char* attribute) {
    if (member == color)
        return;
    member = color;
    markModified(attribute);
}

void KyScene::setBackground(const KyColor& color) {
    setBackgroundTop(color);
    setBackgroundBottom(color);
}

void KyScene::setBackgroundTop(const KyColor& color) {
    assign(mBackgroundTop, color, "BackgroundTop");
}

void KyScene::setBackgroundBottom(const KyColor& color) {
    assign(mBackgroundBottom, color, "BackgroundBottom");
}

void KyScene::setSkyColor(const KyColor& color) {
    assign(mSkyColor, color, "SkyColor");
}

void KyScene::setGroundColor(const KyColor& color) {
    assign(mGroundColor, color, "GroundColor");
}
