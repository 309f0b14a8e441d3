// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyQAttributeItemDelegate.h"

#include "KyPublishedObjects_p.h"
#include "KyQAttributeModel.h"
#include "KyQCheckEditor_p.h"
#include "KyQColorEditor_p.h"
#include "KyQDateTimeEditor_p.h"
#include "KyQEnumEditor_p.h"
#include "KyQNumbersEditor_p.h"
#include "KyQReferenceEditor_p.h"
#include "KyQTextEditor_p.h"
#include "KyQUrlEditor_p.h"

#include "KyColor.h"
#include "KyDateTime.h"
#include "KyQuat.h"
#include "KyRect.h"
#include "KyURL.h"
#include "KyVec2.h"
#include "KyVec3.h"

#include <QKeyEvent>

#include <algorithm>
#include <map>

namespace {

using Factories = std::map<KyFieldKind, KyQAttributeItemDelegate::Factory>;

Factories& editFactories() {
    static Factories factories;
    return factories;
}

template <class Editor>
KyQFieldEditor* make(QWidget* parent) {
    return new Editor(parent);
}

template <KyFieldKind Number, int Count>
KyQFieldEditor* makeNumbers(QWidget* parent) {
    return new KyQNumbersEditor(Number, Count, parent);
}

template <class T>
constexpr KyFieldKind cKind = cFieldKindOf<T>;

struct DefaultEditor {
    KyFieldKind kind;
    KyQFieldEditor* (*make)(QWidget* parent);
};

constexpr DefaultEditor cDefaultEditors[] = {
    {cKind<bool>, &make<KyQCheckEditor>},
    {cKind<std::int32_t>, &makeNumbers<cKind<std::int32_t>, 1>},
    {cKind<std::uint32_t>, &makeNumbers<cKind<std::uint32_t>, 1>},
    {cKind<std::int64_t>, &makeNumbers<cKind<std::int64_t>, 1>},
    {cKind<std::uint64_t>, &makeNumbers<cKind<std::uint64_t>, 1>},
    {cKind<float>, &makeNumbers<cKind<float>, 1>},
    {cKind<double>, &makeNumbers<cKind<double>, 1>},
    {cKind<KyVec2i>, &makeNumbers<cKind<std::int32_t>, 2>},
    {cKind<KyVec2f>, &makeNumbers<cKind<float>, 2>},
    {cKind<KyVec2d>, &makeNumbers<cKind<double>, 2>},
    {cKind<KyVec3i>, &makeNumbers<cKind<std::int32_t>, 3>},
    {cKind<KyVec3f>, &makeNumbers<cKind<float>, 3>},
    {cKind<KyVec3d>, &makeNumbers<cKind<double>, 3>},
    {cKind<KyQuatf>, &makeNumbers<cKind<float>, 4>},
    {cKind<KyQuatd>, &makeNumbers<cKind<double>, 4>},
    {cKind<KyRecti>, &makeNumbers<cKind<std::int32_t>, 4>},
    {cKind<KyRectf>, &makeNumbers<cKind<float>, 4>},
    {cKind<KyRectd>, &makeNumbers<cKind<double>, 4>},
    {cKind<KyColor>, &make<KyQColorEditor>},
    {cKind<KyURL>, &make<KyQUrlEditor>},
    {cKind<KyDate>, &make<KyQDateTimeEditor>},
    {cKind<KyTime>, &make<KyQDateTimeEditor>},
    {cKind<KyDateTime>, &make<KyQDateTimeEditor>},
    {cKind<KyObjectReference>, &make<KyQReferenceEditor>},
};

} // namespace

KyQAttributeItemDelegate::KyQAttributeItemDelegate(QObject* parent)
    : QStyledItemDelegate(parent) {}

void KyQAttributeItemDelegate::initializeDefaultEditors() {
    for (const DefaultEditor& entry : cDefaultEditors)
        registerEditor(entry.kind, entry.make);
    KyPublishedObjects::begin();
}

void KyQAttributeItemDelegate::finalizeEditors() {
    KyPublishedObjects::end();
    editFactories().clear();
}

void KyQAttributeItemDelegate::registerEditor(KyFieldKind kind, Factory factory) {
    if (factory)
        editFactories().insert_or_assign(kind, std::move(factory));
    else
        editFactories().erase(kind);
}

KyQFieldEditor* KyQAttributeItemDelegate::makeEditor(const KyField& field, QWidget* parent) {
    const auto found = editFactories().find(field.getKind());
    KyQFieldEditor* editor = nullptr;
    if (found != editFactories().end())
        editor = found->second(parent);
    else if (field.getFieldType().isEnumerated())
        editor = new KyQEnumEditor(parent);
    if (editor && editor->canShow(field))
        return editor;
    delete editor;
    const bool hasText = field.getKind() != cFieldKindOf<KyObjectReference>;
    return hasText ? new KyQTextEditor(parent) : nullptr;
}

QWidget* KyQAttributeItemDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem&,
                                                const QModelIndex& index) const {
    const auto field = index.data(KyQAttributeModel::eFieldRole).value<KyField>();
    KyQFieldEditor* editor = field.isValid() ? makeEditor(field, parent) : nullptr;
    if (!editor)
        return nullptr;
    editor->setLabel(index.siblingAtColumn(KyQAttributeModel::eNameColumn).data().toString());
    if (auto* reference = qobject_cast<KyQReferenceEditor*>(editor))
        reference->setObjectType(index.data(KyQAttributeModel::eObjectTypeRole).value<const KyType*>());
    connect(editor, &KyQFieldEditor::committed, this, &QAbstractItemDelegate::commitData);
    return editor;
}

void KyQAttributeItemDelegate::setEditorData(QWidget* editor, const QModelIndex& index) const {
    const auto field = index.data(KyQAttributeModel::eFieldRole).value<KyField>();
    if (auto* fieldEditor = qobject_cast<KyQFieldEditor*>(editor); fieldEditor && field.isValid())
        fieldEditor->setField(field);
}

void KyQAttributeItemDelegate::setModelData(QWidget* editor, QAbstractItemModel* model,
                                            const QModelIndex& index) const {
    if (auto* fieldEditor = qobject_cast<KyQFieldEditor*>(editor))
        fieldEditor->writeTo(*model, index);
}

// Several fields side by side need more room than a narrow cell has.
void KyQAttributeItemDelegate::updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
                                                    const QModelIndex&) const {
    QRect rect = option.rect;
    rect.setHeight(std::max(rect.height(), editor->minimumSizeHint().height()));
    editor->setGeometry(rect);
}

bool KyQAttributeItemDelegate::eventFilter(QObject* watched, QEvent* event) {
    const bool isEscape = event->type() == QEvent::KeyPress && static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape;
    if (auto* editor = isEscape ? qobject_cast<KyQFieldEditor*>(watched) : nullptr)
        editor->revert();
    return QStyledItemDelegate::eventFilter(watched, event);
}
