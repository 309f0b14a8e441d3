// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyQtNames.h"
#include "KyQtTestFixture.h"

class KyQtWrongArgumentsTest : public KyQtTestFixture {
protected:
    /// Objects of all classes, made anew when a call has deleted one, and what is given to their methods.
    void SetUp() override {
        KyQtTestFixture::SetUp();
        std::string names;
        for (const auto& [name, members] : cClasses)
            names += std::string(name) == "_G" ? "" : std::string(" ") + members;
        KyScriptEngine::get().setLuaVariable("names", KyField(names));
        expectRuns(R"lua(
            widgets = {'QWidget', 'QListWidget', 'QLabel', 'QDockWidget', 'QLineEdit', 'QTextEdit', 'QComboBox',
                'QSlider', 'QDoubleSpinBox', 'QTreeWidget', 'QPushButton', 'QStackedWidget', 'QScrollArea',
                'QProgressBar', 'QAxWidget', 'QWebView'}
            makers = {QMenu = function() return QMenu('m', nil) end, QAction = function() return QAction('a', nil) end,
                QMovie = function() return QMovie('m') end, QHBoxLayout = function() return QHBoxLayout() end,
                QVBoxLayout = function() return QVBoxLayout() end, QBoxLayout = function() return QBoxLayout() end,
                QSettings = function() return QSettings('s.ini') end, QDir = function() return QDir('sub') end,
                QString = function() return QString('s') end, QUrl = function() return QUrl('u') end,
                QTreeWidgetItem = function() return QTreeWidgetItem() end}
            for _, name in ipairs(widgets) do makers[name] = function() return _G[name]() end end
            makers.QWebView = function() return QWebView(nil) end
            dead = QPushButton() deleteQObject(dead)
            tree = QTreeWidget() deadItem = QTreeWidgetItem() tree:invisibleRootItem():addChild(deadItem)
            deleteQObject(tree)
            function methods(object)
                local found, seen = {}, {}
                for name in names:gmatch('%S+') do
                    if not seen[name] and type(object[name]) == 'function' then found[#found + 1] = {name, object[name]} end
                    seen[name] = true
                end
                return found
            end
        )lua");
    }
};

TEST_F(KyQtWrongArgumentsTest, NoMethodTakesADeletedObject) {
    expectRuns(R"lua(
        nbCalls = 0
        for name, make in pairs(makers) do
            local object = make()
            local isQt = pcall(QObject.objectName, object)
            if isQt then
                local list = methods(object)
                deleteQObject(object)
                for _, method in ipairs(list) do
                    local key = method[1]
                    assert(not pcall(method[2], object), name .. '.' .. key)
                    assert(not pcall(method[2], object, 1), name .. '.' .. key)
                    assert(not pcall(method[2], object, 'x'), name .. '.' .. key)
                    nbCalls = nbCalls + 1
                end
            end
        end
        assert(nbCalls > 400, nbCalls)
    )lua");
}

TEST_F(KyQtWrongArgumentsTest, NoArgumentsBreakAMethod) {
    const std::string output = run(R"lua(
        local other = {}
        local function values()
            for name, make in pairs(makers) do if not pcall(tostring, other[name]) or not other[name] then
                other[name] = make() end end
            return {false, 'nil', -1, 0, 1e300, 0/0, 2^31, '', 'x\0y', ('l'):rep(70000), {}, {1, {2}}, print, dead,
                deadItem, coroutine.create(function() end), Vec2d(1e300, -1e300), Recti(-2^31, 0, 2^31 - 1, 5), Color(),
                QIcon(), QDir('.'), qApp, other.QWidget, other.QLabel, other.QVBoxLayout, other.QTreeWidgetItem,
                other.QMenu, other.QAction, other.QMovie, other.QString, other.QUrl}
        end
        local function nilled(v) if v == 'nil' then return nil end return v end
        nbCalls, nbGood = 0, 0
        for name, make in pairs(makers) do
            for _, method in ipairs(methods(make())) do
                local object, list = make(), values()
                for i = 1, #list do
                    local a, b = nilled(list[i]), nilled(list[(i * 7) % #list + 1])
                    for _, arguments in ipairs({{n = 1, a}, {n = 2, a, b}, {n = 2, b, a}, {n = 2, a, a},
                                                {n = 3, a, b, a}, {n = 4, a, a, b, b}, {n = 0}}) do
                        if pcall(method[2], object, unpack(arguments, 1, arguments.n)) then nbGood = nbGood + 1 end
                        nbCalls = nbCalls + 1
                    end
                end
                if not pcall(object.objectName, object) then object = nil end
                deleteQObject(object)
            end
        end
        collectgarbage()
    )lua");
    EXPECT_EQ(eval("nbCalls > 10000, nbGood > 500"), "true, true") << output;
    QCoreApplication::processEvents();
    finishDeletions();
}

TEST_F(KyQtWrongArgumentsTest, NoArgumentsBreakAFunction) {
    const std::string output = run(R"lua(
        local list = {false, -1, 1e300, 0/0, '', 'x\0y', {}, print, dead, deadItem, Vec2d(), QIcon(), QDir('.'), qApp,
            QSettings('s.ini'), QWidget(), QLineEdit(), QComboBox(), QTreeWidgetItem(), QString('s')}
        nbCalls = 0
        for name, value in pairs(_G) do
            if type(value) == 'function' and (name:match('^toQ') or name:match('^Q%a+_') or name:match('^find') or
                name == 'loadUi' or name:match('connect$') or name == 'getCursorPosition') then
                pcall(value)
                for i = 1, #list do
                    for j = 1, #list do
                        pcall(value, list[i], list[j])
                        pcall(value, list[i], list[j], list[i])
                        pcall(value, list[i], nil, list[j])
                    end
                    nbCalls = nbCalls + 1
                    pcall(value, list[i])
                end
            end
        end
    )lua");
    EXPECT_EQ(eval("nbCalls > 800"), "true") << output;
}

TEST_F(KyQtWrongArgumentsTest, NoWidgetAttributeBreaksAWidget) {
    run("w = {} for i = 0, 300 do for _, on in ipairs({true, false}) do local x = QPushButton() pcall(x.setAttribute, "
        "x, "
        "i, on) x:show() w[#w + 1] = x end end");
    QCoreApplication::processEvents();
    expectRuns("for _, x in ipairs(w) do x:hide() deleteQObject(x) end");
}
