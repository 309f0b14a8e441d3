// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyQtForm_p.h"

#include "KyQtFormLoader_p.h"
#include "KyQtLuaBinding.h"

#include "KyScriptEngine.h"

#include <QBuffer>
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QXmlStreamReader>

#include <utility>

namespace {

/// The loader calls itself for every level.
constexpr int cMaxDepth = 400;

QString translate(const char* text) {
    return QCoreApplication::translate("KyQtLuaBinding", text);
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

} // namespace

void kyReportQtForm(const QString& file, const QString& error) {
    KyScriptEngine::output(QStringLiteral("loadUi : %1 : %2").arg(file, error).toStdString());
}

void kyWarnOfQtForm(const QString& file, const QString& text) {
    const bool isOuterWarning = std::exchange(KyQtLuaBinding::msIsWarning, true);
    kyReportQtForm(file, text);
    KyQtLuaBinding::msIsWarning = isOuterWarning;
}

QWidget* kyLoadQtForm(const QString& file, const QString& directory, QWidget* parent) {
    QFile source(QDir(directory).filePath(file));
    if (file.isEmpty() || !source.open(QIODevice::ReadOnly)) {
        kyReportQtForm(file, source.errorString());
        return nullptr;
    }
    QByteArray text = source.readAll();
    if (const QString error = FormCheck(text).findError(); !error.isEmpty()) {
        kyReportQtForm(file, error);
        return nullptr;
    }
    QBuffer buffer(&text);
    buffer.open(QIODevice::ReadOnly);
    return kyBuildQtForm(buffer, file, QDir(directory), parent);
}
