// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QCoreApplication>
#include <QTreeWidget>

#include <vector>

struct KyScriptListing;
struct KyScriptVariable;

/// The locals, upvalues and globals of a call of a script that stands still. Tables and objects open where a person
/// opens them, and not before; of long ones as much is listed as KyScriptListing gives, and a row "…" stands for the
/// rest. What is open stays so from stop to stop. F2 shows all of a value, to read and to select, Ctrl+C copies it.
class KyHostVariables : public QTreeWidget {
    Q_DECLARE_TR_FUNCTIONS(KyHostVariables)

public:
    KyHostVariables();

    /// Thread and level as in KyScriptDebugger; a call that is none has no variables.
    void showCall(int thread, int level);

protected:
    void changeEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    struct Row;

    void updateTranslations();
    void update(QTreeWidgetItem& parent, const std::vector<Row>& rows);
    void update(QTreeWidgetItem& item, const Row& row);
    /// Brings what it holds up to date.
    void list(QTreeWidgetItem& item);
    static std::vector<Row> makeRows(const KyScriptListing& listing, int nbVariables);

    int mThread = 0;
    int mLevel = 0;
};
