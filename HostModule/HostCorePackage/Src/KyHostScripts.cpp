// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyHostScripts.h"

#include "KyHost.h"
#include "KyHostDrawing.h"
#include "KyHostErrors.h"
#include "KyHostSettings.h"
#include "KyHostStage.h"
#include "KyHostWindow.h"

#include "KyDeviceManagerObject.h"
#include "KyLuaBinder.h"
#include "KyLuaSandbox.h"
#include "KyNetworkConnectionObject.h"
#include "KyQtLuaBinding.h"
#include "KyScriptEngine.h"
#include "KyScriptSandbox.h"

#include "KyModelLoader.h"
#include "KyProgress.h"
#include "KyURL.h"

#include <QFileInfo>

#include <algorithm>
#include <cctype>
#include <vector>

namespace {

constexpr const char* cChunkName = "=(command line)";

std::string getExtension(const std::string& path) {
    std::string extension = KyURL(path, KyURL::eLocalPath).getExtension();
    std::ranges::transform(extension, extension.begin(),
                           [](unsigned char letter) { return static_cast<char>(std::tolower(letter)); });
    return extension;
}

/// Lua's complaint about a file that was meant as a model helps nobody.
void hintAtFormat(const std::string& path) {
    if (getExtension(path) != "lua")
        KyHostErrors::write("'" + path + "' is not a known model format, run as a script");
}

using Windows = std::vector<KyObjectReference>;

Windows getWindows() {
    Windows windows;
    for (unsigned i = 0; i < KyWindow::getNbWindows(); ++i)
        windows.emplace_back(KyWindow::getWindow(i));
    for (Ky2DView* view : KyHostDrawing::getViews())
        windows.emplace_back(view);
    return windows;
}

/// Those that scripts made; the program's own is left.
void endWindows(const Windows& windows) {
    for (const KyObjectReference& window : windows)
        if (window && !dynamic_cast<KyHostWindow*>(window.get()))
            window.get()->destroy();
}

} // namespace

KyHostScripts::KyHostScripts(const KyHostOptions& options, KyHostErrors& errors, KyHost& host, KyHostStage& stage,
                             const KyHostSettings& settings)
    : mOptions(options)
    , mErrors(errors)
    , mHost(host)
    , mStage(stage)
    , mSettings(settings) {}

KyHostScripts::~KyHostScripts() {
    endWindows(getWindows());
}

bool KyHostScripts::run() {
    prepareState();
    return runItems();
}

bool KyHostScripts::runAgain() {
    if (!checkSyntax())
        return false;
    const Windows former = getWindows();
    std::unique_ptr<KyHostDrawing> formerDrawing = std::move(mDrawing);
    resetState();
    mStage.beginScene();
    prepareState();
    if (runItems()) {
        mStage.showScene();
        endWindows(former);
        return true;
    }
    Windows made = getWindows();
    std::erase_if(made, [&former](const auto& window) { return std::ranges::count(former, window) > 0; });
    endWindows(made);
    // What the failed scripts left must not go on either.
    resetState();
    mStage.dropScene();
    mDrawing = std::move(formerDrawing);
    prepareState();
    bindDrawing();
    return false;
}

bool KyHostScripts::isModel(const std::string& path) {
    const std::string extension = getExtension(path);
    return extension != "lua" && std::ranges::count(KyModelLoader::getExtensions(), extension) > 0;
}

bool KyHostScripts::isDrawing(const std::string& path) {
    return getExtension(path) == "svg";
}

bool KyHostScripts::isScript(const KyHostOptions::Item& item) {
    return item.kind == KyHostOptions::Item::eFile && !isModel(item.text) && !isDrawing(item.text);
}

void KyHostScripts::resetState() {
    KyDeviceManagerObject::get()->releaseAllDevices();
    KyNetworkConnectionObject::get()->abandon();
    KyScriptEngine::get().resetLuaState();
    KyLuaBinder::bind();
    KyQtLuaBinding::bind();
}

