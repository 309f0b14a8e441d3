// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyAnsweringServer.h"
#include "KyHostSession.h"

#include "KyHostProgress.h"
#include "KyHostStatistics.h"

#include "KyNetworkConnectionObject.h"

#include "KyLongWork.h"
#include "KyMainTaskManager.h"

#include <QElapsedTimer>
#include <QGuiApplication>
#include <QTemporaryDir>
#include <QThread>
#include <QTimer>

namespace {

constexpr int cLong = 700;
constexpr int cShort = 300;

class KyHostProgressTest : public KyHostSession<QCoreApplication> {
protected:
    /// Works that long, or until it is cancelled.
    bool work(int milliseconds) {
        KyLongWork work("Copying");
        QElapsedTimer timer;
        timer.start();
        while (timer.elapsed() < milliseconds && !work.editTracker().isCanceled()) {
            QThread::msleep(10);
            work.editTracker().touch();
        }
        return !work.editTracker().isCanceled();
    }

    int mNbShown = 0;
    int mNbProcessed = 0;
    bool mIsEnding = false;
    std::function<void()> mDuringEvents;
    KyHostProgress mProgress{mStage,
                             {[this] { return ++mNbShown > 0; },
                              [this] {
                                  ++mNbProcessed;
                                  EXPECT_TRUE(mProgress.isShown());
                                  EXPECT_EQ(mStage.getCanvas().getNbViews(), 2u) << "the bar stands over the view";
                                  if (mDuringEvents)
                                      mDuringEvents();
                              },
                              [this] { return mIsEnding; }}};
};

} // namespace

TEST_F(KyHostProgressTest, OnlyLongWorkIsShownAndLetsEventsThrough) {
    EXPECT_TRUE(work(cShort));
    EXPECT_EQ(mNbShown, 0);
    EXPECT_FALSE(mProgress.cancel()) << "Escape is the window's";
    EXPECT_TRUE(work(cLong));
    EXPECT_EQ(mNbShown, 1);
    EXPECT_GE(mNbProcessed, 2);
    EXPECT_FALSE(mProgress.isShown());
    EXPECT_EQ(mStage.getCanvas().getNbViews(), 1u) << "nothing stays over the view";
}

TEST_F(KyHostProgressTest, EscapeCancelsWhatIsShownAndSoDoesTheProgramsEnd) {
    mDuringEvents = [this] { EXPECT_TRUE(mProgress.cancel()); };
    EXPECT_FALSE(work(10 * cLong));
    EXPECT_EQ(mNbProcessed, 1);
    EXPECT_FALSE(mProgress.isShown());
    mIsEnding = true;
    mDuringEvents = {};
    EXPECT_FALSE(work(10 * cLong));
    EXPECT_EQ(mNbShown, 1);
}

TEST_F(KyHostProgressTest, NoBarStaysWhenAPartOfQuietWorkIsCancelled) {
    mDuringEvents = [this] { EXPECT_TRUE(mProgress.cancel()); };
    {
        const KyLongWork whole("Loading");
        EXPECT_FALSE(work(10 * cLong));
    }
    EXPECT_EQ(mNbShown, 1);
    KyMainTaskManager::get().update();
    EXPECT_FALSE(mProgress.isShown());
}

TEST_F(KyHostProgressTest, ADownloadIsShownUntilItsFileIsThere) {
    const QTemporaryDir folder;
    KyAnsweringServer server(KyAnsweringServer::makeHead("200 OK", 8) + "data", "rest");
    KyNetworkConnectionObject& network = *KyNetworkConnectionObject::get();
    network.setUseSystemProxy(false);
    int nbViews = 0;
    const auto drawFrame = [&] {
        KyMainTaskManager::get().update();
        if (nbViews > 0 || !mProgress.isShown())
            return;
        nbViews = static_cast<int>(mStage.getCanvas().getNbViews());
        server.goOn();
    };
    // It loads in an event loop of its own.
    QTimer frames;
    QObject::connect(&frames, &QTimer::timeout, drawFrame);
    frames.start(5);
    QTimer::singleShot(10 * cLong, &frames, [&network] { network.cancel(); });
    ASSERT_TRUE(network.download(server.getUrl().toStdString(), folder.path().toStdString()));
    while (network.isDownloading())
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    EXPECT_EQ(nbViews, 2) << "the bar stands over the view";
    KyMainTaskManager::get().update();
    EXPECT_EQ(network.getReceived(), 8);
    EXPECT_FALSE(mProgress.isShown());
    EXPECT_EQ(mStage.getCanvas().getNbViews(), 1u) << "nothing stays over the view";
}

TEST_F(KyHostProgressTest, StatisticsThatAreHiddenLeaveViewAndFramesAlone) {
    const unsigned before = KyMainTaskManager::get().getNbTasks();
    KyHostStatistics statistics(mStage);
    EXPECT_EQ(KyMainTaskManager::get().getNbTasks(), before);
    EXPECT_EQ(mStage.getCanvas().getNbViews(), 1u);
    statistics.setShown(true);
    EXPECT_EQ(KyMainTaskManager::get().getNbTasks(), before + 1);
    EXPECT_EQ(mStage.getCanvas().getNbViews(), 3u);
    mStage.beginScene();
    mStage.showScene();
    KyMainTaskManager::get().update();
    EXPECT_EQ(mStage.getCanvas().getNbViews(), 3u) << "they go over every scene that comes";
    statistics.setShown(false);
    EXPECT_EQ(KyMainTaskManager::get().getNbTasks(), before);
    EXPECT_EQ(mStage.getCanvas().getNbViews(), 1u);
}
