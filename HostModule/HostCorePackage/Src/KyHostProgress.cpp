// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyHostProgress.h"

#include "KyHostTerminal.h"

#include "KyLanguage.h"
#include "KyNetworkConnectionObject.h"

#include "KyMainTaskManager.h"
#include "KyProgress.h"
#include "KyTimer.h"

#include <QFont>
#include <QFontMetrics>
#include <QLocale>
#include <QPainter>

#include <algorithm>
#include <cstdio>
#include <utility>

namespace {

/// Seconds of work that nobody needs to see.
constexpr double cPatience = 0.5;
constexpr double cSecondsPerMicrosecond = 1e-6;
/// Of a bar that nobody knows the length of, how long its part is and how long it takes to cross.
constexpr double cUnknownPart = 0.25;
constexpr double cCrossing = 1.6;

constexpr QSize cSize(380, 64);
constexpr int cEdge = 16;
constexpr int cTextLine = 26;
constexpr QRectF cTrack(cEdge, 40, 380 - 2 * cEdge, 8);
constexpr int cFontSize = 13;

const QColor cBack(13, 18, 25, 230);
const QColor cTrackColor(34, 48, 65);
const QColor cBar(79, 179, 255);
const QColor cText(223, 231, 239);
const QColor cLabel(125, 143, 163);

KyNetworkConnectionObject* findDownload() {
    KyNetworkConnectionObject* const network = KyNetworkConnectionObject::find();
    return network && network->isDownloading() ? network : nullptr;
}

/// Where a bar begins and ends, of the track.
std::pair<double, double> getSpan(double share) {
    if (share >= 0.0)
        return {0.0, std::min(share, 1.0)};
    const double seconds = static_cast<double>(KyTimer::getCurrentUS() % 1000000000) * cSecondsPerMicrosecond;
    const double begin = (1.0 + cUnknownPart) * (seconds / cCrossing - static_cast<long>(seconds / cCrossing));
    return {std::max(begin - cUnknownPart, 0.0), std::min(begin, 1.0)};
}

/// The titles that the libraries give, which know no translations.
constexpr const char* cTitles[] = {
    QT_TRANSLATE_NOOP("KyHostProgress", "Loading %1"), QT_TRANSLATE_NOOP("KyHostProgress", "Copying %1"),
    QT_TRANSLATE_NOOP("KyHostProgress", "Deleting %1"), QT_TRANSLATE_NOOP("KyHostProgress", "Unpacking %1")};

QString translateTitle(const QString& title) {
    for (const char* const text : cTitles)
        if (const QString verb = QString::fromLatin1(text).remove("%1"); title.startsWith(verb))
            return KyHostProgress::tr(text).arg(title.mid(verb.size()));
    return title;
}

constexpr const char* cDownloading = QT_TRANSLATE_NOOP("KyHostProgress", "Downloading, %1");

QString describe(const KyNetworkConnectionObject& download, const QString& language) {
    return QLocale(language).formattedDataSize(download.getReceived());
}

QString toPercent(double share) {
    return share < 0.0 ? QString() : QStringLiteral("%1 %").arg(static_cast<int>(100.0 * share));
}

} // namespace

KyHostProgress::KyHostProgress(KyHostStage& stage, Listeners listeners)
    : KyTask("KyHostProgress")
    , mOverlay(stage, KyHostOverlay::eBottom, cSize, [this](QPainter& painter) { paint(painter); })
    , mListeners(std::move(listeners))
    , mHasTerminal(KyHostTerminal::isErrorRead()) {
    KyProgress& progress = KyProgress::get();
    progress.open();
    progress.changedSignal().connect(this, &KyHostProgress::onChanged);
    KyMainTaskManager::get().addTask(this);
}

KyHostProgress::~KyHostProgress() {
    hide();
    KyProgress::get().close();
}

/// Escape has other meanings where nothing is shown.
bool KyHostProgress::cancel() {
    if (!mIsShown)
        return false;
    if (KyProgress::get().cancel())
        return true;
    KyNetworkConnectionObject* const network = findDownload();
    if (network)
        network->cancel();
    return network != nullptr;
}

