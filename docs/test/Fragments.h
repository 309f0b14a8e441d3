// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

// What the documents take for granted where they show a few lines alone.

#include "KyLamp.h"

#include "Ky2DNode.h"
#include "Ky2DStyle.h"
#include "KyDebugAdapter.h"
#include "KyLanguage.h"
#include "KyNetworkConnection.h"
#include "KyNetworkPasswordManager.h"
#include "KyObjectQmlBinding.h"
#include "KyObjectToQVariantConverter.h"
#include "KyQProxySettingsEditor.h"
#include "KyQtConversion.h"
#include "KyScriptEngine.h"
#include "KyScriptSandbox.h"

#include "KyCallSignatures.h"
#include "KyScene.h"
#include "KyScenePass.h"

#include <QBrush>
#include <QDir>
#include <QGraphicsPathItem>
#include <QPainterPath>
#include <QPen>
#include <QQmlContext>
#include <QQmlEngine>

#include <iostream>
#include <string>

inline QPainterPath makeStar(int points, const KyVec2d& offset) {
    QPainterPath path;
    path.addEllipse(QPointF(offset.x, offset.y), points, points);
    return path;
}

inline void open(const std::string&, const std::string&) {}

inline void steer(float) {}
