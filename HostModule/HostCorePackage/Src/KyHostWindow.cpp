// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyHostWindow.h"

#include "KyHostForms.h"
#include "KyHostHelp.h"
#include "KyHostKeys.h"
#include "KyHostLanguagePage.h"
#include "KyHostNavigationPage.h"
#include "KyHostPicture.h"
#include "KyHostStage.h"

#include "KyNetworkConnection.h"
#include "KyQProxySettingsEditor.h"
#include "KyQSettingsDialog.h"

#include "KyImage.h"

#include <QKeyEvent>
#include <QOpenGLContext>
#include <QScreen>

#include <algorithm>

namespace {

/// Shorter than the display's frame, so that the display and not this sets the pace where it can.
constexpr double cShareOfFrame = 0.9;
constexpr double cNominalRate = 60.0;

} // namespace

std::unique_ptr<KyHostWindow> KyHostWindow::create(KyHostStage& stage, int width, int height, std::string& error) {
    if (!isSupported(error)) {
        error += "; --offscreen draws without it";
        return nullptr;
    }
    std::unique_ptr<KyHostWindow> window(new KyHostWindow(stage));
    window->resize(width, height);
    return window;
}

/// The loop asks for frames, at the pace of the scripts.
KyHostWindow::KyHostWindow(KyHostStage& stage)
    : KyQOpenGLWindow(&stage.getCanvas())
    , mStage(stage) {
    QOpenGLWindow::setTitle("kyhost");
    setAutoRedraw(false);
    drawnSignal().connect(*this, [this](KyWindow*) {
        if (mListeners.drawn)
            mListeners.drawn();
    });
    closedSignal().connect(*this, [this](KyWindow*) {
        if (mListeners.closed)
            mListeners.closed();
    });
}

KyHostWindow::~KyHostWindow() {
    mListeners = {};
    KyHostWindow::makeCurrent();
}

void KyHostWindow::showStage() {
    if (getCanvas() != &mStage.getCanvas())
        setCanvas(&mStage.getCanvas());
    mStage.setSize(getWidth(), getHeight());
}

void KyHostWindow::draw() {
    showStage();
    requestRedraw();
}

int KyHostWindow::getFrameInterval() const {
    const double rate = screen() ? screen()->refreshRate() : cNominalRate;
    return static_cast<int>(cShareOfFrame * 1e6 / std::max(rate, 1.0));
}

bool KyHostWindow::makeCurrent() {
    QOpenGLWindow::makeCurrent();
    return QOpenGLContext::currentContext() != nullptr;
}

bool KyHostWindow::savePicture(const std::string& path, std::string& error) {
    showStage();
    if (const KyHolder<KyImage> image(grabPicture()); image)
        return KyHostPicture::save(*image, path, error);
    error = "cannot draw the picture for '" + path + "'";
    return false;
}

void KyHostWindow::setSettings(KyHostSettings& settings) {
    mNavigationPage = std::make_unique<KyHostNavigationPage>(
        settings, [this, &settings] { settings.applyChangesTo(mStage.getTrackball()); });
    mLanguagePage = std::make_unique<KyHostLanguagePage>(settings, [&settings] { settings.applyLanguage(); });
    mProxyPage = std::make_unique<KyQProxySettingsEditor>(KyNetworkConnection::get());
}

void KyHostWindow::openSettings() {
    if (!mNavigationPage)
        return;
    if (!mSettingsDialog)
        mSettingsDialog = std::make_unique<KyQSettingsDialog>();
    mSettingsDialog->show();
    mSettingsDialog->raise();
    mSettingsDialog->activateWindow();
}

void KyHostWindow::openDebugger() {
    if (mDebuggerOpener)
        mDebuggerOpener();
}

void KyHostWindow::toggleStatistics() {
    if (mStatisticsToggler)
        mStatisticsToggler();
}

void KyHostWindow::toggleHelp(QWindow& over) {
    if (!mHelp)
        mHelp = std::make_unique<KyHostHelp>();
    mHelp->toggle(over);
}

bool KyHostWindow::hideHelp() {
    const bool wasShown = mHelp && mHelp->isVisible();
    if (wasShown)
        mHelp->hide();
    return wasShown;
}

void KyHostWindow::enterForm(int step) {
    KyHostForms::enter(mStage.getCanvas(), step);
}

void KyHostWindow::writePicture() {
    KyHostPicture::writeNext([this](const std::string& path, std::string& error) { return savePicture(path, error); });
}

void KyHostWindow::leave() {
    if (!KyHostForms::leave() && !(mCanceller && mCanceller()) && !hideHelp())
        close();
}

void KyHostWindow::keyPressEvent(QKeyEvent* event) {
    const bool isOurs = KyHostKeys::isMeant(*event) && !isUsedByCanvas(*event);
    if (!isOurs || !KyHostKeys::press(*this, event->key()))
        KyQOpenGLWindow::keyPressEvent(event);
}
