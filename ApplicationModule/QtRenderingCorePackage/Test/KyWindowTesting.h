// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyWindow.h"

#include "KyCamera.h"
#include "KyEventHandler.h"
#include "KyImage.h"
#include "KyInputEvent.h"

#include "KyException.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QImage>
#include <QMouseEvent>

#include <functional>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

/// Collects what is reported while it lives.
struct Reports {
    Reports() { texts.clear(); }
    ~Reports() { KyException::setReportHandler(mBefore); }

    static inline std::vector<std::string> texts;

private:
    KyException::ReportHandler mBefore =
        KyException::setReportHandler([](const std::string& text) { texts.push_back(text); });
};

/// Notes the events that a canvas gets, and does something with each.
struct KyEventLog : KyEventHandler {
    bool handleEvent(const KyInputEvent& event) override;

    std::vector<KyInputEvent> events;
    std::function<void()> action;
    bool uses = true;
};

/// A canvas with a red ball in the middle of a blue background.
struct KyBallCanvas {
    KyBallCanvas();

    void moveCamera() const { camera->setPosition(camera->getPosition() * 1.1); }

    KyHolder<KyCanvas> canvas{new KyCanvas};
    KyHolder<KyCamera> camera{new KyCamera};
    /// The canvas's handler once a test sets it.
    KyHolder<KyEventLog> log{new KyEventLog};
};

/// A window of one kind with what it stands in, on the screen. Ends as Qt does it.
class KyShownWindow {
public:
    virtual ~KyShownWindow();

    KyWindow* get() const { return static_cast<KyWindow*>(mWindow.get()); }
    KyWindow* operator->() const { return get(); }
    /// A press, a release or a move at device-independent pixels of the window, now or later.
    void send(QEvent::Type type, const QPoint& position) {
        QCoreApplication::sendEvent(&getTarget(), &*make(type, position));
    }
    void post(QEvent::Type type, const QPoint& position) {
        QCoreApplication::postEvent(&getTarget(), make(type, position).release());
    }
    /// What the window drew last, not a picture that is made for the purpose.
    virtual QImage getFrame() = 0;

    unsigned nbDrawn = 0;

protected:
    void setWindow(KyWindow* window);
    /// What gets Qt's events, and where the window lies in that.
    virtual QObject& getTarget() = 0;
    virtual QPoint getOffset() const { return {}; }

private:
    std::unique_ptr<QMouseEvent> make(QEvent::Type type, const QPoint& position);

    KyObjectReference mWindow;
};

struct KyWindowKind {
    const char* name;
    /// At 200 x 150 device-independent pixels.
    std::unique_ptr<KyShownWindow> (*show)(KyCanvas* canvas);

    friend void PrintTo(const KyWindowKind& kind, std::ostream* stream) { *stream << kind.name; }
};

extern const std::vector<KyWindowKind> gWindowKinds;

/// Runs frames of the main task manager and Qt's events until the condition holds, for some seconds at most.
bool kyRunUntil(const std::function<bool()>& condition);
/// Runs so many frames, with pauses in which a needless redraw would happen.
void kyRunFrames(int count = 20);
/// Runs these cases in a process of its own, with an environment variable set, or removed with null.
int kyRunProcess(const char* filter, const char* variable, const char* value);

/// Whether the middle is red and the corners at the top right and the bottom left are blue.
bool kyShowsBall(const QImage& image);
QImage kyToImage(const KyImage* image);
