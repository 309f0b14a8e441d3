// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyQCheckEditor_p.h"

#include <QCheckBox>
#include <QKeyEvent>

#include <algorithm>
#include <array>

KyQCheckEditor::KyQCheckEditor(QWidget* parent)
    : KyQFieldEditor(parent)
    , mCheck(new QCheckBox) {
    connect(mCheck, &QCheckBox::clicked, this, [this] { commitNow(); });
    addPart(mCheck);
}

bool KyQCheckEditor::getField(KyField& field) const {
    field = KyField(mCheck->isChecked());
    return true;
}

void KyQCheckEditor::showField(const KyField& field) {
    mCheck->setChecked(field.toBool());
}

// Arrows take the focus from a button to the next, which here would leave the editor open behind it.
bool KyQCheckEditor::eventFilter(QObject* watched, QEvent* event) {
    constexpr std::array cArrows{Qt::Key_Up, Qt::Key_Down, Qt::Key_Left, Qt::Key_Right};
    const int key = event->type() == QEvent::KeyPress ? static_cast<QKeyEvent*>(event)->key() : 0;
    return std::ranges::find(cArrows, key) != cArrows.end() || KyQFieldEditor::eventFilter(watched, event);
}
