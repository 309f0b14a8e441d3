// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyHostStatistics.h"

#include "KyHostStage.h"

#include "Ky2DScene.h"
#include "Ky2DView.h"
#include "KyLanguage.h"
#include "KyQtPass.h"
#include "KyScriptEngine.h"

#include "KyMainTaskManager.h"
#include "KyTimer.h"

#include <lua.hpp>

#include <QCoreApplication>
#include <QFont>
#include <QLocale>
#include <QPainter>
#include <QSet>

#include <algorithm>
#include <numeric>

namespace {

constexpr QSize cSize(300, 182);
constexpr QRectF cGraph(12, 12, 240, 64);
constexpr int cFirstLine = 96;
constexpr int cLineHeight = 18;
constexpr int cTextLeft = 12;
constexpr int cValueLeft = 96;
constexpr int cFontSize = 12;
/// Of the graph, milliseconds: two frames of a usual display.
constexpr double cHighest = 1000.0 / 30.0;
constexpr double cDisplayFrame = 1000.0 / 60.0;
/// Above it a frame was late.
constexpr double cLate = 1.25 * cDisplayFrame;
/// Microseconds between two paintings.
constexpr long long cPaintingInterval = 125000;
constexpr double cMillisecondsPerMicrosecond = 1e-3;
constexpr double cMegabytesPerKilobyte = 1.0 / 1024.0;

const QColor cBack(13, 18, 25, 215);
const QColor cTrack(34, 48, 65);
const QColor cLabel(125, 143, 163);
const QColor cText(223, 231, 239);
const QColor cGood(95, 211, 141);
const QColor cBad(255, 180, 84);

unsigned countNodes(const KyNode& node) {
    unsigned count = 1;
    for (unsigned i = 0; i < node.getNbChildren(); ++i)
        count += countNodes(*node.getChild(i));
    return count;
}

void collectScenes(const KyGraphicsViewMultiPass& view, QSet<const Ky2DScene*>& scenes) {
    for (unsigned i = 0; i < view.getNbPasses(); ++i)
        if (const auto* const pass = KyQtPass::cast(view.getPass(i)); pass && pass->edit2DScene())
            scenes.insert(pass->edit2DScene());
    for (unsigned i = 0; i < view.getNbViews(); ++i)
        collectScenes(*view.getView(i), scenes);
}

/// Nodes of every 2D scene that is shown, over the view or in a window of its own.
unsigned count2DNodes(const KyCanvas& canvas) {
    QSet<const Ky2DScene*> scenes;
    for (unsigned i = 0; i < canvas.getNbViews(); ++i)
        collectScenes(*canvas.getView(i), scenes);
    for (unsigned i = 0; i < Ky2DView::getNbViews(); ++i)
        if (const Ky2DScene* const scene = Ky2DView::getView(i)->getScene())
            scenes.insert(scene);
    return std::accumulate(scenes.begin(), scenes.end(), 0u,
                           [](unsigned sum, const Ky2DScene* scene) { return sum + scene->getNbNodes(); });
}

double getLuaMegabytes() {
    lua_State* const state = KyScriptEngine::get().editLuaState();
    return state ? lua_gc(state, LUA_GCCOUNT, 0) * cMegabytesPerKilobyte : 0.0;
}

/// As the words beside it are written.
QLocale getLocale() {
    return QLocale(KyLanguage::get());
}

template <class Number>
QString toText(Number number) {
    return getLocale().toString(static_cast<qulonglong>(number));
}

QString toText(double number) {
    return getLocale().toString(number, 'f', 1);
}

} // namespace

KyHostStatistics::KyHostStatistics(KyHostStage& stage)
    : KyTask("KyHostStatistics")
    , mStage(stage)
    , mOverlay(stage, KyHostOverlay::eTopLeft, cSize, [this](QPainter& painter) { paint(painter); }) {
    mOverlay.setProbes([this] { beginDrawing(); }, [this] { endDrawing(); });
}

KyHostStatistics::~KyHostStatistics() = default;

void KyHostStatistics::setShown(bool isShown) {
    if (isShown == mOverlay.isShown())
        return;
    mNbKnown = 0;
    mLastFrame = 0;
    mOverlay.setShown(isShown);
    if (isShown)
        KyMainTaskManager::get().addTask(this);
    else
        KyMainTaskManager::get().removeTask(this);
}

bool KyHostStatistics::execute() {
    const long long now = KyTimer::getCurrentUS();
    if (mLastFrame != 0) {
        mFrame.length = static_cast<double>(now - mLastFrame) * cMillisecondsPerMicrosecond;
        mFrames[mNext] = mFrame;
        mNext = (mNext + 1) % cNbFrames;
        mNbKnown = std::min(mNbKnown + 1, cNbFrames);
    }
    mFrame = {};
    mLastFrame = now;
    if (now - mLastPainting < cPaintingInterval)
        return true;
    mLastPainting = now;
    mOverlay.update();
    return true;
}

