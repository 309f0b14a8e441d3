// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KySettings.h"
#include "KySettingsEditorManager.h"

#include "KyException.h"

#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <gtest/gtest.h>

/// A document as its clients derive it.
class KyTestDocument : public KyQDomDocument {
public:
    using KyQDomDocument::buildElements;
    using KyQDomDocument::findElements;
    using KyQDomDocument::KyQDomDocument;
};

/// A temporary directory, a manager of pages, and the reports made meanwhile.
class KySettingsTest : public testing::Test {
protected:
    KySettingsTest() {
        msReports.clear();
        mHandler = KyException::setReportHandler([](const std::string& text) { msReports += text + '|'; });
        KySettingsEditorManager::initializeClass();
    }
    ~KySettingsTest() override {
        KySettingsEditorManager::finalizeClass();
        KyException::setReportHandler(mHandler);
    }

    QString at(const QString& name) const { return mDirectory.filePath(name); }
    void write(const QString& name, const QByteArray& content) const {
        QFile file(at(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        ASSERT_EQ(file.write(content), content.size());
    }
    QByteArray read(const QString& name) const {
        QFile file(at(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("unreadable");
    }
    QString list() const { return QDir(mDirectory.path()).entryList(QDir::Files | QDir::Hidden, QDir::Name).join(' '); }

    const QTemporaryDir mDirectory;
    inline static std::string msReports;

private:
    KyException::ReportHandler mHandler;
};