void KyHostScripts::prepareState() {
    KyScriptEngine& engine = KyScriptEngine::get();
    if (mOptions.isSandboxed)
        KyApplication::removeUnsafeLuaFunctionsAndModules();
    if (mOptions.isSandboxStrict)
        engine.editSandbox().enable();
    mSettings.applyTo(mStage.getTrackball());
    engine.setReturnValuesOutput(mOptions.printsResults);
    // The scripts' own function brings the bit functions and openUrl as well.
    std::vector<KyField> none;
    engine.callLuaFunction("bindAllClasses", {}, none);
    engine.bindInstance(&mStage.getScene(), "scene");
    engine.bindInstance(&mStage.getCamera(), "camera");
    engine.bindInstance(&mStage.getView(), "view");
    engine.bindInstance(&mStage.getTrackball(), "trackball");
    engine.bindInstance(&mStage.getShaper(), "shaper");
    engine.bindInstance(KyDeviceManagerObject::get(), "devices");
    // It writes files.
    if (!mOptions.isSandboxed)
        engine.bindInstance(KyNetworkConnectionObject::get(), "network");
    engine.bindInstance(&KyProgress::get(), "progress");
    engine.bindInstance(&mHost, "host");
}

bool KyHostScripts::runItems() {
    bool succeeded = true;
    for (const KyHostOptions::Item& item : mOptions.items) {
        if (mHost.isQuitting())
            break;
        succeeded = runItem(item) && succeeded;
    }
    if (!hasScripts() && !(mDrawing && mStage.isEmpty()))
        mStage.addGround();
    return succeeded;
}

bool KyHostScripts::runItem(const KyHostOptions::Item& item) {
    if (item.kind == KyHostOptions::Item::eChunk)
        return KyScriptEngine::get().executeChunk(item.text, cChunkName, {});
    if (isModel(item.text))
        return addModel(item.text);
    if (isDrawing(item.text))
        return addDrawing(item.text);
    // Forms lie beside their script, whatever the current folder is; those that it asks for later, beside the last one.
    KyQtLuaBinding::setDataPath(QFileInfo(QString::fromLocal8Bit(item.text.c_str())).absolutePath().toStdString());
    if (KyScriptEngine::get().executeScript(item.text))
        return true;
    std::string error;
    if (!KyScriptEngine::get().checkScriptSyntax(item.text, error))
        hintAtFormat(item.text);
    return false;
}

bool KyHostScripts::addModel(const std::string& path) {
    std::string error;
    KyNode* const model = KyModelLoader::load(KyURL(path, KyURL::eLocalPath), error);
    if (!model) {
        KyHostErrors::write(error);
        return false;
    }
    mStage.addModel(*model);
    return true;
}

bool KyHostScripts::addDrawing(const std::string& path) {
    if (!mDrawing)
        mDrawing = std::make_unique<KyHostDrawing>(QSize(mOptions.width, mOptions.height));
    std::string error;
    if (!mDrawing->addDocument(path, error)) {
        KyHostErrors::write(error);
        return false;
    }
    bindDrawing();
    return true;
}

void KyHostScripts::bindDrawing() {
    if (!mDrawing)
        return;
    KyScriptEngine::get().bindInstance(mDrawing->getScene(), "drawing");
    KyScriptEngine::get().bindInstance(mDrawing->getView(), "drawingView");
}

bool KyHostScripts::hasScripts() const {
    return std::ranges::any_of(mOptions.items, [](const KyHostOptions::Item& item) {
        return item.kind == KyHostOptions::Item::eChunk || isScript(item);
    });
}

bool KyHostScripts::checkSyntax() {
    for (const KyHostOptions::Item& item : mOptions.items) {
        std::string error;
        if (isScript(item) && !KyScriptEngine::get().checkScriptSyntax(item.text, error)) {
            KyScriptEngine::output(error);
            hintAtFormat(item.text);
            return false;
        }
    }
    return true;
}
