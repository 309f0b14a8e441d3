// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyApplicationExport.h"

#include <string>

class KyLuaBinder;
class KyScriptEngine;
class QObject;
class QString;
class QWidget;

/// The Qt classes of scripts: they load forms, find widgets in them and read and set their state, react to signals, and
/// use settings files and directories. The application object must exist before. GUI thread.
///
/// Scripts never own what they hold: an object without parent lives until `deleteQObject`, and using one that anybody
/// has deleted is an error of the script.
///
/// ```
/// KyQtLuaBinding::setDataPath("/opt/viewer/forms");
/// KyQtLuaBinding::bind();
/// KyScriptEngine::get().executeChunk(R"(
///     form = loadUi("panel.ui", nil)
///     connect(findChild(form, "close"), "clicked()", function() deleteQObject(form) end)
///     form:show()
/// )");
/// ```
class KYAPPLICATION_EXPORT KyQtLuaBinding {
public:
    KyQtLuaBinding() = delete;

    /// bind(). Needs the script engine.
    static void initializeClass();
    static void finalizeClass();

    /// Enters the classes and functions in the state of the single engine. To be called again after a reset of the
    /// state; nothing happens when they are there. Failures are reported.
    static void bind();
    static void bind(KyScriptEngine& engine);

    /// The directory of scripts' form files, in UTF-8; the current directory when it is empty.
    static const std::string& getDataPath() { return msDataPath; }
    static void setDataPath(const std::string& path) { msDataPath = path; }

    /// Pushes the object as its nearest class that scripts have; nil for null, and in a state without these
    /// classes.
    static void cpp_to_lua(KyLuaBinder& binder, QObject* object);
    static void cpp_to_lua(KyLuaBinder& binder, QWidget* widget);

    /// Whether what the engine's output is being told is no error of a script but a warning: there is a form, though
    /// without the parts that the text names. For the print callback.
    static bool isWarning() { return msIsWarning; }

private:
    friend void kyWarnOfQtForm(const QString& file, const QString& text);

    static std::string msDataPath;
    static bool msIsWarning;
};
