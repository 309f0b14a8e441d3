// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyQmlPass_p.h"

#include "KyQmlPasses_p.h"

#include "KyQtText.h"
#include "KyQtValues.h"

#include "KyFrameBuffer.h"
#include "KyGraphicsViewMultiPass.h"

#include "KyResource.h"

#include <QQmlEngine>

KyQmlPass::KyQmlPass()
    : mParts(std::make_unique<Parts>([this](const QString& path) { onQmlChanged(path); })) {
    const KyHolder<KyTexture> texture(KyTexture::create());
    texture->setMinFilter(KyTexture::eLinear);
    const KyHolder<KyFrameBuffer> buffer(KyFrameBuffer::create(texture.get()));
    KyGraphicsPass::setFrameBuffer(buffer.get());
    editContext();
    KyQmlPasses::add(this);
}

KyQmlPass::KyQmlPass(const KyQmlPass& other)
    : QObject()
    , KyGraphicsPass(other)
    , mParts(std::make_unique<Parts>([this](const QString& path) { onQmlChanged(path); }))
    , mErrorsReport(other.mErrorsReport)
    , mIsErrorsReportEnabled(other.mIsErrorsReportEnabled)
    , mFixedSize(other.mFixedSize) {
    const KyHolder<KyFrameBuffer> buffer(KyFrameBuffer::create());
    KyGraphicsPass::setFrameBuffer(buffer.get());
    mParts->importPaths = other.mParts->importPaths;
    mParts->pluginPaths = other.mParts->pluginPaths;
    editContext();
    for (const auto& [name, object] : other.mParts->objects)
        setContextObject(name, object.object.get());
    KyQmlPasses::add(this);
    if (!other.mWatchedQml.isEmpty())
        setQml(other.mWatchedQml, true);
    if (other.getShownQml() != mQml)
        setQml(other.getShownQml(), false);
}

KyQmlPass::~KyQmlPass() {
    KyQmlPasses::remove(this);
    // Nobody hears of what is requested while it ends.
    mParts->update.request();
    releaseGraphics();
    releaseContext();
    if (mParts->objects.empty())
        return;
    KyQmlRemains* remains = KyQmlRemains::create();
    for (auto& [name, object] : mParts->objects) {
        // Nobody is there any more who should hear of changes and of the object's end.
        object.binding->blockSignals(true);
        remains->bindings.push_back(std::move(object.binding));
    }
}

KyQmlPass* KyQmlPass::clone() const {
    return new KyQmlPass(*this);
}

void KyQmlPass::setQmlText(const std::string& pathOrUrl) {
    if (pathOrUrl.empty()) {
        setQml(QUrl(), true);
        return;
    }
    const KyURL url = KyResource::resolve(KyURL(pathOrUrl, KyURL::eLocalPath));
    setQml(KyApplication::toQUrl(url), true);
}

std::string KyQmlPass::getQmlText() const {
    const QUrl& url = getShownQml();
    return (url.isLocalFile() ? url.toLocalFile() : url.toString()).toStdString();
}

const QUrl& KyQmlPass::getShownQml() const {
    return mIsReport ? mFailingQml : mQml;
}

bool KyQmlPass::isLoaded() const {
    return mState == State::eLoaded && !mIsReport && mParts->item;
}

QQmlContext* KyQmlPass::getQmlContext() const {
    return mParts->context.get();
}

QQmlComponent* KyQmlPass::getQmlComponent() const {
    return mParts->component.get();
}

QQuickItem* KyQmlPass::getQuickItem() const {
    return mParts->item;
}

QQuickWindow* KyQmlPass::getQuickWindow() const {
    return mParts->window.get();
}

KyQmlRenderControl* KyQmlPass::getRenderControl() const {
    return mParts->control.get();
}

KyTexture* KyQmlPass::getTexture() const {
    return getFrameBuffer() ? getFrameBuffer()->getColorTexture() : nullptr;
}

