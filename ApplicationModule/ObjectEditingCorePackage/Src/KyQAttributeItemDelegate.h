// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyApplicationExport.h"

#include "KyFieldKind.h"

#include <QStyledItemDelegate>

#include <functional>

class KyField;
class KyQFieldEditor;

/// Edits the values of a KyQAttributeModel in the cells of an item view, with one editor for each kind of field:
/// numbers, texts, flags, colours, vectors and quaternions, enumerated values, URLs, dates and times, references and
/// lists; other kinds are edited as text, those without a text not at all. Escape takes back what the editor wrote.
///
/// ```
/// treeView->setItemDelegate(new KyQAttributeItemDelegate(treeView));
/// ```
class KYAPPLICATION_EXPORT KyQAttributeItemDelegate : public QStyledItemDelegate {
    Q_OBJECT

public:
    /// Makes an editor for a cell; the parent owns it.
    using Factory = std::function<KyQFieldEditor*(QWidget* parent)>;

    /// The parent owns it.
    explicit KyQAttributeItemDelegate(QObject* parent = nullptr);

    /// Enters the editors of the built-in kinds. From now on references are chosen among what the script engine of the
    /// time publishes.
    static void initializeDefaultEditors();
    /// Forgets all editors, those of hosts too; texts are edited from now on.
    static void finalizeEditors();
    /// Replaces the editor of a kind. An empty factory removes it.
    static void registerEditor(KyFieldKind kind, Factory factory);

    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    void setEditorData(QWidget* editor, const QModelIndex& index) const override;
    void setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const override;
    void updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
                              const QModelIndex& index) const override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    static KyQFieldEditor* makeEditor(const KyField& field, QWidget* parent);
};
