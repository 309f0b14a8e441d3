// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyQTouchEventFilter.h"
#include "KyTouchTesting.h"

#include <gtest/gtest.h>

#include <QAbstractEventDispatcher>
#include <QDragEnterEvent>
#include <QListWidget>
#include <QMimeData>
#include <QScrollArea>
#include <QScrollBar>
#include <QTimerEvent>

#include <cmath>

namespace {

/// Steps the flick by hand: its timer runs, but no event loop does.
struct SteppedFilter : KyQTouchEventFilter {
    using KyQTouchEventFilter::KyQTouchEventFilter;
    QList<QAbstractEventDispatcher::TimerInfo> getTimers() {
        return QAbstractEventDispatcher::instance()->registeredTimers(this);
    }
    void step() {
        for (const auto& timer : getTimers()) {
            QTimerEvent event(timer.timerId);
            timerEvent(&event);
        }
    }
};

class KyQTouchEventFilterTest : public testing::Test {
protected:
    KyQTouchEventFilterTest() { install(); }

    QScrollBar* vertical() { return mArea->verticalScrollBar(); }
    QScrollBar* horizontal() { return mArea->horizontalScrollBar(); }
    void install(double decay = 0.75, bool isKinetic = true) {
        mArea = std::make_unique<QScrollArea>();
        for (QScrollBar* bar : {vertical(), horizontal()}) {
            bar->setRange(0, 1000);
            bar->setValue(500);
        }
        mFilter = new SteppedFilter(mArea.get(), isKinetic, decay);
        mArea->viewport()->installEventFilter(mFilter);
    }
    bool touch(QEvent::Type type, const QList<KyTestFinger>& fingers) {
        QTouchEvent event = kyMakeTouch(type, fingers);
        return mFilter->eventFilter(mArea->viewport(), &event);
    }
    bool touch(QEvent::Type type, QPointF last, QPointF position) {
        return touch(type, {{1, position, Qt::TouchPointMoved, last}});
    }
    /// A finger that goes by `way` in the last update, and is lifted there.
    void flick(QPointF way) {
        const QPointF start(500, 500), end = start + way;
        touch(QEvent::TouchBegin, start, start);
        touch(QEvent::TouchUpdate, start, end);
        touch(QEvent::TouchEnd, end, end);
    }
    std::vector<int> getSteps(std::size_t count) {
        std::vector<int> steps(count);
        for (int& step : steps) {
            const int former = vertical()->value();
            mFilter->step();
            step = vertical()->value() - former;
        }
        return steps;
    }

