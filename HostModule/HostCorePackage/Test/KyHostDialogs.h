// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyHostSession.h"

#include "KyHostDebuggerWindow.h"
#include "KyHostHelp.h"
#include "KyHostInspector.h"
#include "KyHostLanguagePage.h"
#include "KyHostNavigationPage.h"
#include "KyHostSettings.h"

#include "KyLanguage.h"
#include "KyMeshNode.h"
#include "KyNetworkConnection.h"
#include "KyQAttributeEditor.h"
#include "KyQProxySettingsEditor.h"
#include "KyQSettingsDialog.h"
#include "KyScriptEngine.h"

#include <QApplication>
#include <QTemporaryDir>
#include <QTest>

#include <memory>
#include <string>
#include <vector>

/// Every window with widgets that the host has, open.
class KyHostDialogs : public KyHostSession<QApplication> {
protected:
    struct Dialog {
        /// With the page for one that has several.
        std::string name;
        QWidget* window;
    };
    static constexpr const char* cLanguages[] = {"en", "de", "fr"};

    KyHostDialogs() {
        mStage.getScene().addChild(mNode);
        KyScriptEngine::get().bindInstance(mNode, "node");
        mInspector = std::make_unique<KyHostInspector>("node");
        mDebugger.show();
        mHelp.show();
        mSettingsDialog.show();
    }
    ~KyHostDialogs() override {
        KyLanguage::set(KyLanguage::cEnglish);
        mInspector.reset();
        KyScriptEngine::get().closeLuaState();
    }

    static void setLanguage(const char* language) {
        ASSERT_TRUE(KyLanguage::set(language));
        settle();
    }
    /// Editors close and go by events of their own, and dialogs list their pages later.
    static void settle() {
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCoreApplication::processEvents();
    }
    static void activate(QWidget& window) {
        window.show();
        QApplication::setActiveWindow(&window);
        settle();
    }
    static KyQAttributeEditor& getInspector() {
        for (QWidget* widget : QApplication::topLevelWidgets())
            if (widget->objectName() == "inspector")
                return *static_cast<KyQAttributeEditor*>(widget);
        throw std::logic_error("there is no inspector");
    }
    /// Calls with one dialog after the other, those with pages once for each.
    template <class Callable>
    void forEachDialog(const Callable& callable) {
        for (const char* page : {"navigation", "language", "proxy"}) {
            mSettingsDialog.showPage(page);
            settle();
            callable(Dialog{std::string("settings ") + page, &mSettingsDialog});
        }
        callable(Dialog{"inspector", &getInspector()});
        callable(Dialog{"debugger", &mDebugger});
        callable(Dialog{"help", &mHelp});
    }

    QTemporaryDir mFolder;
    KyHostSettings mSettings{mFolder.filePath("settings.xml")};
    KyHostNavigationPage mNavigationPage{mSettings, nullptr};
    KyHostLanguagePage mLanguagePage{mSettings, [this] { mSettings.applyLanguage(); }};
    KyQProxySettingsEditor mProxyPage{KyNetworkConnection::get()};
    KyQSettingsDialog mSettingsDialog;
    KyMeshNode* mNode = new KyMeshNode;
    std::unique_ptr<KyHostInspector> mInspector;
    KyHostDebuggerWindow mDebugger{[] {}};
    KyHostHelp mHelp;
};
