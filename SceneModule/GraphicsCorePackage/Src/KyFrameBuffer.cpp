// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyFrameBuffer.h"

#include "KyGpuName_p.h"
#include "KyImage.h"

#include "KyCallSignatures.h"
#include "KyTypeBuilder.h"

#include <epoxy/gl.h>

#include <algorithm>

const KyType* KyFrameBuffer::msType = nullptr;

void KyFrameBuffer::initializeType() {
    if (msType)
        return;
    msType = KyTypeBuilder<KyFrameBuffer>("KyFrameBuffer", KyGraphicsObject::getType())
                 .factory()
                 .attribute("Width", &KyFrameBuffer::getWidth)
                 .attribute("Height", &KyFrameBuffer::getHeight)
                 .attribute("Samples", &KyFrameBuffer::getSamples, &KyFrameBuffer::setSamples)
                 .component<&KyFrameBuffer::getColorTexture>("ColorTexture")
                 .method("setSize", &KyFrameBuffer::setSize)
                 .method("readPixels", &KyFrameBuffer::readPixels)
                 .build();
    KyCallSignatures::add("KyFrameBuffer", {"setSize(width, height)"});
}

void KyFrameBuffer::finalizeType() {
    KyType::remove(msType);
}

const KyType* KyFrameBuffer::getType() {
    if (!msType)
        initializeType();
    return msType;
}

const KyType* KyFrameBuffer::getObjectType() const {
    return getType();
}

KyFrameBuffer* KyFrameBuffer::cast(KyObject* object) {
    return kyCast<KyFrameBuffer>(object);
}

KyObject* KyFrameBuffer::factory() {
    return new KyFrameBuffer;
}

KyFrameBuffer::KyFrameBuffer(KyTexture* colour)
    : mTexture(colour ? colour : KyTexture::create())
    , mName(std::make_unique<KyGpuName>(KyGpuName::Kind::eFrameBuffer))
    , mDepth(std::make_unique<KyGpuName>(KyGpuName::Kind::eRenderBuffer))
    , mSampleName(std::make_unique<KyGpuName>(KyGpuName::Kind::eFrameBuffer))
    , mSampleColor(std::make_unique<KyGpuName>(KyGpuName::Kind::eRenderBuffer)) {}

KyFrameBuffer::~KyFrameBuffer() = default;

unsigned KyFrameBuffer::getHandle() const {
    if (mForeignHandle != 0)
        return mForeignHandle;
    return mSamples > 1 ? mSampleName->get() : mName->get();
}

unsigned KyFrameBuffer::getReadHandle() const {
    return mForeignHandle != 0 ? mForeignHandle : mName->get();
}

void KyFrameBuffer::setHandle(unsigned handle) {
    mForeignHandle = handle;
    mIsStale = true;
}

void KyFrameBuffer::setSize(int width, int height) {
    width = std::max(width, 0);
    height = std::max(height, 0);
    if (!mTexture->isForeign())
        mTexture->setSize(width, height);
    if (width == mWidth && height == mHeight)
        return;
    mWidth = width;
    mHeight = height;
    mIsStale = true;
}

void KyFrameBuffer::setSamples(int samples) {
    samples = std::max(samples, 1);
    if (samples == mSamples)
        return;
    mSamples = samples;
    mIsStale = true;
    notifyModified("Samples");
}

bool KyFrameBuffer::bind() {
    if (!kyGetCurrentGpuHandle() || mWidth < 1 || mHeight < 1 || !prepare())
        return false;
    glBindFramebuffer(GL_FRAMEBUFFER, getHandle());
    glViewport(0, 0, mWidth, mHeight);
    return true;
}

bool KyFrameBuffer::prepare() {
    if (mForeignHandle != 0)
        return true;
    const bool isUsable = mName->isUsable() && (mSamples <= 1 || mSampleName->isUsable());
    if (isUsable && !mIsStale)
        return true;
    GLint draw = 0, read = 0, renderBuffer = 0;
    glGetIntegerv(GL_DRAW_FRAMEBUFFER_BINDING, &draw);
    glGetIntegerv(GL_READ_FRAMEBUFFER_BINDING, &read);
    glGetIntegerv(GL_RENDERBUFFER_BINDING, &renderBuffer);
    const bool isMade = prepareOwn();
    glBindFramebuffer(GL_DRAW_FRAMEBUFFER, static_cast<GLuint>(draw));
    glBindFramebuffer(GL_READ_FRAMEBUFFER, static_cast<GLuint>(read));
    glBindRenderbuffer(GL_RENDERBUFFER, static_cast<GLuint>(renderBuffer));
    mIsStale = !isMade;
    return isMade;
}

