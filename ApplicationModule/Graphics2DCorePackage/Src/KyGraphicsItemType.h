// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QGraphicsItem>

/// Numbers that QGraphicsItem::type() tells of items that the 2D scene treats in a way of their own.
enum KyGraphicsItemType : int {
    /// The item shows a 3D view: it covers what lies below it and is never picked.
    eGraphicsItem3DView = QGraphicsItem::UserType + 0x4b59
};
