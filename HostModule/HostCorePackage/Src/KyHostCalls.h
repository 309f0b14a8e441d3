// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyScriptInspection.h"

#include <QCoreApplication>
#include <QWidget>

#include <functional>
#include <vector>

class KyHostVariables;
class QListWidget;

/// Where a script stands still: its calls under way, the innermost first, over the variables of the one that is chosen.
class KyHostCalls : public QWidget {
    Q_DECLARE_TR_FUNCTIONS(KyHostCalls)

public:
    /// Of a recursion that is deeper the outer calls are left out.
    static constexpr int cMaxCalls = 1000;

    /// Called with each call that is chosen, the innermost of each stop among them.
    explicit KyHostCalls(std::function<void(const KyScriptFrame& call)> chosen);
    ~KyHostCalls() override;

    /// After a script has stopped.
    void showStop();
    /// After variables have changed: of the call that is chosen.
    void showVariables();

protected:
    void changeEvent(QEvent* event) override;

private:
    void updateTranslations();
    void list();

    std::function<void(const KyScriptFrame& call)> mChosen;
    std::vector<KyScriptFrame> mFrames;
    QListWidget* mCalls;
    KyHostVariables* mVariables;
};
