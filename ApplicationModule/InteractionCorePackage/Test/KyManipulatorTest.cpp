// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyManipulatorEventHandler.h"
#include "KyTrackballManipulator.h"

#include "KyCamera.h"
#include "KyGraphicsViewMultiPass.h"

#include "KyException.h"

#include <gtest/gtest.h>

#include <functional>
#include <tuple>

namespace {

/// Notes what it sees.
struct Probe : KyManipulator {
    bool handleEvents() override {
        native = getInputEvent().getNativeEvent();
        ++nbEvents;
        // What is run may end this.
        const bool isUsed = answer;
        if (const auto run = onEvent)
            run();
        return isUsed;
    }
    bool handleEvents(const KyVec3d& given) override {
        point = given;
        return handleEvents();
    }
    void initialize() override { ++nbInitialized; }
    int nbEvents = 0, nbInitialized = 0;
    void* native = nullptr;
    KyVec3d point;
    bool answer = true;
    std::function<void()> onEvent;
};

KyInputEvent makeEvent(KyInputEvent::Type type, int x = 0, std::uint32_t state = 0) {
    KyInputEvent event;
    event.setType(type);
    event.setPosition(x, 0);
    event.setState(state);
    return event;
}

TEST(KyManipulatorTest, EventsAreKeptWhileItIsEnabled) {
    Probe probe;
    int native = 0;
    KyInputEvent event = makeEvent(KyInputEvent::eKeyPressed, 1);
    event.setNativeEvent(&native);
    EXPECT_TRUE(probe.setInputEvent(event));
    EXPECT_EQ(probe.native, &native);
    EXPECT_EQ(probe.getInputEvent().getNativeEvent(), nullptr);
    EXPECT_TRUE(probe.setInputEvent(makeEvent(KyInputEvent::eMouseMoved, 2), KyVec3d(1, 2, 3)));
    EXPECT_EQ(probe.point, KyVec3d(1, 2, 3));
    probe.setIsEnabled(false);
    EXPECT_FALSE(probe.setInputEvent(makeEvent(KyInputEvent::eMouseMoved, 3)));
    EXPECT_EQ(probe.getPreviousInputEvent().getX(), 1);
    probe.setIsEnabled(true);
    EXPECT_FALSE(probe.setInputEvent(KyInputEvent()));
    probe.answer = false;
    EXPECT_FALSE(probe.setInputEvent(probe.getInputEvent()));
    EXPECT_EQ(probe.getInputEvent().getX(), 2) << "its own event again";
    EXPECT_TRUE(probe.getPreviousInputEvent().isEmpty());
    EXPECT_EQ(probe.nbEvents, 3);
    probe.onEvent = [&] {
        probe.onEvent = nullptr;
        probe.setInputEvent(makeEvent(KyInputEvent::eMouseMoved, 6));
    };
    probe.setInputEvent(event);
    EXPECT_EQ(probe.getPreviousInputEvent().getNativeEvent(), nullptr) << "an event within an event";
    probe.reset();
    EXPECT_TRUE(probe.getInputEvent().isEmpty());
    KyInputEvent::Type type = KyInputEvent::eTouchBegan;
    for (const std::uint32_t mark : {0u, 5u, 0xFFFFFFFFu, 31u, 5u, 5u}) {
        probe.setInputEvent(makeEvent(std::exchange(type, KyInputEvent::eTouchUpdated), 0, 5));
        EXPECT_EQ(probe.getPreviousInputEvent().getState(), mark) << "of a touch sequence";
    }
}

TEST(KyManipulatorTest, ObjectsAndViewsAreTakenAndForgotten) {
    KyHolder<KyCamera> camera(new KyCamera);
    KyHolder<KyGraphicsViewMultiPass> view(KyGraphicsViewMultiPass::create());
    KyTrackballManipulator trackball;
    static std::string report;
    const auto handler = KyException::setReportHandler([](const std::string& text) { report = text; });
    trackball.setObject(camera.get());
    trackball.setObject(view.get());
    KyException::setReportHandler(handler);
    EXPECT_EQ(report, "KyManipulator: setObject(): object do not fit requirements");
    EXPECT_EQ(trackball.getObject(), camera.get());
    trackball.setCameraNear(0.5);
    EXPECT_EQ(trackball.getCameraNear(), 0.5);
    trackball.setObject(nullptr);
    trackball.setCameraFar(3.0);
    EXPECT_EQ(trackball.getCameraFar(), 0.0);
    Probe probe;
    for (KyObject* object : {static_cast<KyCamera*>(nullptr), camera.get()}) {
        probe.setObject(object);
        EXPECT_EQ(probe.nbInitialized, object ? 1 : 0);
    }
    probe.setView(view.get());
    probe.setViewMultiPass(view.get());
    bool isNullAtEnd = false;
    camera->modifiedSignal().connect([&](KyObject*, KyObjectModificationType, const std::string&, int) {
        isNullAtEnd = probe.getObject() == nullptr;
    });
    camera.reset();
    view.reset();
    EXPECT_TRUE(isNullAtEnd);
    EXPECT_FALSE(probe.getObject() || probe.getView() || probe.getViewMultiPass());
}

TEST(KyManipulatorTest, AnEventGoesToOneManipulatorAfterTheOther) {
    KyHolder<KyManipulatorEventHandler> handler(new KyManipulatorEventHandler);
    const KyInputEvent event = makeEvent(KyInputEvent::eWheel);
    EXPECT_FALSE(handler->handleEvent(event));
    Probe main, first, second;
    handler->setManipulator(&main);
    handler->setMultipleManipulators(nullptr);
    handler->setMultipleManipulators(&first);
    handler->setMultipleManipulators(&second);
    EXPECT_EQ(handler->getElementManipulator(2), nullptr);
    // Bits 1, 2 and 4: the main one, the first, the second uses the event.
    for (int users = 0; users < 8; ++users) {
        main.answer = users & 1, first.answer = users & 2, second.answer = users & 4;
        main.nbEvents = first.nbEvents = second.nbEvents = 0;
        EXPECT_EQ(handler->handleEvent(event), users != 0);
        EXPECT_EQ(event.getInternalEventReturn(), users != 0);
        EXPECT_EQ(std::make_tuple(main.nbEvents, first.nbEvents, second.nbEvents),
                  std::make_tuple(1, !main.answer, !main.answer && !first.answer));
    }
    handler->setManipulator(nullptr);
    EXPECT_TRUE(handler->removeManipulator(0));
    EXPECT_FALSE(handler->removeManipulator(1));
    second.answer = false;
    second.onEvent = [&] { handler.reset(); };
    KyManipulatorEventHandler* ending = handler.get();
    EXPECT_FALSE(ending->handleEvent(event));
}

TEST(KyManipulatorTest, EachManipulatorIsAskedOnceWhateverBecomesOfTheList) {
    struct Row {
        std::function<void(KyManipulatorEventHandler&, Probe&)> act;
        int nbThird;
        std::string told;
    };
    const Row rows[] = {{[](auto& handler, auto&) { handler.removeManipulator(1); }, 1, "removed 1, "},
                        {[](auto& handler, auto&) { handler.removeManipulator(2); }, 0, "removed 2, "},
                        {[](auto& handler, auto& added) { handler.insertManipulator(0, &added); }, 1, "inserted 0, "},
                        {[](auto& handler, auto& added) {
                             handler.editElementManipulator(0)->destroy();
                             handler.setMultipleManipulators(&added);
                         },
                         1, "removed 0, inserted 2, "}};
    for (const auto& [act, nbThird, told] : rows) {
        KyHolder<KyManipulatorEventHandler> handler(new KyManipulatorEventHandler);
        auto* const first = new Probe;
        const KyObjectReference living(first);
        Probe second, third, added;
        for (Probe* probe : {first, &second, &third, &added})
            probe->answer = false;
        for (Probe* probe : {first, &second, &third})
            handler->setMultipleManipulators(probe);
        std::string heard;
        handler->modifiedSignal().connect([&](KyObject*, KyObjectModificationType kind, const std::string&, int index) {
            if (kind == eElementInserted || kind == eElementRemoved)
                heard += (kind == eElementRemoved ? "removed " : "inserted ") + std::to_string(index) + ", ";
        });
        second.onEvent = [&, &act = act] {
            second.onEvent = nullptr;
            act(*handler, added);
        };
        EXPECT_FALSE(handler->handleEvent(makeEvent(KyInputEvent::eWheel)));
        EXPECT_EQ(heard, told);
        EXPECT_EQ(std::make_tuple(second.nbEvents, third.nbEvents, added.nbEvents), std::make_tuple(1, nbThird, 0));
        if (living)
            first->destroy();
    }
}

TEST(KyManipulatorTest, ManipulatorsMayEndWhileTheyHandleAnEvent) {
    KyHolder<KyManipulatorEventHandler> handler(new KyManipulatorEventHandler);
    auto *first = new Probe, *second = new Probe;
    handler->setManipulator(first);
    handler->setMultipleManipulators(second);
    first->answer = false;
    first->onEvent = [&] { first->destroy(); };
    second->onEvent = [&] { second->destroy(); };
    EXPECT_TRUE(handler->handleEvent(makeEvent(KyInputEvent::eWheel)));
    EXPECT_FALSE(handler->getManipulator() || handler->getElementManipulator(0));
    EXPECT_FALSE(handler->handleEvent(makeEvent(KyInputEvent::eWheel)));
}

} // namespace
