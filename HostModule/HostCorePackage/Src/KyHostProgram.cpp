// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyHostProgram.h"

#include "KyHostDescription.h"
#include "KyHostDisplay.h"
#include "KyHostDrivers.h"
#include "KyHostNetwork.h"
#include "KyHostOffscreen.h"
#include "KyHostPicture.h"
#include "KyHostWindow.h"

#include "KyLanguage.h"
#include "KyQtText.h"
#include "KyScriptEngine.h"

#include "KyMainTaskManager.h"
#include "KyModuleManager.h"
#include "KyProgress.h"

#include <lua.hpp>

#include <QApplication>
#include <QFileInfo>
#include <QThread>

#include <algorithm>
#include <clocale>
#include <cstdio>

namespace {

/// Two seconds: enough to see that something moves.
constexpr int cOffscreenFrames = 120;
/// The MIB number of UTF-8, in which scripts are written.
constexpr int cUtf8 = 106;
constexpr int cListingFrames = 10;
constexpr unsigned long cFrameMilliseconds = 16;

std::string getVersions() {
    return std::string("kyhost ") + KY_VERSION + " (Qt " + qVersion() + ", " + LUA_RELEASE + ")\n";
}

int refuse(const std::string& message) {
    KyHostErrors::write(message);
    return KyHostProgram::eBadUsage;
}

bool isMissing(const std::string& path) {
    return !QFileInfo::exists(QString::fromLocal8Bit(path.c_str()));
}

/// The first file of the command line that is not there; none when all are.
std::optional<std::string> findMissingFile(const KyHostOptions& options) {
    const auto driver = std::ranges::find_if(options.drivers, &isMissing);
    if (driver != options.drivers.end())
        return *driver;
    const auto missing = std::ranges::find_if(options.items, [](const KyHostOptions::Item& item) {
        return item.kind == KyHostOptions::Item::eFile && isMissing(item.text);
    });
    return missing == options.items.end() ? std::nullopt : std::optional(missing->text);
}

/// False, and said, when something that was printed has been lost.
bool finishOutput() {
    if (std::fflush(stdout) == 0 && !std::ferror(stdout))
        return true;
    KyHostErrors::write("cannot write to standard output");
    return false;
}

/// False, and said, when a driver that was asked for cannot be loaded.
bool loadDrivers(const KyHostOptions& options) {
    if (options.loadsInstalledDrivers)
        KyHostDrivers::loadInstalled();
    return std::ranges::all_of(options.drivers, &KyHostDrivers::load);
}

/// Pads tell what they read some time after they were opened.
void listDevices() {
    for (int i = 0; i < cListingFrames; ++i) {
        KyMainTaskManager::get().update();
        QThread::msleep(cFrameMilliseconds);
    }
    std::fputs(KyHostDrivers::describeDevices().c_str(), stdout);
}

/// Null when the options want a display and there is none.
std::unique_ptr<QCoreApplication> createApplication(const KyHostOptions& options, int& argc, char** argv) {
    QCoreApplication::setApplicationName("kyhost");
    if (options.view == KyHostOptions::eNoView || options.request == KyHostOptions::eListDevices)
        return std::make_unique<QCoreApplication>(argc, argv);
    QCoreApplication::setAttribute(Qt::AA_ShareOpenGLContexts);
    QCoreApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    if (options.view == KyHostOptions::eWindow)
        KyHostDisplay::prepare();
    else
        KyHostDisplay::prepareWithout();
    auto application = std::make_unique<QApplication>(argc, argv);
    const bool isUsable = options.view != KyHostOptions::eWindow || KyHostDisplay::exists();
    return isUsable ? std::move(application) : nullptr;
}

} // namespace

int KyHostProgram::run(int argc, char** argv) {
    KyHostOptions options;
    std::string error;
    if (!KyHostOptions::parse({argv + 1, argv + std::max(argc, 1)}, options, error))
        return refuse(error + "; see kyhost --help");
    if (options.request == KyHostOptions::eShowHelp || options.request == KyHostOptions::eShowVersion) {
        const std::string text = options.request == KyHostOptions::eShowHelp ? KyHostOptions::getHelp() : getVersions();
        std::fputs(text.c_str(), stdout);
        return finishOutput() ? eSuccess : eFailure;
    }
    if (const auto file = findMissingFile(options))
        return refuse("cannot find '" + *file + "'");
    // Qt takes options out of the arguments it is given; ours have been read.
    int nbArguments = 1;
    const std::unique_ptr<QCoreApplication> application = createApplication(options, nbArguments, argv);
    if (!application)
        return refuse("there is no display to open a window on; --offscreen draws without one");
    // Qt takes over the user's locale; numbers in scripts and files have a point in every one.
    std::setlocale(LC_NUMERIC, "C");
    KyApplication::setDefaultCharSet(cUtf8);
    if (!loadDrivers(options) || !KyModuleManager::get().initialize())
        return eFailure;
    KyHost::initializeType();
    KyHostDrivers::start();
    int code = eSuccess;
    if (options.request == KyHostOptions::eListDevices)
        listDevices();
    else
        code = KyHostProgram(options).execute();
    KyModuleManager::get().finalize();
    KyHost::finalizeType();
    return finishOutput() ? code : eFailure;
}

