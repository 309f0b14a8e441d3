// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "Ky2DUtil.h"

#include "Ky2DStyle.h"

#include "KyColor.h"

#include <QApplication>
#include <QBrush>
#include <QColor>
#include <QGraphicsItem>
#include <QPen>
#include <QTransform>

#include <algorithm>
#include <array>
#include <cmath>
#include <typeinfo>

namespace {

/// Written so that NaN, which compares with nothing, is 0.
double limit(float component) {
    return component > 0.0f ? std::min(static_cast<double>(component), 1.0) : 0.0;
}

} // namespace

bool Ky2DUtil::hasApplication() {
    // Asked at every update: the class that was one before is one again.
    static const std::type_info* known = nullptr;
    const QCoreApplication* application = QCoreApplication::instance();
    if (!application)
        return false;
    const std::type_info* type = &typeid(*application);
    if (type == known)
        return true;
    if (!qobject_cast<const QApplication*>(application))
        return false;
    known = type;
    return true;
}

bool Ky2DUtil::isFinite(const QTransform& t) {
    return std::ranges::all_of(
        std::array{t.m11(), t.m12(), t.m13(), t.m21(), t.m22(), t.m23(), t.dx(), t.dy(), t.m33()},
        [](double number) { return std::isfinite(number); });
}

void Ky2DUtil::applyShapeStyle(const Ky2DStyle* style, QAbstractGraphicsShapeItem* item) {
    if (!item || !style)
        return;
    QPen pen;
    QBrush brush;
    style->configureShapeStyle(&pen, &brush);
    item->setPen(pen);
    item->setBrush(brush);
}

QColor Ky2DUtil::KyColorToQColor(const KyColor& color) {
    return QColor::fromRgbF(limit(color.red), limit(color.green), limit(color.blue), limit(color.alpha));
}