bool KyFrameBuffer::prepareOwn() {
    const unsigned texture = mTexture->prepare();
    if (texture == 0)
        return false;
    glBindFramebuffer(GL_FRAMEBUFFER, mName->create());
    glFramebufferTexture2D(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_TEXTURE_2D, texture, 0);
    return mSamples > 1 ? isComplete() && makeMultisampleStorage() : makeStorage();
}

bool KyFrameBuffer::makeStorage() {
    glBindRenderbuffer(GL_RENDERBUFFER, mDepth->create());
    glRenderbufferStorage(GL_RENDERBUFFER, GL_DEPTH24_STENCIL8, mWidth, mHeight);
    glFramebufferRenderbuffer(GL_FRAMEBUFFER, GL_DEPTH_STENCIL_ATTACHMENT, GL_RENDERBUFFER, mDepth->get());
    return isComplete();
}

bool KyFrameBuffer::makeMultisampleStorage() {
    GLint maxSamples = 1;
    glGetIntegerv(GL_MAX_SAMPLES, &maxSamples);
    const GLsizei samples = std::min(mSamples, std::max(maxSamples, 1));
    glBindFramebuffer(GL_FRAMEBUFFER, mSampleName->create());
    glBindRenderbuffer(GL_RENDERBUFFER, mSampleColor->create());
    glRenderbufferStorageMultisample(GL_RENDERBUFFER, samples, GL_RGBA8, mWidth, mHeight);
    glFramebufferRenderbuffer(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_RENDERBUFFER, mSampleColor->get());
    glBindRenderbuffer(GL_RENDERBUFFER, mDepth->create());
    glRenderbufferStorageMultisample(GL_RENDERBUFFER, samples, GL_DEPTH24_STENCIL8, mWidth, mHeight);
    glFramebufferRenderbuffer(GL_FRAMEBUFFER, GL_DEPTH_STENCIL_ATTACHMENT, GL_RENDERBUFFER, mDepth->get());
    return isComplete();
}

bool KyFrameBuffer::isComplete() const {
    return glCheckFramebufferStatus(GL_FRAMEBUFFER) == GL_FRAMEBUFFER_COMPLETE;
}

bool KyFrameBuffer::resolve() {
    if (mForeignHandle != 0 || mSamples <= 1) {
        mTexture->touch();
        return true;
    }
    if (!kyGetCurrentGpuHandle() || !mSampleName->isUsable() || !mName->isUsable())
        return false;
    glBindFramebuffer(GL_READ_FRAMEBUFFER, mSampleName->get());
    glBindFramebuffer(GL_DRAW_FRAMEBUFFER, mName->get());
    // A scissor would cut the copy.
    glDisable(GL_SCISSOR_TEST);
    glBlitFramebuffer(0, 0, mWidth, mHeight, 0, 0, mWidth, mHeight, GL_COLOR_BUFFER_BIT, GL_NEAREST);
    mTexture->touch();
    return true;
}

KyImage* KyFrameBuffer::readPixels() {
    if (!kyGetCurrentGpuHandle() || mWidth < 1 || mHeight < 1 || !prepare())
        return nullptr;
    GLint draw = 0, read = 0;
    glGetIntegerv(GL_DRAW_FRAMEBUFFER_BINDING, &draw);
    glGetIntegerv(GL_READ_FRAMEBUFFER_BINDING, &read);
    resolve();
    glBindFramebuffer(GL_READ_FRAMEBUFFER, getReadHandle());
    auto image = std::make_unique<KyImage>(mWidth, mHeight, 32);
    if (image->isValid()) {
        glPixelStorei(GL_PACK_ALIGNMENT, 4);
        glReadPixels(0, 0, mWidth, mHeight, GL_RGBA, GL_UNSIGNED_BYTE, image->editData());
        image->flipVertically();
    }
    glBindFramebuffer(GL_DRAW_FRAMEBUFFER, static_cast<GLuint>(draw));
    glBindFramebuffer(GL_READ_FRAMEBUFFER, static_cast<GLuint>(read));
    return image.release();
}
