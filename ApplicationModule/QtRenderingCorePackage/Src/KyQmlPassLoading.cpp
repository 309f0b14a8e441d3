// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyQmlErrors_p.h"
#include "KyQmlPass_p.h"

#include "KyQtText.h"

#include <QDateTime>
#include <QDesktopServices>
#include <QFileInfo>
#include <QHash>
#include <QQmlEngine>

#include <utility>

namespace {

/// What the engine read last of a local file: it keeps that, whatever becomes of the file.
struct Reading {
    QDateTime modified;
    qint64 size;

    bool operator==(const Reading&) const = default;
};

/// Notes the reading; true when the file is another one than at the reading before.
bool isReadAnew(const QUrl& url) {
    static auto* readings = new QHash<QString, Reading>;
    if (!url.isLocalFile())
        return false;
    const QFileInfo file(url.toLocalFile());
    const Reading now{file.lastModified(), file.size()};
    const auto before = readings->find(file.filePath());
    if (before == readings->end()) {
        readings->insert(file.filePath(), now);
        return false;
    }
    return std::exchange(*before, now) != now;
}

} // namespace

QQmlContext* KyQmlPass::editContext() {
    if (mParts->context)
        return mParts->context.get();
    QQmlEngine* engine = getQmlEngine();
    if (!engine)
        return nullptr;
    for (const QString& path : std::as_const(mParts->importPaths))
        engine->addImportPath(path);
    for (const QString& path : std::as_const(mParts->pluginPaths))
        engine->addPluginPath(path);
    mParts->context = std::make_unique<QQmlContext>(engine->rootContext());
    for (const auto& [name, object] : mParts->objects)
        mParts->context->setContextProperty(KyApplication::toQString(name), object.binding.get());
    return mParts->context.get();
}

void KyQmlPass::setQml(const QString& localFile) {
    setQml(localFile.isEmpty() ? QUrl() : QUrl::fromLocalFile(localFile), true);
}

void KyQmlPass::setQml(const QUrl& url, bool isWatched) {
    const QUrl qml = url;
    change([&] {
        if (isWatched) {
            mWatchedQml = qml;
            mParts->watch.setFile(qml.isLocalFile() ? qml.toLocalFile() : QString());
        }
        mErrorText.clear();
        setShown(qml, false);
    });
}

/// Tells what the step has changed for others, who may do with the pass what they like.
void KyQmlPass::change(const std::function<void()>& step) {
    const std::string qml = getQmlText(), error = mErrorText;
    const bool wasLoaded = isLoaded();
    const QPointer<KyQmlPass> self(this);
    step();
    if (!self)
        return;
    const bool isChanged[] = {getQmlText() != qml, mErrorText != error, isLoaded() != wasLoaded};
    for (int i = 0; const char* name : {"Qml", "Error", "Loaded"})
        if (isChanged[i++] && self)
            notifyModified(name);
}

void KyQmlPass::setShown(const QUrl& url, bool isReport) {
    releaseQml();
    mQml = url;
    mIsReport = isReport;
    requestUpdate();
}

void KyQmlPass::releaseQml() {
    mState = State::eEmpty;
    if (!mParts->component)
        return;
    mParts->component->disconnect(this);
    KyQmlRemains* remains = KyQmlRemains::create();
    remains->component = std::move(mParts->component);
    if (QQuickItem* item = mParts->item) {
        item->disconnect(this);
        mParts->item = nullptr;
        remains->root = item;
        item->setParent(nullptr);
        item->setParentItem(nullptr);
    }
}

void KyQmlPass::load() {
    if (mState != State::eEmpty || mQml.isEmpty() || !editContext())
        return;
    mState = State::eLoading;
    if (isReadAnew(mQml))
        msQmlEngine->clearComponentCache();
    mParts->component = std::make_unique<QQmlComponent>(msQmlEngine);
    QQmlComponent* component = mParts->component.get();
    component->loadUrl(mQml);
    if (component->isLoading())
        connect(component, SIGNAL(statusChanged(QQmlComponent::Status)), this, SLOT(qmlComponentLoaded()));
    else
        qmlComponentLoaded();
}