KyHostProgram::KyHostProgram(const KyHostOptions& options)
    : mOptions(options)
    , mErrors(options.printsTracebacks)
    , mStage(options.width, options.height)
    , mScripts(options, mErrors, mHost, mStage, mSettings) {
    mReloadTimer.setSingleShot(true);
    QObject::connect(&mReloadTimer, &QTimer::timeout, [this] { runAgain(); });
}

/// What scripts and scene hold on the device goes while its context is there.
KyHostProgram::~KyHostProgram() {
    mInspector.reset();
    mDebugger.reset();
    mPrompt.reset();
    mErrors.setAround({});
    if (mSurface)
        mSurface->makeCurrent();
    mProgress.reset();
    mStatistics.reset();
    KyScriptEngine::get().closeLuaState();
}

int KyHostProgram::describeScripts() {
    const bool succeeded = mScripts.run();
    std::string error;
    const bool isWritten = KyHostDescription::write(mOptions, error);
    if (!isWritten)
        KyHostErrors::write(error);
    return succeeded && isWritten && mErrors.getNbScriptErrors() == 0 ? eSuccess : eFailure;
}

int KyHostProgram::execute() {
    if (mOptions.request == KyHostOptions::eDescribeScripts)
        return describeScripts();
    KyHostNetwork::load(KyHostNetwork::getDefaultPath());
    speak();
    if (!openSurface())
        return eFailure;
    mLoop = std::make_unique<KyHostLoop>(mHost, mStage, mSurface.get(), KyHostLoop::Limits());
    openOverlays();
    listenToKeys();
    if (!openDebugger())
        return eBadUsage;
    if (!mOptions.inspected.empty())
        mInspector = std::make_unique<KyHostInspector>(mOptions.inspected);
    bool succeeded = mScripts.run();
    openWhatIsShown();
    checkInspector();
    runLoop();
    succeeded = (!mInspector || mInspector->hasFound()) && succeeded;
    succeeded = savePicture() && succeeded;
    return succeeded && mErrors.getNbScriptErrors() == 0 ? eSuccess : eFailure;
}

/// A picture that is drawn without a window is the same on every machine, unless somebody asks.
void KyHostProgram::speak() const {
    if (!mOptions.language.empty())
        KyLanguage::set(QString::fromStdString(mOptions.language));
    else if (mOptions.view == KyHostOptions::eWindow)
        mSettings.applyLanguage();
}

bool KyHostProgram::openSurface() {
    std::string error;
    if (mOptions.view == KyHostOptions::eWindow)
        openWindow(error);
    else if (mOptions.view == KyHostOptions::eOffscreen)
        mSurface = KyHostOffscreen::create(mStage, mOptions.width, mOptions.height, error);
    if (!mSurface && mOptions.view != KyHostOptions::eNoView)
        KyHostErrors::write(error);
    return mSurface || mOptions.view == KyHostOptions::eNoView;
}

void KyHostProgram::openWindow(std::string& error) {
    auto window = KyHostWindow::create(mStage, mOptions.width, mOptions.height, error);
    if (window) {
        window->setSettings(mSettings);
        window->setDebuggerOpener([this] { mDebugger->openWindow(); });
        window->setStatisticsToggler([this] { mStatistics->setShown(!mStatistics->isShown()); });
    }
    mSurface = std::move(window);
}

/// An empty 3D scene beside a 2D one would only be in the way.
void KyHostProgram::openWhatIsShown() {
    if (mStage.isEmpty())
        mDrawingView = KyObjectReference(KyHostDrawing::findShownView());
    if (mSurface && !mDrawingView)
        mSurface->open();
}

void KyHostProgram::openOverlays() {
    KyHostProgress::Listeners listeners;
    listeners.showView = [this] { return showView(); };
    listeners.processEvents = [this] { mLoop->processEvents(); };
    listeners.isEnding = [this] { return mHost.isQuitting() || mLoop->hasEnded(); };
    mProgress = std::make_unique<KyHostProgress>(mStage, std::move(listeners));
    if (!mSurface)
        return;
    mStatistics = std::make_unique<KyHostStatistics>(mStage);
    mStatistics->setShown(mOptions.showsStatistics);
}

