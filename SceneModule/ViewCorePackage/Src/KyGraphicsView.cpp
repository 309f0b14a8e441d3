// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyGraphicsView.h"

#include "KyCanvas.h"

#include "KyCallSignatures.h"
#include "KyTypeBuilder.h"

#include <cmath>

const KyType* KyGraphicsView::msType = nullptr;

void KyGraphicsView::initializeType() {
    if (msType)
        return;
    msType = KyTypeBuilder<KyGraphicsView>("KyGraphicsView", KyObject::getType())
                 .attribute("Name", &KyGraphicsView::getName, &KyGraphicsView::setName)
                 .attribute("Enabled", &KyGraphicsView::isEnabled, &KyGraphicsView::setEnabled)
                 .attribute("Area", &KyGraphicsView::getArea, &KyGraphicsView::setArea)
                 .attribute("AbsoluteArea", &KyGraphicsView::getAbsoluteArea)
                 .method("pickPoint",
                         [](KyGraphicsView& view, int x, int y) {
                             KyVec3d world;
                             return view.pickPoint(x, y, world) ? KyField(world) : KyField();
                         })
                 .build();
    KyCallSignatures::add("KyGraphicsView", {"pickPoint(x, y): Vec3d?"});
}

void KyGraphicsView::finalizeType() {
    KyType::remove(msType);
}

const KyType* KyGraphicsView::getType() {
    if (!msType)
        initializeType();
    return msType;
}

const KyType* KyGraphicsView::getObjectType() const {
    return getType();
}

KyGraphicsView* KyGraphicsView::cast(KyObject* object) {
    return kyCast<KyGraphicsView>(object);
}

void KyGraphicsView::setName(const std::string& name) {
    if (name == mName)
        return;
    mName = name;
    notifyModified("Name");
}

bool KyGraphicsView::isEnabledWithParents() const {
    const KyGraphicsView* view = this;
    while (view && view->mIsEnabled)
        view = view->mParent;
    return !view;
}

KyCanvas* KyGraphicsView::getCanvas() const {
    const KyGraphicsView* top = this;
    while (top->mParent)
        top = top->mParent;
    return top->mCanvas;
}

KyRect<int> KyGraphicsView::getAbsoluteArea() const {
    KyRect<int> whole;
    if (mParent)
        whole = mParent->getAbsoluteArea();
    else if (mCanvas)
        whole = KyRect<int>(0, 0, mCanvas->getWidth(), mCanvas->getHeight());
    return mIsWhole ? whole : kyScaleArea(whole, mArea);
}

bool KyGraphicsView::containsPixel(int x, int y) const {
    const KyRect<int> area = getAbsoluteArea();
    const std::int64_t column = std::int64_t{x} - area.origin.x, row = std::int64_t{y} - area.origin.y;
    return column >= 0 && row >= 0 && column < area.getWidth() && row < area.getHeight();
}

void KyGraphicsView::setEnabled(bool isEnabled) {
    if (isEnabled == mIsEnabled)
        return;
    mIsEnabled = isEnabled;
    markModified("Enabled");
}

void KyGraphicsView::setArea(const KyRect<double>& area) {
    const KyRect<double> all(0.0, 0.0, 1.0, 1.0);
    const KyRect<double> wanted = area.isNull() ? all : area;
    if (wanted == mArea)
        return;
    mArea = wanted;
    mIsWhole = wanted == all;
    markModified("Area");
}

bool KyGraphicsView::handleEvent(const KyInputEvent&) {
    return false;
}

bool KyGraphicsView::pickPoint(int, int, KyVec3d&) const {
    return false;
}

void KyGraphicsView::render(KyRendererContext&) {}

void KyGraphicsView::markModified(std::string_view attribute) {
    touch();
    notifyModified(attribute);
}

KyRect<int> kyScaleArea(const KyRect<int>& area, const KyRect<double>& fractions) {
    // Edges are rounded, not sizes: two halves of an odd number of pixels leave no gap.
    const auto place = [](int origin, int size, double fraction) {
        return KyScalar::add(origin, KyScalar::round<int>(fraction * size));
    };
    const int left = place(area.origin.x, area.getWidth(), fractions.origin.x);
    const int right = place(area.origin.x, area.getWidth(), fractions.origin.x + fractions.width);
    const int top = place(area.origin.y, area.getHeight(), fractions.origin.y);
    const int bottom = place(area.origin.y, area.getHeight(), fractions.origin.y + fractions.height);
    return KyRect<int>(left, top, KyScalar::subtract(right, left), KyScalar::subtract(bottom, top));
}
