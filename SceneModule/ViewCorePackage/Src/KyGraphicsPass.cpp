// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyGraphicsPass.h"

#include "KyGraphicsViewMultiPass.h"

#include "KyTypeBuilder.h"

const KyType* KyGraphicsPass::msType = nullptr;

void KyGraphicsPass::initializeType() {
    if (msType)
        return;
    msType = KyTypeBuilder<KyGraphicsPass>("KyGraphicsPass", KyBaseGraphicsPass::getType())
                 .attribute("Area", &KyGraphicsPass::getArea, &KyGraphicsPass::setArea)
                 .build();
}

void KyGraphicsPass::finalizeType() {
    KyType::remove(msType);
}

const KyType* KyGraphicsPass::getType() {
    if (!msType)
        initializeType();
    return msType;
}

const KyType* KyGraphicsPass::getObjectType() const {
    return getType();
}

KyGraphicsPass* KyGraphicsPass::cast(KyObject* object) {
    return kyCast<KyGraphicsPass>(object);
}

KyRect<int> KyGraphicsPass::getAreaPixels(const KyGraphicsViewMultiPass* view) const {
    return kyScaleArea(KyBaseGraphicsPass::getAreaPixels(view), mArea);
}

void KyGraphicsPass::setArea(const KyRect<double>& area) {
    const KyRect<double> wanted = area.isNull() ? KyRect<double>(0.0, 0.0, 1.0, 1.0) : area;
    if (wanted == mArea)
        return;
    mArea = wanted;
    markModified("Area");
}