/// Events may bring more work, which is told within that which is being told.
void KyHostProgress::onChanged(const std::string& title, double share) {
    KyProgress& progress = KyProgress::get();
    if (mListeners.isEnding())
        progress.cancel();
    if (share >= 1.0 || !progress.isActive())
        return hide();
    if (progress.getSeconds() < cPatience)
        return;
    const QString english = QString::fromStdString(title);
    show({english, translateTitle(english)}, share);
    if (std::exchange(mIsProcessing, true))
        return;
    mListeners.processEvents();
    mIsProcessing = false;
}

bool KyHostProgress::execute() {
    if (!findDownload()) {
        // A part that was cancelled may have been the last to tell anything.
        if (std::exchange(mDownloadBegin, 0) != 0 || (mIsShown && !KyProgress::get().isActive()))
            hide();
        return false;
    }
    const long long now = KyTimer::getCurrentUS();
    if (mDownloadBegin == 0)
        mDownloadBegin = now;
    showDownload(static_cast<double>(now - mDownloadBegin) * cSecondsPerMicrosecond);
    return true;
}

void KyHostProgress::showDownload(double seconds) {
    if (seconds < cPatience)
        return;
    const KyNetworkConnectionObject& network = *findDownload();
    const auto received = static_cast<double>(network.getReceived()), total = static_cast<double>(network.getTotal());
    show({QString::fromLatin1(cDownloading).arg(describe(network, KyLanguage::cEnglish)),
          tr(cDownloading).arg(describe(network, KyLanguage::get()))},
         total > 0.0 ? received / total : -1.0);
}

/// Unchanged, it is not drawn again.
void KyHostProgress::show(const Title& title, double share) {
    const bool isNews =
        !mIsShown || title.translated != mTitle.translated || toPercent(share) != toPercent(mShare) || share < 0.0;
    mTitle = title;
    mShare = share;
    if (!std::exchange(mIsShown, true) && mListeners.showView())
        mOverlay.setShown(true);
    if (mOverlay.isShown())
        mOverlay.follow();
    if (isNews && mOverlay.isShown())
        mOverlay.update();
    else if (isNews)
        writeLine();
}

void KyHostProgress::hide() {
    mOverlay.setShown(false);
    mIsShown = false;
    if (std::exchange(mIsOnTerminal, false))
        std::fputs("\r\033[K", stderr);
}

void KyHostProgress::writeLine() {
    if (!mHasTerminal)
        return;
    mIsOnTerminal = true;
    const QString line = QStringLiteral("%1 %2").arg(mTitle.english, toPercent(mShare));
    std::fprintf(stderr, "\r%s\033[K", line.toLocal8Bit().constData());
    std::fflush(stderr);
}

void KyHostProgress::paint(QPainter& painter) const {
    painter.setPen(Qt::NoPen);
    painter.setBrush(cBack);
    painter.drawRoundedRect(QRect(QPoint(), cSize), 8, 8);
    painter.setBrush(cTrackColor);
    painter.drawRoundedRect(cTrack, 4, 4);
    const auto [begin, end] = getSpan(mShare);
    painter.setBrush(cBar);
    painter.drawRoundedRect(
        QRectF(cTrack.left() + begin * cTrack.width(), cTrack.top(), (end - begin) * cTrack.width(), cTrack.height()),
        4, 4);
    QFont font = painter.font();
    font.setPixelSize(cFontSize);
    painter.setFont(font);
    const QFontMetrics metrics(font);
    const QString right = tr("%1   Esc cancels").arg(toPercent(mShare));
    const int width = metrics.horizontalAdvance(right);
    painter.setPen(cLabel);
    painter.drawText(cSize.width() - cEdge - width, cTextLine, right);
    painter.setPen(cText);
    const int room = cSize.width() - 3 * cEdge - width;
    painter.drawText(cEdge, cTextLine, metrics.elidedText(mTitle.translated, Qt::ElideMiddle, room));
}
