// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "Ky2DUtil.h"

#include "KyColor.h"

#include <QApplication>
#include <QColor>

#include <algorithm>

namespace {

/// Written so that NaN, which compares with nothing, is 0.
double limit(float component) {
    return component > 0.0f ? std::min(static_cast<double>(component), 1.0) : 0.0;
}

} // namespace

bool Ky2DUtil::hasApplication() {
    return qobject_cast<QApplication*>(QCoreApplication::instance()) != nullptr;
}

QColor Ky2DUtil::KyColorToQColor(const KyColor& color) {
    return QColor::fromRgbF(limit(color.red), limit(color.green), limit(color.blue), limit(color.alpha));
}
