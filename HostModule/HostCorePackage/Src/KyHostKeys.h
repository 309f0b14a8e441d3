// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include <span>
#include <string>

class KyHostWindow;
class QKeyEvent;

/// What a hand does in the window: the keys with what they do, and the gestures of pointer and fingers for the help.
class KyHostKeys {
public:
    /// In English; windows show it in the language of KyLanguage, from the translation context KyHostKeys.
    struct Row {
        const char* name;
        const char* help;
    };

    /// Whether it may be one of these: neither held down nor with Control, Alt or Meta.
    static bool isMeant(const QKeyEvent& event);
    /// Does what the key (a Qt::Key) stands for; false when it stands for nothing.
    static bool press(KyHostWindow& window, int key);
    static std::span<const Row> getGestures();
    /// In the order of the help; keys of one meaning are one row.
    static std::span<const Row> getKeys();
    /// Lines of the form "  name   help", for a terminal.
    static std::string getText();
};
