// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyQtFormLoader_p.h"

#include "KyQtForm_p.h"
#include "KyQtLifetime_p.h"

#include <QAction>
#include <QActionGroup>
#include <QButtonGroup>
#include <QCoreApplication>
#include <QDir>
#include <QLayout>
#include <QScrollArea>
#include <QUiLoader>

#include <algorithm>
#include <atomic>
#include <iterator>
#include <utility>
#include <vector>

namespace {

QString translate(const char* text) {
    return QCoreApplication::translate("KyQtLuaBinding", text);
}

struct Warning {
    QString text;
    /// Said here, of a widget that is left out; the loader says so too.
    bool isOwn = false;
};

/// Whether that is what the loader says after a widget could not be made.
bool isRepetition(const QString& text) {
    const QString rows[] = {
        QCoreApplication::translate("QFormBuilder", "The creation of a widget of the class '%1' failed."),
        QCoreApplication::translate("QFormBuilder", "Empty widget item in %1 '%2'.")};
    return std::any_of(std::begin(rows), std::end(rows), [&text](const QString& row) {
        return text.startsWith(row.section(QStringLiteral("%1"), 0, 0));
    });
}

/// Without what the loader puts around it.
QString strip(const QString& text) {
    constexpr QLatin1String cPrefix("Designer: ");
    if (text.startsWith(cPrefix))
        return text.mid(cPrefix.size());
    return text.startsWith(QLatin1Char('"')) ? text.mid(1, text.size() - 2) : text;
}

/// Stands on the C++ stack while a form is loaded: catches the warnings of its thread, the loader's only way to tell of
/// what it has left out.
class WarningScope {
public:
    WarningScope()
        : mOuter(std::exchange(msInnermost, this)) {
        if (!mOuter)
            msFormer = qInstallMessageHandler(&handle);
    }
    ~WarningScope() {
        if (!mOuter)
            qInstallMessageHandler(msFormer);
        msInnermost = mOuter;
    }
    WarningScope(const WarningScope&) = delete;
    WarningScope& operator=(const WarningScope&) = delete;

    std::vector<Warning>& editWarnings() { return mWarnings; }

private:
    static void handle(QtMsgType type, const QMessageLogContext& context, const QString& text) {
        if (WarningScope* scope = msInnermost; scope && type == QtWarningMsg)
            scope->mWarnings.push_back({strip(text)});
        else if (const QtMessageHandler former = msFormer)
            former(type, context, text);
    }

    WarningScope* mOuter;
    std::vector<Warning> mWarnings;
    /// Threads without a form have none.
    static inline thread_local WarningScope* msInnermost = nullptr;
    static inline std::atomic<QtMessageHandler> msFormer = nullptr;
};

class FormLoader : public QUiLoader {
public:
    explicit FormLoader(QString file)
        : mFile(std::move(file)) {}

    QWidget* createWidget(const QString& className, QWidget* parent, const QString& name) override {
        if (const auto* area = qobject_cast<QScrollArea*>(parent); area && area->widget()) {
            // The area would delete the first one, which the loader goes on with.
            return leaveOut(translate(QT_TRANSLATE_NOOP("KyQtLuaBinding", "no place for widget %1")).arg(name));
        }
        std::vector<Warning>& warnings = mWarnings.editWarnings();
        const std::size_t nbWarnings = warnings.size();
        QWidget* widget = QUiLoader::createWidget(className, parent, name);
        if (widget)
            return keep(widget);
        // Said here in fewer words.
        warnings.resize(nbWarnings);
        return leaveOut(translate(QT_TRANSLATE_NOOP("KyQtLuaBinding", "unknown widget %1")).arg(className));
    }

    QLayout* createLayout(const QString& className, QObject* parent, const QString& name) override {
        return keep(QUiLoader::createLayout(className, parent, name));
    }

    QAction* createAction(QObject* parent, const QString& name) override {
        return keep(QUiLoader::createAction(parent, name));
    }

    QActionGroup* createActionGroup(QObject* parent, const QString& name) override {
        return keep(QUiLoader::createActionGroup(parent, name));
    }

    QWidget* loadForm(QIODevice& device, QWidget* parent) {
        QWidget* form = load(&device, parent);
        tellWarnings(form ? &kyWarnOfQtForm : &kyReportQtForm);
        if (!form)
            kyReportQtForm(mFile, errorString());
        else
            for (QButtonGroup* group : form->findChildren<QButtonGroup*>())
                keep(group);
        return form;
    }

private:
    template <class T>
    static T* keep(T* object) {
        if (object)
            KyQtLifetime::add(*object, KyQtLifetime::eMade);
        return object;
    }

    QWidget* leaveOut(const QString& warning) {
        mWarnings.editWarnings().push_back({warning, true});
        return nullptr;
    }

    void tellWarnings(void (*tell)(const QString& file, const QString& text)) {
        bool isAfterOwn = false;
        for (const Warning& warning : std::exchange(mWarnings.editWarnings(), {})) {
            if (!isAfterOwn || !isRepetition(warning.text))
                tell(mFile, warning.text);
            isAfterOwn = warning.isOwn;
        }
    }

    QString mFile;
    WarningScope mWarnings;
};

} // namespace

QWidget* kyBuildQtForm(QIODevice& source, const QString& file, const QDir& directory, QWidget* parent) {
    FormLoader loader(file);
    loader.setWorkingDirectory(directory);
    return loader.loadForm(source, parent);
}

QWidget* kyBuildPlainForm(QIODevice& source, QString& error) {
    QUiLoader loader;
    QWidget* form = loader.load(&source);
    error = loader.errorString();
    return form;
}