void KyQmlPass::setFboSize(const QSize& size) {
    const QSize wanted = size.isEmpty() ? QSize() : size;
    if (wanted == mFixedSize)
        return;
    mFixedSize = wanted;
    requestUpdate();
}

QSize KyQmlPass::getFboSize() const {
    return mFixedSize.isEmpty() ? QSize(getViewportWidth(), getViewportHeight()) : mFixedSize;
}

void KyQmlPass::addImportPath(const QString& path) {
    mParts->importPaths.append(path);
    if (QQmlEngine* engine = getQmlEngine())
        engine->addImportPath(path);
}

void KyQmlPass::addPluginPath(const QString& path) {
    mParts->pluginPaths.append(path);
    if (QQmlEngine* engine = getQmlEngine())
        engine->addPluginPath(path);
}

void KyQmlPass::setEnableErrorsReport(bool isEnabled) {
    if (isEnabled == mIsErrorsReportEnabled)
        return;
    mIsErrorsReportEnabled = isEnabled;
    markModified("ErrorsReportEnabled");
}

void KyQmlPass::setContextObject(const std::string& name, KyObject* object) {
    if (name.empty())
        return;
    auto& objects = mParts->objects;
    auto before = objects.extract(name);
    if (object)
        objects[name] = {KyObjectReference(object),
                         std::unique_ptr<KyObjectQmlBinding>(KyObjectQmlBinding::create(*object))};
    if (QQmlContext* context = editContext())
        context->setContextProperty(KyApplication::toQString(name), object ? objects[name].binding.get() : nullptr);
    // What the QML is just using must outlive that.
    if (before && before.mapped().binding)
        KyQmlRemains::create()->bindings.push_back(std::move(before.mapped().binding));
}

KyVec2f KyQmlPass::getScenePosition(const KyVec2f& pixel, const KyGraphicsViewMultiPass*) const {
    return pixel;
}

KyVec2f KyQmlPass::getScenePositionFromGlobalPosition(const QPoint& global, const KyGraphicsViewMultiPass* view,
                                                      const QWidget& canvas) const {
    return getScenePosition(KyPassPixel::fromGlobal(global, canvas, getAreaPixels(view)), view);
}

KyVec2f KyQmlPass::getScenePositionFromGlobalPosition(const QPoint& global, const KyGraphicsViewMultiPass* view,
                                                      const QWindow& canvas) const {
    return getScenePosition(KyPassPixel::fromGlobal(global, canvas, getAreaPixels(view)), view);
}

KyColor KyQmlPass::getPixelColor(const KyVec2f& pixel, const KyGraphicsViewMultiPass* view) const {
    KyQmlTarget* target = mParts->target.get();
    const KyRect<int> area = getAreaPixels(view);
    if (!target || area.getWidth() < 1 || area.getHeight() < 1)
        return {0.0f, 0.0f, 0.0f, 0.0f};
    const QSize& size = target->getSize();
    const KyVec2f position(pixel.x * static_cast<float>(size.width()) / static_cast<float>(area.getWidth()),
                           pixel.y * static_cast<float>(size.height()) / static_cast<float>(area.getHeight()));
    const auto found = KyPassPixel::find(position, size);
    if (!found)
        return {0.0f, 0.0f, 0.0f, 0.0f};
    return mParts->pixel.get(found->x, found->y, [&] {
        const KyQmlTarget::Scope current(*target);
        return current.isUsable() ? target->readPixel(found->x, found->y) : KyPassPixel::Bytes{};
    });
}

bool KyQmlPass::isUpdateNeeded() const {
    return mParts->update.isNeeded();
}

void KyQmlPass::setNeedUpdate(bool isNeeded) {
    if (!isNeeded) {
        mParts->update.clear();
        return;
    }
    if (!mParts->update.request())
        return;
    touch();
    mNeedUpdateSignal.send(this);
}

void KyQmlPass::requestUpdate() {
    setNeedUpdate(true);
}