void KyHostProgram::listenToKeys() {
    const auto cancel = [this] { return mProgress && mProgress->cancel(); };
    const auto findWindow = [this] { return dynamic_cast<KyHostWindow*>(mSurface.get()); };
    if (KyHostWindow* const window = findWindow())
        window->setCanceller(cancel);
    mDrawingKeys = KyHostDrawing::makeKeys({cancel, findWindow});
}

/// A window of a 2D scene is no place for the bar, nor a reason for a second window.
bool KyHostProgram::showView() {
    if (mOptions.view != KyHostOptions::eWindow || (mStage.isEmpty() && KyHostDrawing::findShownView()))
        return false;
    mSurface->open();
    return true;
}

bool KyHostProgram::openDebugger() {
    KyHostDebugger::Listeners listeners;
    listeners.waiting = [this] { mLoop->redraw(); };
    // Scripts may end what has something on the device.
    listeners.continued = [this] {
        if (mSurface)
            mSurface->makeCurrent();
    };
    listeners.isEnding = [this] { return mHost.isQuitting() || mLoop->hasEnded(); };
    mDebugger = std::make_unique<KyHostDebugger>(mOptions, std::move(listeners));
    std::string error;
    if (mDebugger->open(error))
        return true;
    KyHostErrors::write(error);
    return false;
}

void KyHostProgram::checkInspector() const {
    if (mInspector && !mInspector->hasFound())
        KyHostErrors::write("there is no published object of the name '" + mOptions.inspected + "' to inspect yet");
}

void KyHostProgram::runLoop() {
    if (mOptions.isWatching)
        watchFiles();
    if (mOptions.isInteractive)
        openPrompt();
    mLoop->setLimits(getLimits());
    mLoop->run();
}

KyHostLoop::Limits KyHostProgram::getLimits() const {
    const bool isAttended = mOptions.isWatching || (mPrompt && !mHasPromptEnded);
    KyHostLoop::Limits limits;
    limits.nbFrames = mOptions.nbFrames;
    limits.isOpenEnded = isAttended || mOptions.view == KyHostOptions::eWindow;
    limits.endsWithCoroutines = mOptions.view == KyHostOptions::eNoView && !isAttended;
    if (mOptions.view == KyHostOptions::eOffscreen && !isAttended && !limits.nbFrames)
        limits.nbFrames = cOffscreenFrames;
    return limits;
}

/// A script that stands still, or has something long done, has to go on to its end before its state may go.
void KyHostProgram::runAgain() {
    if (KyProgress::get().cancel()) {
        mReloadTimer.start(cFrameMilliseconds);
        return;
    }
    if (mDebugger->isStopped()) {
        mDebugger->letGo();
        mReloadTimer.start(0);
        return;
    }
    mDebugger->follow();
    // What the scene before has on the device goes with it.
    if (mSurface)
        mSurface->makeCurrent();
    mScripts.runAgain();
    mLoop->wake();
}

void KyHostProgram::watchFiles() {
    mWatch = std::make_unique<KyHostFileWatch>([this](const std::string&) { runAgain(); });
    for (const KyHostOptions::Item& item : mOptions.items)
        if (item.kind == KyHostOptions::Item::eFile)
            mWatch->addFile(item.text);
}

void KyHostProgram::openPrompt() {
    KyHostPrompt::Listeners listeners;
    listeners.lineRan = [this](bool succeeded) {
        if (!succeeded && mPrompt->isTerminal())
            mErrors.forgetLastScriptError();
        mLoop->wake();
    };
    listeners.ended = [this] { onPromptEnded(); };
    mPrompt = std::make_unique<KyHostPrompt>(mHost, std::move(listeners));
    mErrors.setAround([this](const auto& write) { mPrompt->writeAround(write); });
    mLoop->setFlush([this] { mPrompt->flushOutput(); });
}

void KyHostProgram::onPromptEnded() {
    mHasPromptEnded = true;
    mLoop->setLimits(getLimits());
    mLoop->wake();
}

bool KyHostProgram::savePicture() {
    if (mOptions.screenshot.empty())
        return true;
    std::string error;
    Ky2DView* const view = mSurface->isOpen() ? nullptr : Ky2DView::cast(mDrawingView.get());
    if (view ? KyHostPicture::save(KyHostDrawing::grab(*view), mOptions.screenshot, error)
             : mSurface->savePicture(mOptions.screenshot, error))
        return true;
    KyHostErrors::write(error);
    return false;
}
