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
    if (isWatched) {
        mWatchedQml = url;
        mParts->watch.setFile(url.isLocalFile() ? url.toLocalFile() : QString());
    }
    mErrorText.clear();
    setShown(url, false);
    notifyModified("Qml");
}

void KyQmlPass::setShown(const QUrl& url, bool isReport) {
    releaseQml();
    mQml = url;
    mIsReport = isReport;
    requestUpdate();
}

void KyQmlPass::releaseQml() {
    mState = State::eEmpty;
    if (QQuickItem* item = mParts->item) {
        item->setParentItem(nullptr);
        item->setParent(&mParts->retired);
        item->deleteLater();
        mParts->item = nullptr;
    }
    if (QQmlComponent* component = mParts->component.release()) {
        disconnect(component, nullptr, this, nullptr);
        component->setParent(&mParts->retired);
        component->deleteLater();
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
    // What it runs at its beginning may have set another QML.
    if (component != mParts->component.get() || mState != State::eReady) {
        if (root)
            root->deleteLater();
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
    item->setParent(content);
    item->setParentItem(content);
    mParts->item = item;
    mState = State::eLoaded;
    // Somebody else may end it.
    connect(item, &QObject::destroyed, this, &KyQmlPass::requestUpdate);
    updateQuickSizes();
    if (mIsReport) {
        KyQmlErrors::connectReport(*item, *this);
    } else {
        mFailingQml.clear();
        notifyModified("Loaded");
    }
    mQmlLoadedSignal.send();
}

void KyQmlPass::fail(const QVariantList& errors) {
    releaseQml();
    mState = State::eFailed;
    const std::string text = KyQmlErrors::toText(errors, mQml);
    qWarning("%s", text.c_str());
    if (mIsReport || mQml == mErrorsReport)
        return;
    mErrorText = text;
    mFailingQml = mQml;
    notifyModified("Error");
    if (mIsErrorsReportEnabled)
        onErrorReport(errors);
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

void KyQmlPass::cleanupModelRessources() {
    releaseQml();
    qDeleteAll(mParts->retired.children());
    mParts->context.reset();
    mParts->watch.setFile(QString());
    mQml.clear();
    mIsReport = false;
    mWatchedQml.clear();
    mFailingQml.clear();
    requestUpdate();
}