void KyHostStatistics::beginDrawing() {
    mBefore = KyDrawStatistics::get();
    mDrawingBegin = KyTimer::getCurrentUS();
    mGpuTimer.begin();
}

void KyHostStatistics::endDrawing() {
    mGpuTimer.end();
    mFrame.drawing += static_cast<double>(KyTimer::getCurrentUS() - mDrawingBegin) * cMillisecondsPerMicrosecond;
    mFrame.gpu += std::max(mGpuTimer.getMilliseconds(), 0.0);
    const KyDrawStatistics& now = KyDrawStatistics::get();
    mDrawn.nbCalls = now.nbCalls - mBefore.nbCalls;
    mDrawn.nbPrimitives = now.nbPrimitives - mBefore.nbPrimitives;
}

void KyHostStatistics::paint(QPainter& painter) const {
    painter.setPen(Qt::NoPen);
    painter.setBrush(cBack);
    painter.drawRoundedRect(QRect(QPoint(), cSize), 8, 8);
    paintGraph(painter);
    paintNumbers(painter);
}

/// One bar a frame, the last one to the right.
void KyHostStatistics::paintGraph(QPainter& painter) const {
    painter.fillRect(cGraph, cTrack);
    const double width = cGraph.width() / static_cast<double>(cNbFrames);
    for (std::size_t i = 0; i < mNbKnown; ++i) {
        const double frame = getFrame(mNbKnown - 1 - i).length;
        const double height = cGraph.height() * std::min(frame / cHighest, 1.0);
        const double x = cGraph.left() + static_cast<double>(cNbFrames - mNbKnown + i) * width;
        painter.fillRect(QRectF(x, cGraph.bottom() - height, width, height), frame > cLate ? cBad : cGood);
    }
    const double line = cGraph.bottom() - cGraph.height() * cDisplayFrame / cHighest;
    painter.setPen(QPen(cText, 1.0, Qt::DashLine));
    painter.drawLine(QPointF(cGraph.left(), line), QPointF(cGraph.right(), line));
    QFont font = painter.font();
    font.setPixelSize(cFontSize - 2);
    painter.setFont(font);
    painter.setPen(cLabel);
    painter.drawText(QPointF(cGraph.right() + 5, line + 4), toText(cDisplayFrame));
}

const KyHostStatistics::Frame& KyHostStatistics::getFrame(std::size_t index) const {
    return mFrames[(mNext + cNbFrames - 1 - index) % cNbFrames];
}

double KyHostStatistics::getMean(double Frame::*time) const {
    double total = 0.0;
    for (std::size_t i = 0; i < mNbKnown; ++i)
        total += getFrame(i).*time;
    return total / static_cast<double>(std::max<std::size_t>(mNbKnown, 1));
}

QString KyHostStatistics::describeFrames() const {
    const double mean = getMean(&Frame::length);
    if (mean <= 0.0)
        return QStringLiteral("-");
    double longest = 0.0;
    for (std::size_t i = 0; i < mNbKnown; ++i)
        longest = std::max(longest, getFrame(i).length);
    return QCoreApplication::translate("KyHostStatistics", "%1/s  %2 ms, longest %3")
        .arg(toText(1000.0 / mean), toText(mean), toText(longest));
}

/// Of the same frames, whether they drew anything or not, so that it is a part of what they took.
QString KyHostStatistics::describeDrawing() const {
    const QString drawing = toText(getMean(&Frame::drawing)) + " ms";
    return mGpuTimer.getMilliseconds() < 0.0 ? drawing : drawing + ", " + toText(getMean(&Frame::gpu)) + " ms GPU";
}

void KyHostStatistics::paintNumbers(QPainter& painter) const {
    const KyScriptEngine& engine = KyScriptEngine::get();
    const std::pair<const char*, QString> rows[] = {
        {QT_TRANSLATE_NOOP("KyHostStatistics", "frames"), describeFrames()},
        {QT_TRANSLATE_NOOP("KyHostStatistics", "drawing"), describeDrawing()},
        {QT_TRANSLATE_NOOP("KyHostStatistics", "draw calls"),
         QCoreApplication::translate("KyHostStatistics", "%1, primitives: %2")
             .arg(toText(mDrawn.nbCalls), toText(mDrawn.nbPrimitives))},
        {QT_TRANSLATE_NOOP("KyHostStatistics", "nodes"),
         toText(countNodes(mStage.getScene())) + " 3D, " + toText(count2DNodes(mStage.getCanvas())) + " 2D"},
        {"Lua", QCoreApplication::translate("KyHostStatistics", "%1 MB, coroutines: %2")
                    .arg(toText(getLuaMegabytes()), toText(engine.getNbCoroutines()))},
    };
    QFont font = painter.font();
    font.setPixelSize(cFontSize);
    painter.setFont(font);
    int y = cFirstLine;
    for (const auto& [label, value] : rows) {
        painter.setPen(cLabel);
        painter.drawText(cTextLeft, y, QCoreApplication::translate("KyHostStatistics", label));
        painter.setPen(cText);
        painter.drawText(cValueLeft, y, value);
        y += cLineHeight;
    }
}
