// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyQReferenceEditor_p.h"

#include "KyFieldText_p.h"
#include "KyPublishedObjects_p.h"
#include "KyQtText.h"

#include "KyType.h"

#include <QComboBox>

#include <algorithm>

KyQReferenceEditor::KyQReferenceEditor(QWidget* parent)
    : KyQFieldEditor(parent)
    , mNames(new QComboBox) {
    mNames->setFrame(false);
    connect(mNames, QOverload<int>::of(&QComboBox::activated), this, [this] { commitNow(); });
    addPart(mNames);
}

bool KyQReferenceEditor::getField(KyField& field) const {
    const auto at = static_cast<std::size_t>(mNames->currentIndex());
    if (at >= mObjects.size() || (at > 0 && !mObjects[at]))
        return false;
    field = KyField(mObjects[at]);
    return true;
}

void KyQReferenceEditor::add(KyObject* object) {
    mNames->addItem(object ? KyApplication::toQString(KyFieldText::describe(object)) : tr("none"));
    mObjects.emplace_back(object);
}

bool KyQReferenceEditor::isOffered(KyObject* object) const {
    const bool isOfType = !mType || object->getObjectType()->isA(*mType);
    return isOfType && std::ranges::find(mRefused, KyObjectReference(object)) == mRefused.end();
}

void KyQReferenceEditor::showField(const KyField& field) {
    KyObject* present = field.toKyObject();
    mNames->clear();
    mObjects.clear();
    add(nullptr);
    for (const auto& [name, object] : KyPublishedObjects::list())
        if (object == present || isOffered(object))
            add(object);
    const auto isPresent = [&](const KyObjectReference& object) { return object.get() == present; };
    if (std::ranges::none_of(mObjects, isPresent))
        add(present);
    mNames->setCurrentIndex(static_cast<int>(std::ranges::find_if(mObjects, isPresent) - mObjects.begin()));
}

void KyQReferenceEditor::updateTranslations() {
    if (mNames->count() > 0)
        mNames->setItemText(0, tr("none"));
    KyQFieldEditor::updateTranslations();
}

void KyQReferenceEditor::noteRefused(const KyField& field) {
    if (KyObject* object = field.toKyObject())
        mRefused.emplace_back(object);
}
