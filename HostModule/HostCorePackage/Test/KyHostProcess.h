// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QCoreApplication>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <string>

/// What one run of the program said and answered.
struct KyHostResult {
    int code = -1;
    std::string output;
    std::string errors;
};

inline std::ostream& operator<<(std::ostream& stream, const KyHostResult& result) {
    return stream << "code " << result.code << "\noutput: " << result.output << "\nerrors: " << result.errors;
}

inline bool contains(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
}

inline bool lacks(const std::string& text, const std::string& part) {
    return !contains(text, part);
}

inline bool startsWith(const std::string& text, const std::string& part) {
    return text.starts_with(part);
}

/// Runs the program that stands beside the test, in a folder of the test's own.
class KyHostProcessTest : public testing::Test {
protected:
    QString getPath(const QString& name) const { return mFolder.filePath(name); }

    void write(const QString& name, const QByteArray& text) const {
        QFile file(getPath(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
    }

    static QString getProgram() { return QCoreApplication::applicationDirPath() + "/kyhost"; }

    /// Code -1 when it crashed or did not end.
    KyHostResult run(const QStringList& arguments, const QByteArray& input = {},
                     const QString& program = getProgram()) {
        constexpr int cPatience = 60000;
        QProcess process;
        process.setProcessEnvironment(mEnvironment);
        process.setWorkingDirectory(mFolder.path());
        process.start(program, arguments);
        process.write(input);
        process.closeWriteChannel();
        const bool hasEnded = process.waitForFinished(cPatience);
        KyHostResult result;
        if (hasEnded && process.exitStatus() == QProcess::NormalExit)
            result.code = process.exitCode();
        result.output = process.readAllStandardOutput().toStdString();
        result.errors = process.readAllStandardError().toStdString();
        return result;
    }

    int mNbArguments = 1;
    char mName[5] = "test";
    char* mArguments[2] = {mName, nullptr};
    QCoreApplication mApplication{mNbArguments, mArguments};
    QTemporaryDir mFolder;
    QProcessEnvironment mEnvironment = QProcessEnvironment::systemEnvironment();
};
