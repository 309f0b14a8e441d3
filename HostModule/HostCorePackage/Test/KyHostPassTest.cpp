// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyRealHost.h"
#include "KyTouchyNode.h"

namespace {

/// What stands beside the script in the test's folder.
constexpr const char* cForm = R"(<ui version="4.0"><class>Panel</class><widget class="QWidget" name="panel">
<property name="styleSheet"><string>#panel { background: transparent; }
 #unseen, #unseen::groove, #unseen::handle { background: transparent; border: none; }</string></property>
<widget class="QPushButton" name="button"><property name="checkable"><bool>true</bool></property>
 <property name="geometry"><rect><x>10</x><y>10</y><width>100</width><height>30</height></rect></property></widget>
<widget class="QSlider" name="slider"><property name="orientation"><enum>Qt::Horizontal</enum></property>
 <property name="maximum"><number>100</number></property>
 <property name="geometry"><rect><x>10</x><y>50</y><width>100</width><height>30</height></rect></property></widget>
<widget class="QLineEdit" name="edit">
 <property name="geometry"><rect><x>10</x><y>90</y><width>100</width><height>30</height></rect></property></widget>
<widget class="QSpinBox" name="turns">
 <property name="geometry"><rect><x>10</x><y>130</y><width>100</width><height>30</height></rect></property></widget>
<widget class="QSlider" name="unseen">
 <property name="geometry"><rect><x>130</x><y>0</y><width>270</width><height>300</height></rect></property></widget>
</widget></ui>)";

constexpr const char* cQml = R"(import QtQuick 2.15
Item {
    property var seen: [0, 0, "", 0, 0]
    function note(i, value) { const all = seen.slice(); all[i] = value; seen = all }
    onSeenChanged: out.Name = "%1 %2 '%3' %4 %5".arg(seen[0]).arg(seen[1]).arg(seen[2]).arg(seen[3]).arg(seen[4])
    Component.onCompleted: seenChanged()
    component Plate: Rectangle { x: 10; width: 100; height: 30; color: "grey" }
    Plate { y: 10; MouseArea { anchors.fill: parent; onClicked: note(0, seen[0] + 1) } }
    Plate {
        y: 50
        MouseArea { anchors.fill: parent; onPositionChanged: note(1, Math.max(0, Math.min(100, mouse.x))) }
    }
    Plate { y: 90; TextInput { id: edit; anchors.fill: parent; onTextChanged: note(2, text) } }
    Plate { y: 130; MouseArea { anchors.fill: parent; onWheel: note(3, seen[3] + wheel.angleDelta.y / 120) } }
    MouseArea {
        x: 130; width: 270; height: 300
        onPressed: note(4, 1)
        onWheel: note(4, 1)
    }
}
)";

constexpr const char* cWidgetScript = R"(
local pass = KyQtPass.createQtPassOverlayView(view, true, true).MainPass
assert(pass:loadForm("panel.ui"), pass:getError())
local function get(...) return pass:getWidgetProperty(...) end
function getSeen()
    return ("%d %d '%s' %d %d"):format(get("button", "checked") and 1 or 0, get("slider", "value"), get("edit", "text"),
        get("turns", "value"), get("unseen", "value"))
end
)";

constexpr const char* cQmlScript = R"(
local out, pass = KyNode(), KyQmlPass.createQmlPassOverlayView(view, true, true).MainPass
pass:setContextObject("out", out)
pass:setQml("panel.qml")
function getSeen() return out.Name end
)";

constexpr const char* cNodeScript = R"(
local pass, nodes = KyQtPass.createQtPassOverlayView(view, true, true).MainPass, {}
pass.ViewRectSize, pass.ViewPosition = Vec2f(401, 301), Vec2f(200.5, 150.5)
for i = 1, 5 do
    nodes[i] = KyTouchyNode()
    nodes[i].Translation = Vec2d(10, 40 * i - 30)
    pass:edit2DScene():insertChild(nodes[i], -1)
