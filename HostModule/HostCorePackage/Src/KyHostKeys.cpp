// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyHostKeys.h"

#include "KyHostNavigation.h"
#include "KyHostWindow.h"

#include <QKeyEvent>

#include <algorithm>
#include <array>
#include <string_view>

namespace {

using Action = void (*)(KyHostWindow&);

template <KyHostNavigation::Direction Direction>
void lookFrom(KyHostWindow& window) {
    KyHostNavigation(window.getStage()).lookFrom(Direction);
}

void frameModel(KyHostWindow& window) {
    KyHostNavigation(window.getStage()).frameModel();
}

void toggleOrthographic(KyHostWindow& window) {
    KyHostNavigation(window.getStage()).toggleOrthographic();
}

struct Key {
    int key;
    Action act;
};

constexpr Key cKeys[] = {
    {Qt::Key_F, &frameModel},
    {Qt::Key_1, &lookFrom<KyHostNavigation::eFront>},
    {Qt::Key_2, &lookFrom<KyHostNavigation::eBack>},
    {Qt::Key_3, &lookFrom<KyHostNavigation::eRight>},
    {Qt::Key_4, &lookFrom<KyHostNavigation::eLeft>},
    {Qt::Key_5, &lookFrom<KyHostNavigation::eTop>},
    {Qt::Key_6, &lookFrom<KyHostNavigation::eBottom>},
    {Qt::Key_O, &toggleOrthographic},
    {Qt::Key_P, [](KyHostWindow& window) { window.openSettings(); }},
    {Qt::Key_F1, [](KyHostWindow& window) { window.toggleHelp(); }},
    {Qt::Key_F2, [](KyHostWindow& window) { window.toggleStatistics(); }},
    {Qt::Key_F9, [](KyHostWindow& window) { window.openDebugger(); }},
    {Qt::Key_F12, [](KyHostWindow& window) { window.writePicture(); }},
    {Qt::Key_Tab, [](KyHostWindow& window) { window.enterForm(1); }},
    {Qt::Key_Backtab, [](KyHostWindow& window) { window.enterForm(-1); }},
    {Qt::Key_F6, [](KyHostWindow& window) { window.enterForm(1); }},
    {Qt::Key_Escape, [](KyHostWindow& window) { window.leave(); }},
};

constexpr std::array cKeyRows{
    KyHostKeys::Row{"F", QT_TRANSLATE_NOOP("KyHostKeys", "show the whole model")},
    KyHostKeys::Row{QT_TRANSLATE_NOOP("KyHostKeys", "1 to 6"),
                    QT_TRANSLATE_NOOP("KyHostKeys", "look from front, back, right, left, above, below")},
    KyHostKeys::Row{"O", QT_TRANSLATE_NOOP("KyHostKeys", "parallel projection on and off")},
    KyHostKeys::Row{"P", QT_TRANSLATE_NOOP("KyHostKeys", "settings")},
    KyHostKeys::Row{"F1", QT_TRANSLATE_NOOP("KyHostKeys", "show and hide the keys")},
    KyHostKeys::Row{"F2", QT_TRANSLATE_NOOP("KyHostKeys", "show and hide how fast frames come")},
    KyHostKeys::Row{"F9", QT_TRANSLATE_NOOP("KyHostKeys", "debugger of the scripts")},
    KyHostKeys::Row{"F12", QT_TRANSLATE_NOOP("KyHostKeys", "write a picture into the current folder")},
    KyHostKeys::Row{QT_TRANSLATE_NOOP("KyHostKeys", "Tab, F6"),
                    QT_TRANSLATE_NOOP("KyHostKeys", "give the keys to a form in the view; F6 to the next one")},
    KyHostKeys::Row{
        QT_TRANSLATE_NOOP("KyHostKeys", "Escape"),
        QT_TRANSLATE_NOOP("KyHostKeys", "leave the form, cancel long work, close the help, then the window")},
};

constexpr std::array cGestureRows{
    KyHostKeys::Row{QT_TRANSLATE_NOOP("KyHostKeys", "left drag, three fingers"),
                    QT_TRANSLATE_NOOP("KyHostKeys", "turn the view; of three fingers one moves")},
    KyHostKeys::Row{QT_TRANSLATE_NOOP("KyHostKeys", "middle drag, one finger"),
                    QT_TRANSLATE_NOOP("KyHostKeys", "shift the view")},
    KyHostKeys::Row{QT_TRANSLATE_NOOP("KyHostKeys", "right drag"),
                    QT_TRANSLATE_NOOP("KyHostKeys", "walk: up goes forward")},
    KyHostKeys::Row{QT_TRANSLATE_NOOP("KyHostKeys", "wheel, two fingers"),
                    QT_TRANSLATE_NOOP("KyHostKeys", "nearer and farther; two fingers turn as well")},
    KyHostKeys::Row{QT_TRANSLATE_NOOP("KyHostKeys", "Control + left drag"),
                    QT_TRANSLATE_NOOP("KyHostKeys", "drag the object under the pointer")},
};

} // namespace

bool KyHostKeys::isMeant(const QKeyEvent& event) {
    return !event.isAutoRepeat() && !(event.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier));
}

bool KyHostKeys::press(KyHostWindow& window, int key) {
    const auto* const found = std::ranges::find(cKeys, key, &Key::key);
    if (found == std::end(cKeys))
        return false;
    found->act(window);
    return true;
}

std::span<const KyHostKeys::Row> KyHostKeys::getGestures() {
    return cGestureRows;
}

std::span<const KyHostKeys::Row> KyHostKeys::getKeys() {
    return cKeyRows;
}

std::string KyHostKeys::getText() {
    constexpr std::size_t cColumn = 26;
    std::string text;
    for (const std::span<const Row> rows : {getGestures(), getKeys()})
        for (const Row& row : rows) {
            const std::string_view name(row.name);
            text.append("  ").append(name).append(cColumn - std::min(cColumn, name.size()), ' ');
            text.append(row.help).append("\n");
        }
    return text;
}
