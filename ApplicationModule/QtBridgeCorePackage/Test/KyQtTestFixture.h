// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyQtLuaBinding.h"
#include "KyScriptTestFixture.h"

#include <QCoreApplication>
#include <QDir>
#include <QEvent>
#include <QTemporaryDir>

/// An engine with the Qt classes, in a directory of its own.
class KyQtTestFixture : public KyScriptTestFixture {
protected:
    void SetUp() override {
        mOldDirectory = QDir::currentPath();
        QDir::setCurrent(mDirectory.path());
        KyScriptTestFixture::SetUp();
        KyQtLuaBinding::initializeClass();
    }

    void TearDown() override {
        KyScriptEngine::setPrintCallback(nullptr);
        KyQtLuaBinding::finalizeClass();
        KyScriptTestFixture::TearDown();
        QDir::setCurrent(mOldDirectory);
    }

    /// The object as a global of the scripts.
    static void publish(const char* name, QObject* object) {
        lua_State* state = engine().editLuaState();
        KyLuaBinder binder(state);
        KyQtLuaBinding::cpp_to_lua(binder, object);
        lua_setglobal(state, name);
    }

    static void finishDeletions() { QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); }

    QTemporaryDir mDirectory;
    QString mOldDirectory;
};
