// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyApplicationExport.h"

#include "KyGraphicsDevice.h"

#include <QPointer>
#include <QSurfaceFormat>

#include <memory>
#include <string>

class QOffscreenSurface;
class QOpenGLContext;
class QSurface;

/// The graphics device of a Qt context: makes it current on a surface of its own choice. Either it stands for a
/// context of somebody else, a window's, which it never deletes and forgets when it ends; or it owns a context with an
/// off-screen surface, for pictures without a window. The thread of the context.
///
/// ```
/// std::string error;
/// const auto device = KyQGraphicsDevice::createOffscreen(error);
/// if (device) {
///     const KyQGraphicsDevice::Scope current(*device);
///     draw(*device);
/// } // what was current before is so again
/// ```
class KYAPPLICATION_EXPORT KyQGraphicsDevice : public KyGraphicsDevice {
public:
    /// Makes a device current for a while, then what was current before, or nothing. What Qt did not make current is
    /// not known to it and not brought back. On the stack; scopes nest.
    class KYAPPLICATION_EXPORT Scope {
    public:
        /// The device must outlive the scope.
        explicit Scope(KyQGraphicsDevice& device);
        ~Scope();
        Scope(const Scope&) = delete;
        Scope& operator=(const Scope&) = delete;

        /// False when the device could not become current; what was before is unchanged then.
        bool isCurrent() const { return mIsCurrent; }

    private:
        QPointer<QOpenGLContext> mBefore;
        QSurface* mSurfaceBefore = nullptr;
        bool mSwitches = false;
        bool mIsCurrent = false;
    };

    /// Without context until setContext().
    KyQGraphicsDevice();
    /// As setContext().
    KyQGraphicsDevice(QOpenGLContext* context, QSurface* surface);
    ~KyQGraphicsDevice() override;

    /// A context and surface of its own, sharing with QOpenGLContext::globalShareContext() where there is one. Null,
    /// and the reason, when there is no GL or no QGuiApplication.
    static std::unique_ptr<KyQGraphicsDevice> createOffscreen(std::string& error, const QSurfaceFormat& format = {});

    /// Stands for these from now on; both must fit together, and the surface must live as long as it is set. Null for
    /// none. A context of its own before is deleted.
    void setContext(QOpenGLContext* context, QSurface* surface);
    /// Null when there is none or it is gone.
    QOpenGLContext* getContext() const;
    /// Null when there is none.
    QSurface* getSurface() const;
    /// True for a device of createOffscreen().
    bool ownsContext() const { return mOwnContext != nullptr; }

    /// Leaves a context that is current on the surface as it is, with its bindings. False when there is no context or
    /// it was lost.
    bool makeCurrent() override;
    /// Leaves no context current, if it is this one.
    void doneCurrent();

private:
    void endContext();

    QPointer<QOpenGLContext> mContext;
    QSurface* mSurface = nullptr;
    QMetaObject::Connection mContextEnds;
    std::unique_ptr<QOffscreenSurface> mOwnSurface;
    std::unique_ptr<QOpenGLContext> mOwnContext;
};
