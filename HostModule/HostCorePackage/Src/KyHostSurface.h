// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <string>

/// Where the stage is drawn: a window or an off-screen buffer.
class KyHostSurface {
public:
    struct Listeners {
        /// What draw() asked for is on the screen.
        std::function<void()> drawn;
        /// The person closed the surface.
        std::function<void()> closed;
    };

    virtual ~KyHostSurface();

    void setListeners(Listeners listeners) { mListeners = std::move(listeners); }

    /// Closed at first: the program may have nothing to show on it.
    bool isOpen() const { return mIsOpen; }
    void open();

    /// Draws now, or as soon as the display takes a frame; `drawn` is called then.
    virtual void draw() = 0;
    /// Whether something outside the scene, such as a new size, asks for a new frame.
    virtual bool needsDrawing() const = 0;
    /// Microseconds that a frame stands at least.
    virtual int getFrameInterval() const = 0;
    /// Makes the GL context of the surface current, so that what the scene has on the device can be deleted.
    virtual bool makeCurrent() = 0;
    /// Writes the scene as it is now to a PNG file. False, and the reason, when that cannot be done.
    virtual bool savePicture(const std::string& path, std::string& error) = 0;

protected:
    virtual void onOpened() {}

    Listeners mListeners;

private:
    bool mIsOpen = false;
};
