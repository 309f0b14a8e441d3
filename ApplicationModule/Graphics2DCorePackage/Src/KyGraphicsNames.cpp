// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyFillMode.h"
#include "KyFillRule.h"
#include "KyStrokeCap.h"
#include "KyStrokeJoin.h"
#include "KyStrokeMode.h"

namespace KyGraphics {

const char* const gFillModeNames[eNbFillMode] = {"NoFilled",      "SolidPattern",  "Dense1Pattern",   "Dense2Pattern",
                                                 "Dense3Pattern", "Dense4Pattern", "Dense5Pattern",   "Dense6Pattern",
                                                 "Dense7Pattern", "HorPattern",    "VerPattern",      "CrossPattern",
                                                 "BDiagPattern",  "FDiagPattern",  "DiagCrossPattern"};

const char* const gFillRuleNames[eNbFillRule] = {"EvenOdd", "NonZero"};

const char* const gStrokeModeNames[eNbStrokeMode] = {"NoLine",      "SolidLine",      "DashLine",      "DotLine",
                                                     "DashDotLine", "DashDotDotLine", "CustomDashLine"};

const char* const gStrokeJoinNames[eNbStrokeJoin] = {"Miter", "Bevel", "Round", "SvgMiter"};

const char* const gStrokeCapNames[eNbStrokeCap] = {"Flat", "Square", "Round"};

} // namespace KyGraphics