void KyQmlPass::qmlComponentLoaded() {
    QQmlComponent* component = mParts->component.get();
    if (!component || mState != State::eLoading || component->isLoading())
        return;
    disconnect(component, SIGNAL(statusChanged(QQmlComponent::Status)), this, SLOT(qmlComponentLoaded()));
    if (component->isError()) {
        fail(KyQmlErrors::toMaps(component->errors(), mQml));
        return;
    }
    mState = State::eReady;
    requestUpdate();
}

void KyQmlPass::createRootItem() {
    if (mState != State::eReady)
        return;
    const QPointer<QQmlComponent> component(mParts->component.get());
    QObject* root = component->create(mParts->context.get());
    // What it runs at its beginning may have set another QML, or ended that or the window.
    if (!component || component != mParts->component.get() || mState != State::eReady || !mParts->window) {
        if (root)
            KyQmlRemains::create()->root = root;
        return;
    }
    if (auto* item = qobject_cast<QQuickItem*>(root)) {
        showRootItem(item);
        return;
    }
    const QList<QQmlError> errors = root ? QList<QQmlError>() : component->errors();
    delete root;
    fail(KyQmlErrors::toMaps(errors, mQml));
}

void KyQmlPass::showRootItem(QQuickItem* item) {
    QQuickItem* content = mParts->window->contentItem();
    const QPointer<QQuickItem> shown(item);
    change([&] {
        item->setParent(content);
        item->setParentItem(content);
        mParts->item = item;
        mState = State::eLoaded;
        connect(item, &QObject::destroyed, this, &KyQmlPass::onRootEnded);
        if (mIsReport)
            KyQmlErrors::connectReport(*item, *this);
        else
            mFailingQml.clear();
        updateQuickSizes();
    });
    // Its new size may have made it set another QML.
    if (shown && shown == mParts->item)
        mQmlLoadedSignal.send();
}

/// Somebody else has deleted it.
void KyQmlPass::onRootEnded() {
    requestUpdate();
    if (!mIsReport)
        notifyModified("Loaded");
}

void KyQmlPass::fail(const QVariantList& errors) {
    releaseQml();
    mState = State::eFailed;
    const std::string text = KyQmlErrors::toText(errors, mQml);
    qWarning("%s", text.c_str());
    if (mIsReport || mQml == mErrorsReport)
        return;
    change([&] {
        mErrorText = text;
        mFailingQml = mQml;
        if (mIsErrorsReportEnabled)
            onErrorReport(errors);
    });
}

void KyQmlPass::onErrorReport(const QVariantList& errors) {
    QQmlContext* context = editContext();
    if (!context)
        return;
    context->setContextProperty(QStringLiteral("qmlPathErrors"), KyQmlErrors::getFileName(mFailingQml));
    context->setContextProperty(QStringLiteral("qmlError"), errors);
    setShown(mErrorsReport, true);
}

void KyQmlPass::onOpenError(const QVariant& error) {
    const QUrl url = KyQmlErrors::getFile(error, mFailingQml);
    if (url.isLocalFile())
        QDesktopServices::openUrl(url);
}

void KyQmlPass::onQmlChanged(const QString& path) {
    if (msQmlEngine)
        msQmlEngine->clearComponentCache();
    setQml(QUrl::fromLocalFile(path), true);
}

void KyQmlPass::onReloadCurrentQml() {
    if (msQmlEngine)
        msQmlEngine->clearComponentCache();
    if (!mWatchedQml.isEmpty())
        setQml(mWatchedQml, true);
    else
        setQml(QUrl(getShownQml()), false);
}

void KyQmlPass::releaseContext() {
    if (mParts->context)
        KyQmlRemains::create()->context = std::move(mParts->context);
}

void KyQmlPass::cleanupModelRessources() {
    change([this] {
        releaseQml();
        releaseContext();
        mParts->watch.setFile(QString());
        mQml.clear();
        mIsReport = false;
        mWatchedQml.clear();
        mFailingQml.clear();
        mErrorText.clear();
        requestUpdate();
    });
}
