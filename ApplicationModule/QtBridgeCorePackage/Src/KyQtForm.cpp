// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyQtForm_p.h"

#include "KyScriptEngine.h"

#include <QBuffer>
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QUiLoader>
#include <QWidget>
#include <QXmlStreamReader>

#include <memory>

namespace {

/// The loader calls itself for every level.
constexpr int cMaxDepth = 400;

void report(const QString& file, const QString& error) {
    KyScriptEngine::output(QStringLiteral("loadUi : %1 : %2").arg(file, error).toStdString());
}

/// Empty when the text can be given to the loader.
QString findError(const QByteArray& text) {
    QXmlStreamReader reader(text);
    int depth = 0;
    while (!reader.atEnd() && depth <= cMaxDepth) {
        const auto token = reader.readNext();
        if (token == QXmlStreamReader::StartElement)
            ++depth;
        else if (token == QXmlStreamReader::EndElement)
            --depth;
    }
    if (depth > cMaxDepth)
        return QCoreApplication::translate("KyQtLuaBinding", "the form is nested too deeply");
    if (reader.hasError())
        return QStringLiteral("%1: %2").arg(reader.lineNumber()).arg(reader.errorString());
    return {};
}

class FormLoader : public QUiLoader {
public:
    explicit FormLoader(QString file)
        : mFile(std::move(file)) {}

    QWidget* createWidget(const QString& className, QWidget* parent, const QString& name) override {
        QWidget* widget = QUiLoader::createWidget(className, parent, name);
        if (!widget)
            report(mFile, QCoreApplication::translate("KyQtLuaBinding", "unknown widget %1").arg(className));
        return widget;
    }

private:
    QString mFile;
};

} // namespace

QWidget* kyLoadQtForm(const QString& file, const QString& directory, QWidget* parent) {
    QFile source(QDir(directory).filePath(file));
    if (file.isEmpty() || !source.open(QIODevice::ReadOnly)) {
        report(file, source.errorString());
        return nullptr;
    }
    QByteArray text = source.readAll();
    if (const QString error = findError(text); !error.isEmpty()) {
        report(file, error);
        return nullptr;
    }
    FormLoader loader(file);
    loader.setWorkingDirectory(QDir(directory));
    QBuffer buffer(&text);
    buffer.open(QIODevice::ReadOnly);
    QWidget* form = loader.load(&buffer, parent);
    if (!form)
        report(file, loader.errorString());
    return form;
}
