// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyApplicationExport.h"

#include "KyPanGesture.h"
#include "KyPinchGesture.h"
#include "KyTapGesture.h"
#include "KyTiltGesture.h"

#include "KyInputEvent.h"
#include "KyMathForward.h"
#include "KyObject.h"
#include "KyObjectReference.h"

#include <array>

class KyGraphicsView;
class KyGraphicsViewMultiPass;

/// Lets input events change an object: it keeps the last two events and hands them to the derived class. The object and
/// the views are not owned; they read as null once they are gone, also in the middle of a drag. A manipulator may end
/// while it handles an event. Not reference counted: ended by destroy(). One thread.
///
/// Event providers and KyManipulatorEventHandler call setInputEvent.
///
/// ```
/// class Spinner : public KyManipulator {
///     bool handleEvents() override { return spin(getInputEvent().getX() - getPreviousInputEvent().getX()); }
/// };
/// ```
class KYAPPLICATION_EXPORT KyManipulator : public KyObject {
public:
    static const KyType* getType();
    static KyManipulator* cast(KyObject* object);
    static KyObject* factory();
    static void initializeType();
    static void finalizeType();
    const KyType* getObjectType() const override;

    /// One that uses no event. Ended by destroy().
    static KyManipulator* create() { return new KyManipulator; }
    KyManipulator();
    ~KyManipulator() override;
    KyManipulator(const KyManipulator&) = delete;
    KyManipulator& operator=(const KyManipulator&) = delete;

    /// Null when none was set or it is gone.
    KyObject* getObject() const { return getLiving(mObject); }
    /// Null when none was set or it is gone.
    KyGraphicsView* getView() const;
    /// @{
    /// The view again, when it is one of several passes; else null.
    const KyGraphicsViewMultiPass* getViewMultiPass() const { return editViewMultiPass(); }
    KyGraphicsViewMultiPass* editViewMultiPass() const;
    /// @}
    /// See setIsEnabled.
    bool getIsEnabled() const { return mIsEnabled; }

    /// Null clears it. An object that acceptObject refuses is reported and the former one stays.
    void setObject(KyObject* object);
    /// The view that events come from: their positions are pixels of its canvas. One of the two is enough.
    void setView(KyGraphicsView* view);
    /// As setView, for a view of several passes.
    virtual void setViewMultiPass(KyGraphicsViewMultiPass* view);
    /// A manipulator that is not enabled neither uses nor remembers events; the first one after that is no part of an
    /// earlier drag.
    void setIsEnabled(bool isEnabled);

    /// The last event that was accepted; empty before the first. Its native event is null outside setInputEvent.
    const KyInputEvent& getInputEvent() const { return *mCurrent; }
    /// The one before; its state may be a mark of touch sequences: 31 or 0xFFFFFFFF.
    const KyInputEvent& getPreviousInputEvent() const { return *mPrevious; }
    /// True when the event was used.
    bool setInputEvent(const KyInputEvent& event);
    /// As above, with the world point that the event is about.
    bool setInputEvent(const KyInputEvent& event, const KyVec3<double>& point);

    /// @{
    /// Filled in by the recognizer while the gesture goes on; owned by the manipulator.
    KyPanGesture* editPanGesture() { return &mPanGesture; }
    KyPinchGesture* editPinchGesture() { return &mPinchGesture; }
    KyTapGesture* editTapGesture() { return &mTapGesture; }
    KyTiltGesture* editTiltGesture() { return &mTiltGesture; }
    /// @}

    /// Whether setObject takes it; never asked for null. The base takes all.
    virtual bool acceptObject(KyObject* object) const;
    /// Whether the event is remembered and handled. The base takes all but empty ones.
    virtual bool acceptEvent(const KyInputEvent& event) const { return !event.isEmpty(); }
    /// Uses the current event; true when it was used. The manipulator may be gone when this returns.
    virtual bool handleEvents();
    virtual bool handleEvents(const KyVec3<double>& point);
    /// Called after another object was set.
    virtual void initialize();
    /// Forgets both events.
    virtual void reset();

protected:
    /// For classes that change the current event.
    KyInputEvent& editInputEvent() { return *mCurrent; }
    /// For classes that change the one before.
    KyInputEvent& editPreviousInputEvent() { return *mPrevious; }
    /// The current event becomes the previous one and `event` the current one.
    void pushEvent(const KyInputEvent& event);
    /// Empties both events.
    void flushEventStack();
    /// It was enabled or disabled, and listeners do not know yet.
    virtual void handleIsEnabled() {}

private:
    friend class KyGestureRecognizer;

    static KyObject* getLiving(const KyObjectReference& reference) {
        KyObject* object = reference.get();
        return object && !object->isEnding() ? object : nullptr;
    }
    /// Of an event that is one of the two.
    void pushCopy(const KyInputEvent& event);
    /// After events were missed.
    void forgetPrevious();
    template <class Handle>
    bool handle(const KyInputEvent& event, Handle handle);

    /// They change places with each event: neither is copied, and the memory of their touch points is kept.
    std::array<KyInputEvent, 2> mEvents;
    KyInputEvent* mCurrent = &mEvents[0];
    KyInputEvent* mPrevious = &mEvents[1];
    /// Of the innermost event that is being handled: set when a listener ends the manipulator meanwhile.
    bool* mIsGone = nullptr;
    KyObjectReference mObject;
    KyObjectReference mView;
    KyObjectReference mViewMultiPass;
    bool mIsEnabled = true;
    bool mHasMissedEvents = false;
    KyPanGesture mPanGesture;
    KyPinchGesture mPinchGesture;
    KyTapGesture mTapGesture;
    KyTiltGesture mTiltGesture;

    static const KyType* msType;
};