    SteppedFilter* mFilter = nullptr;
    std::unique_ptr<QScrollArea> mArea;
};

TEST_F(KyQTouchEventFilterTest, AFingerScrollsAndFractionsAreCarried) {
    EXPECT_TRUE(touch(QEvent::TouchBegin, {50, 50}, {50, 50}));
    EXPECT_TRUE(touch(QEvent::TouchUpdate, {50, 50}, {43, 53}));
    EXPECT_EQ(std::pair(horizontal()->value(), vertical()->value()), std::pair(507, 497));
    for (int i = 0; i < 4; ++i)
        touch(QEvent::TouchUpdate, {43, 53 - 0.5 * i}, {43, 52.5 - 0.5 * i});
    EXPECT_EQ(vertical()->value(), 499);
}

TEST_F(KyQTouchEventFilterTest, AFlickOfSpeed40RunsDownByItsSteps) {
    flick({0, -40});
    ASSERT_EQ(mFilter->getTimers().size(), 1);
    EXPECT_EQ(mFilter->getTimers()[0].interval, 30);
    EXPECT_EQ(mFilter->getTimers()[0].timerType, Qt::CoarseTimer);
    EXPECT_EQ(getSteps(9), (std::vector<int>{40, 30, 22, 16, 12, 9, 6, 4, 0}));
}

TEST_F(KyQTouchEventFilterTest, WhatIsNoFlickRunsNoFurther) {
    const struct {
        QPointF way;
        double decay;
        bool isKinetic;
        int second;
    } rows[] = {{{0, -25}, 0.5, true, 0},   {{0, -26}, 0.5, true, 13},        {{0, -40}, 0.5, false, 0},
                {{0, -40}, -0.1, true, 30}, {{0, -40}, 1.0, true, 30},        {{0, -40}, std::nan(""), true, 30},
                {{0, -40}, 0.0, true, 0},   {{0, std::nan("")}, 0.5, true, 0}};
    for (const auto& row : rows) {
        install(row.decay, row.isKinetic);
        flick(row.way);
        EXPECT_EQ(getSteps(2)[1], row.second) << row.way.y() << ' ' << row.decay;
    }
}

TEST_F(KyQTouchEventFilterTest, ATouchStopsTheFlickAndFingersAtRestStartNone) {
    flick({0, -40});
    flick({0, -50});
    EXPECT_EQ(mFilter->getTimers().size(), 1);
    const KyTestFinger a{1, {10, 100}, Qt::TouchPointStationary, {10, 100}};
    const KyTestFinger b{2, {10, 300}, Qt::TouchPointStationary, {10, 300}};
    touch(QEvent::TouchBegin, {a});
    touch(QEvent::TouchUpdate, {a, b});
    touch(QEvent::TouchEnd, {b});
    EXPECT_TRUE(mFilter->getTimers().isEmpty());
    flick({0, 40});
    vertical()->setValue(0);
    getSteps(1);
    vertical()->setValue(500);
    EXPECT_EQ(getSteps(1)[0], 0) << "it had come to the end of the area";
}

TEST_F(KyQTouchEventFilterTest, ADragKeepsTouchesFromScrolling) {
    mArea->viewport()->setAcceptDrops(true);
    QMimeData data;
    QDragEnterEvent drag({}, Qt::CopyAction, &data, {}, {});
    drag.ignore();
    EXPECT_TRUE(QCoreApplication::sendEvent(mArea->viewport(), &drag));
    EXPECT_FALSE(drag.isAccepted());
    touch(QEvent::TouchUpdate, {50, 50}, {50, 40});
    EXPECT_EQ(vertical()->value(), 500);
    touch(QEvent::TouchEnd, {50, 40}, {50, 39});
    EXPECT_EQ(vertical()->value(), 501);
}

TEST_F(KyQTouchEventFilterTest, InstallingPreparesTheWidget) {
    QListWidget list;
    list.setVerticalScrollMode(QAbstractItemView::ScrollPerItem);
    KyQTouchEventFilter::installTouchEventFilter(&list);
    EXPECT_EQ(list.verticalScrollMode(), QAbstractItemView::ScrollPerPixel);
    EXPECT_TRUE(list.viewport()->testAttribute(Qt::WA_AcceptTouchEvents));
    QWidget plain;
    EXPECT_EQ(KyQTouchEventFilter::installTouchEventFilter(&plain)->parent(), &plain);
    EXPECT_TRUE(plain.testAttribute(Qt::WA_AcceptTouchEvents));
    EXPECT_EQ(KyQTouchEventFilter::installTouchEventFilter(nullptr), nullptr);
}

TEST_F(KyQTouchEventFilterTest, AnyListOfFingersAndAnyPositionIsBorne) {
    constexpr double cPositions[] = {0, -2147483648.0, 2147483647.0, 1e300, NAN};
    QList<KyTestFinger> fingers;
    for (int count = 0; count <= 100; ++count) {
        for (const auto type : {QEvent::TouchBegin, QEvent::TouchUpdate, QEvent::TouchEnd})
            EXPECT_EQ(touch(type, fingers), count > 0);
        const QPointF a(cPositions[count % 5], cPositions[count / 5 % 5]);
        fingers.prepend({count, a, Qt::TouchPointMoved, {a.y(), a.x()}});
    }
}

TEST_F(KyQTouchEventFilterTest, TheAreaMayBeDeletedWhileItFlicks) {
    for (const bool byTimer : {false, true}) {
        install();
        if (byTimer)
            flick({0, -40});
        QObject::connect(vertical(), &QScrollBar::valueChanged, [this] { mArea.reset(); });
        if (byTimer)
            mFilter->step();
        else
            touch(QEvent::TouchUpdate, {50, 50}, {50, 40});
        EXPECT_FALSE(mArea);
    }
}

} // namespace
