// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyQtForm_p.h"

#include "KyQtLifetime_p.h"

#include "KyScriptEngine.h"

#include <QAction>
#include <QActionGroup>
#include <QBuffer>
#include <QButtonGroup>
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QLayout>
#include <QScrollArea>
#include <QUiLoader>
#include <QXmlStreamReader>

#include <atomic>
#include <utility>

namespace {

/// The loader calls itself for every level.
constexpr int cMaxDepth = 400;

QString translate(const char* text) {
    return QCoreApplication::translate("KyQtLuaBinding", text);
}

void report(const QString& file, const QString& error) {
    KyScriptEngine::output(QStringLiteral("loadUi : %1 : %2").arg(file, error).toStdString());
}

/// Goes through the text of a form before it is given to the loader, which believes every number.
class FormCheck {
public:
    explicit FormCheck(const QByteArray& text)
        : mReader(text) {}

    /// Empty when all is well.
    QString findError() {
        while (!mReader.atEnd() && mError.isEmpty())
            readToken();
        if (mReader.hasError())
            mError = mReader.errorString();
        return mError.isEmpty() ? mError : QStringLiteral("%1: %2").arg(mReader.lineNumber()).arg(mError);
    }

private:
    struct Cell {
        const char* attribute;
        int lowest;
        int highest;
    };
    static constexpr Cell cCells[] = {{"row", 0, cMaxQtRows},
                                      {"column", 0, cMaxQtColumns},
                                      {"rowspan", 1, cMaxQtRows},
                                      {"colspan", 1, cMaxQtColumns}};

    void readToken() {
        const auto token = mReader.readNext();
        if (token == QXmlStreamReader::StartElement)
            startElement();
        else if (token == QXmlStreamReader::EndElement)
            endElement();
        else if (token == QXmlStreamReader::Characters && mLimit > 0)
            checkNumber(mReader.text(), 0, mLimit);
    }

    void startElement() {
        if (++mDepth > cMaxDepth)
            mError = translate(QT_TRANSLATE_NOOP("KyQtLuaBinding", "the form is nested too deeply"));
        const QXmlStreamAttributes attributes = mReader.attributes();
        if (mReader.name() == QLatin1String("property"))
            mLimit = kyGetQtLimit(attributes.value(QLatin1String("name")).toString());
        if (mReader.name() != QLatin1String("item"))
            return;
        for (const QXmlStreamAttribute& attribute : attributes) {
            for (const Cell& cell : cCells)
                if (attribute.name() == QLatin1String(cell.attribute))
                    checkNumber(attribute.value(), cell.lowest, cell.highest);
        }
    }

    void endElement() {
        --mDepth;
        if (mReader.name() == QLatin1String("property"))
            mLimit = 0;
    }

    /// The loader takes what is no number as 0.
    void checkNumber(const QStringRef& text, int lowest, int highest) {
        bool isNumber = false;
        const qlonglong number = text.trimmed().toLongLong(&isNumber);
        if (isNumber && (number < lowest || number > highest))
            mError = translate(QT_TRANSLATE_NOOP("KyQtLuaBinding", "%1 rows or columns are out of range")).arg(number);
    }

    QXmlStreamReader mReader;
    QString mError;
    int mDepth = 0;
    /// Of the number that is being read.
    int mLimit = 0;
};

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

    QStringList& editWarnings() { return mWarnings; }

private:
    static void handle(QtMsgType type, const QMessageLogContext& context, const QString& text) {
        if (WarningScope* scope = msInnermost; scope && type == QtWarningMsg)
            scope->mWarnings += text.startsWith(QLatin1Char('"')) ? text.mid(1, text.size() - 2) : text;
        else if (const QtMessageHandler former = msFormer)
            former(type, context, text);
    }

    WarningScope* mOuter;
    QStringList mWarnings;
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
            report(mFile, translate(QT_TRANSLATE_NOOP("KyQtLuaBinding", "no place for widget %1")).arg(name));
            return nullptr;
        }
        QStringList& warnings = mWarnings.editWarnings();
        const int nbWarnings = warnings.size();
        QWidget* widget = QUiLoader::createWidget(className, parent, name);
        if (widget)
            return keep(widget);
        // Said here in fewer words.
        warnings.erase(warnings.begin() + nbWarnings, warnings.end());
        report(mFile, translate(QT_TRANSLATE_NOOP("KyQtLuaBinding", "unknown widget %1")).arg(className));
        return nullptr;
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
        for (const QString& warning : mWarnings.editWarnings())
            report(mFile, warning);
        if (!form)
            report(mFile, errorString());
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

    QString mFile;
    WarningScope mWarnings;
};

} // namespace

QWidget* kyLoadQtForm(const QString& file, const QString& directory, QWidget* parent) {
    QFile source(QDir(directory).filePath(file));
    if (file.isEmpty() || !source.open(QIODevice::ReadOnly)) {
        report(file, source.errorString());
        return nullptr;
    }
    QByteArray text = source.readAll();
    if (const QString error = FormCheck(text).findError(); !error.isEmpty()) {
        report(file, error);
        return nullptr;
    }
    FormLoader loader(file);
    loader.setWorkingDirectory(QDir(directory));
    QBuffer buffer(&text);
    buffer.open(QIODevice::ReadOnly);
    return loader.loadForm(buffer, parent);
}
