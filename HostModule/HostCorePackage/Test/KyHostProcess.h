// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
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

/// Runs the program that stands beside the test, in a folder of the test's own.
class KyHostProcessTest : public testing::Test {
    /// What somebody prefers on this machine is not tested.
    QProcessEnvironment makeEnvironment() const {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("XDG_CONFIG_HOME", mFolder.path());
        return environment;
    }

protected:
    static constexpr int cPatience = 60000;

    QString getPath(const QString& name) const { return mFolder.filePath(name); }

    void write(const QString& name, const QByteArray& text) const {
        QFile file(getPath(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
    }

    std::string read(const QString& path) const {
        QFile file(QDir(mFolder.path()).filePath(path));
        return file.open(QIODevice::ReadOnly) ? file.readAll().toStdString() : std::string("unreadable");
    }

    static QString getProgram() { return QCoreApplication::applicationDirPath() + "/kyhost"; }

    void start(QProcess& process, const QStringList& arguments, const QString& program = getProgram()) const {
        process.setProcessEnvironment(mEnvironment);
        process.setWorkingDirectory(mFolder.path());
        process.start(program, arguments);
    }

    /// Code -1 when it crashed or did not end.
    KyHostResult run(const QStringList& arguments, const QByteArray& input = {},
                     const QString& program = getProgram()) const {
        QProcess process;
        start(process, arguments, program);
        process.write(input);
        process.closeWriteChannel();
        const bool hasEnded = process.waitForFinished(cPatience) && process.exitStatus() == QProcess::NormalExit;
        return {hasEnded ? process.exitCode() : -1, process.readAllStandardOutput().toStdString(),
                process.readAllStandardError().toStdString()};
    }

    int mNbArguments = 0;
    QCoreApplication mApplication{mNbArguments, nullptr};
    QTemporaryDir mFolder;
    QProcessEnvironment mEnvironment = makeEnvironment();
};

/// Reads what a program prints while it runs.
class KyHostTalkTest : public KyHostProcessTest {
protected:
    ~KyHostTalkTest() override { stop(); }

    void stop() {
        mProcess.kill();
        mProcess.waitForFinished();
    }

    /// What was there is ended.
    void talk(const QStringList& arguments, const QString& program = getProgram()) {
        stop();
        mSeen.clear();
        mPosition = 0;
        mProcess.setProcessChannelMode(QProcess::MergedChannels);
        start(mProcess, arguments, program);
    }

    /// Waits for a text that comes after the one waited for before.
    testing::AssertionResult waitFor(const std::string& text) {
        QElapsedTimer timer;
        timer.start();
        for (bool goesOn = true; goesOn && timer.elapsed() < cPatience;) {
            goesOn = mProcess.waitForReadyRead(100) || mProcess.state() != QProcess::NotRunning;
            mSeen += mProcess.readAll().toStdString();
            const std::size_t found = mSeen.find(text, mPosition);
            if (found == std::string::npos)
                continue;
            mPosition = found + text.size();
            return testing::AssertionSuccess();
        }
        return testing::AssertionFailure() << "no '" << text << "' in: " << mSeen;
    }

    QProcess mProcess;
    std::string mSeen;
    std::size_t mPosition = 0;
};