end
nodes[5].Translation, nodes[5].Scale = Vec2d(130, 0), Vec2d(2.7, 10)
nodes[5]:makeTransparent()
function getSeen()
    return ("%d %d '%s' %d %d"):format(nodes[1].Clicks, nodes[2].Dragged, nodes[3].Text, nodes[4].Turns,
        nodes[5].Clicks + nodes[5].Turns)
end
)";

constexpr const char* cTellScript = R"(
return coroutine.create(function()
    local last
    while true do
        local now = getSeen()
        if now ~= last then print("seen " .. now .. " !") io.stdout:flush() end
        last = now
        coroutine.yield()
    end
end)
)";

struct Pass {
    const char* name;
    const char* script;
    /// Whether the script needs the class of the test's own.
    bool hasNodes = false;

    friend void PrintTo(const Pass& pass, std::ostream* stream) { *stream << pass.name; }
};

/// A pass over the whole window with four things at its left, 40 pixels apart: one to click, one to drag, one to type
/// into and one for the wheel. The rest is transparent, and something there would take all it got. The script tells
/// what they got.
class KyHostPassTest : public KyRealHost, public testing::WithParamInterface<Pass> {
protected:
    KyHostPassTest()
        : KyRealHost(KyRealDisplay::eScreen, 0.02) {
        mScripts = QStringList{"pass.lua"};
        if (!GetParam().hasNodes)
            return;
        mProgram = QCoreApplication::applicationFilePath();
        mEnvironment.insert(KyTouchyNode::cVariable, "1");
    }
    void SetUp() override {
        write("panel.ui", cForm);
        write("panel.qml", cQml);
        write("pass.lua", QByteArray(GetParam().script) + cTellScript);
        KyRealHost::SetUp();
    }
};

} // namespace

TEST_P(KyHostPassTest, TakesWhatMeetsItsThingsAndLeavesTheRestToTheCamera) {
    // What is under the pointer is known from the first picture on.
    ASSERT_TRUE(act(key("F12")));
    ASSERT_TRUE(waitFor("wrote kyhost-"));
    const QStringList press{"mousedown", "1"}, release{"mouseup", "1"};
    const struct {
        const char* name;
        QStringList commands;
        const char* seen;
    } rows[] = {
        {"click", moveTo(60, 25) + press + release, "seen 1 0 '' 0 0 !"},
        {"drag that ends on transparent pixels",
         moveTo(16, 65) + press + moveTo(60, 65) + moveTo(200, 150) + moveTo(300, 160) + release,
         "seen 1 100 '' 0 0 !"},
        // Each is a key of the program's.
        {"typed text", moveTo(60, 105) + press + release + key("o") + QStringList{"key", "2", "key", "f"},
         "seen 1 100 'o2f' 0 0 !"},
        {"wheel", moveTo(60, 145) + QStringList{"click", "4"}, "seen 1 100 'o2f' 1 0 !"},
    };
    const std::size_t begin = mPosition;
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        ASSERT_TRUE(act(row.commands));
        ASSERT_TRUE(waitFor(row.seen));
    }
    const std::size_t end = mPosition;
    EXPECT_FALSE(contains(mSeen.substr(begin, end - begin), "view ")) << mSeen;
    // Over transparent pixels wheel, drag and key are all the camera's.
    ASSERT_TRUE(act(click(4) + drag(1, 40, 0)));
    const KyVec3d up(0, 1, 0), centre(0, 0, 1), back(0, 0, 0.89 * cDepth);
    const double angle = -4.0 * 40 / cWidth;
    expectView({centre + turn(up, angle, back), turn(up, angle, {0, 0, -1}), turn(up, angle, {1, 0, 0})});
    EXPECT_FALSE(contains(mSeen.substr(end), "seen ")) << mSeen;
}

INSTANTIATE_TEST_SUITE_P(, KyHostPassTest,
                         testing::Values(Pass{"Widget", cWidgetScript}, Pass{"Qml", cQmlScript},
                                         Pass{"Nodes", cNodeScript, true}),
                         [](const auto& test) { return std::string(test.param.name); });
