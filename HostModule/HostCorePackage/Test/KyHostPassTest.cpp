// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyRealHost.h"

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
    id: root
    property int clicks; property int dragged; property string text; property int turns; property int unseen
    property string seen: "%1 %2 '%3' %4 %5".arg(clicks).arg(dragged).arg(text).arg(turns).arg(unseen)
    onSeenChanged: out.Name = seen
    component Plate: Rectangle { x: 10; width: 100; height: 30; color: "grey" }
    Plate { y: 10; MouseArea { anchors.fill: parent; onClicked: ++clicks } }
    Plate {
        y: 50
        MouseArea { anchors.fill: parent; onPositionChanged: dragged = Math.max(0, Math.min(100, mouse.x)) }
    }
    Plate { y: 90; TextInput { anchors.fill: parent; activeFocusOnTab: true; onTextChanged: root.text = text } }
    Plate { y: 130; MouseArea { anchors.fill: parent; onWheel: turns += wheel.angleDelta.y / 120 } }
    MouseArea { x: 130; width: 270; height: 300; onPressed: unseen = 1; onWheel: unseen = 1 }
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

    friend void PrintTo(const Pass& pass, std::ostream* stream) { *stream << pass.name; }
};

/// A pass over the whole window with four things at its left, 40 pixels apart: one to click, one to drag, one to type
/// into and one for the wheel. The rest is transparent, and something there would take all it got. The script tells
/// what they got.
class KyHostPassTest : public KyRealHost, public testing::WithParamInterface<Pass> {
protected:
    KyHostPassTest() { mScripts = QStringList{"pass.lua"}; }
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

TEST_P(KyHostPassTest, TabGivesItTheKeysAndEscapeTakesThemBackBeforeItCloses) {
    const QStringList tab{"key", "Tab"};
    ASSERT_TRUE(act(key("Tab") + tab + tab + QStringList{"key", "o", "key", "2"}));
    ASSERT_TRUE(waitFor("seen 0 0 'o2' 0 0 !"));
    ASSERT_TRUE(act(key("Escape") + QStringList{"key", "f"}));
    ASSERT_TRUE(waitFor("view ")) << "the key is the camera's again";
    ASSERT_TRUE(act(key("F6") + QStringList{"key", "3"}));
    ASSERT_TRUE(waitFor("seen 0 0 'o23' 0 0 !")) << "to where they were";
    ASSERT_TRUE(act(key("Escape") + QStringList{"key", "Escape"}));
    EXPECT_TRUE(mProcess.waitForFinished(cPatience));
}

INSTANTIATE_TEST_SUITE_P(, KyHostPassTest, testing::Values(Pass{"Widget", cWidgetScript}, Pass{"Qml", cQmlScript}),
                         [](const auto& test) { return std::string(test.param.name); });
