// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyQtTestFixture.h"

#include "KyTypeBuilder.h"

#include <memory>

namespace {

class Bell : public KyObject {
public:
    static const KyType* getType() {
        if (!msType)
            msType = KyTypeBuilder<Bell>("Bell", KyObject::getType())
                         .signal<&Bell::rung>("rung")
                         .signal<&Bell::stopped>("stopped")
                         .build();
        return msType;
    }
    static void finalizeType() { KyType::remove(msType); }
    const KyType* getObjectType() const override { return getType(); }

    KySignal<int, const std::string&, KyObject*, const void*> rung{"rung"};
    KySignal<> stopped{"stopped"};

private:
    static inline const KyType* msType = nullptr;
};

class KyLuaConnectionsTest : public KyQtTestFixture {
protected:
    void SetUp() override {
        KyQtTestFixture::SetUp();
        mBell = std::make_unique<Bell>();
        engine().bindInstance(mBell.get(), "bell");
        expectRuns("log = '' function f(...) for i = 1, select('#', ...) do log = log .. tostring((select(i, ...))) .. "
                   "' ' end end function g() log = log .. 'g ' end");
    }
    void TearDown() override {
        KyQtTestFixture::TearDown();
        mBell.reset();
        Bell::finalizeType();
    }
    void ring() const { mBell->rung.send(3, "ding", mBell.get(), this); }

    std::unique_ptr<Bell> mBell;
};

TEST_F(KyLuaConnectionsTest, SignalsOfObjectsCallFunctionsWithTheirArguments) {
    expectRuns(
        "connect(bell, 'rung', function(n, text, who, other) f(n, text, who == bell, other) end) "
        "connect(bell, 'stopped', g) connect(bell, 'modifiedSignal', function(o, kind, name) f(kind, name) end)");
    ring();
    mBell->stopped.send();
    mBell->notifyModified("Tone");
    expectTexts({{"log", "3 ding true nil g 2 Tone "}});
    expectOutput({{"connect(bell, 'silent', f)", "connect : Bell has no signal silent"},
                  {"connect(bell, 'rung', 5)", "connect : function expected"},
                  {"connect(5, 'rung', f)", "No matching overload"}});
}

TEST_F(KyLuaConnectionsTest, DisconnectingTakesAwayWhatIsNamed) {
    expectRuns("for i = 1, 2 do connect(bell, 'rung', g) connect(bell, 'rung', f) connect(bell, 'stopped', g) end");
    expectTexts({{"disconnect(bell, 'rung', f), disconnect(bell, 'rung', f)", "2, 0"}});
    ring();
    expectTexts({{"log, disconnect(bell, 'stopped'), disconnect(bell), disconnect(bell)", "g g , 2, 2, 0"}});
    EXPECT_EQ(0u, mBell->rung.getNbConnections());
    expectRuns("connect(bell, 'stopped', function() disconnect(bell) error('broken') end) log = ''");
    mBell->stopped.send();
    EXPECT_NE(msOutput.find("broken"), std::string::npos) << msOutput;
    mBell->stopped.send();
    ring();
    expectTexts({{"log", ""}});
}

TEST_F(KyLuaConnectionsTest, ConnectionsEndWithTheObjectOrTheState) {
    expectRuns("kept = setmetatable({}, {__mode = 'v'}) do local big = {} kept[1] = big "
               "connect(bell, 'rung', function() return big end) end collectgarbage()");
    expectTexts({{"kept[1] ~= nil", "true"}});
    mBell = std::make_unique<Bell>();
    expectRuns("collectgarbage() collectgarbage()");
    expectTexts({{"kept[1]", "nil"}});
    engine().bindInstance(mBell.get(), "bell");
    expectRuns("connect(bell, 'rung', print)");
    EXPECT_EQ(1u, mBell->rung.getNbConnections());
    // The slot that runs outlives its state.
    mBell->stopped.connect([this] { engine().resetLuaState(); });
    expectRuns("connect(bell, 'stopped', print)");
    mBell->stopped.send();
    EXPECT_EQ(0u, mBell->rung.getNbConnections());
    ring();
    EXPECT_EQ("", msOutput);
}

} // namespace
