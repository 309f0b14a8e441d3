// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyBenchmark.h"

#include "KyFileUtilities.h"

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <cstdio>
#include <cstdlib>

namespace {

constexpr int cNbDirectories = 100;
constexpr int cNbFiles = 100;

void check(bool isDone, const char* what) {
    if (isDone)
        return;
    std::fprintf(stderr, "kybench: %s failed\n", what);
    std::exit(1);
}

void writeTree(const QString& path) {
    const QByteArray content(1000, 'k');
    for (int i = 0; i < cNbDirectories; ++i) {
        const QDir directory(QStringLiteral("%1/directory%2").arg(path).arg(i));
        check(directory.mkpath("."), "creating a directory");
        for (int j = 0; j < cNbFiles; ++j) {
            QFile file(directory.filePath(QStringLiteral("file%1.dat").arg(j)));
            check(file.open(QIODevice::WriteOnly) && file.write(content) == content.size(), "writing a file");
        }
    }
}

/// Runs one of the system's own tools.
void runTool(const QString& program, const QStringList& arguments) {
    check(QProcess::execute(program, arguments) == 0, qPrintable(program));
}

/// In memory where that is possible: on a disk the journal costs more than either side, and some file systems are slow
/// to create files for minutes after many were deleted.
QString getTemplate() {
    const QFileInfo memory("/dev/shm");
    return (memory.isWritable() ? memory.filePath() : QDir::tempPath()) + "/kybench-XXXXXX";
}

struct Trees {
    Trees() { writeTree(source); }

    QTemporaryDir directory{getTemplate()};
    QString source = directory.filePath("source");
    QString ours = directory.filePath("ours");
    QString peer = directory.filePath("peer");
};

KyBenchmarkSides prepareCopy() {
    const auto trees = std::make_shared<Trees>();
    const auto ours = [trees](long) {
        check(KyApplication::copyRecursively(trees->source, trees->ours, false), "copyRecursively");
    };
    const auto peer = [trees](long) { runTool("cp", {"-r", trees->source, trees->peer}); };
    const auto renew = [trees] { runTool("rm", {"-rf", trees->ours, trees->peer}); };
    return {ours, peer, trees, renew};
}

KyBenchmarkSides prepareDeletion() {
    const auto trees = std::make_shared<Trees>();
    const auto ours = [trees](long) { check(KyApplication::deleteDir(trees->ours, true), "deleteDir"); };
    const auto peer = [trees](long) { runTool("rm", {"-r", trees->peer}); };
    const auto renew = [trees] {
        runTool("cp", {"-r", trees->source, trees->ours});
        runTool("cp", {"-r", trees->source, trees->peer});
    };
    return {ours, peer, trees, renew};
}

} // namespace

std::vector<KyBenchmark> getFileBenchmarks() {
    using Gate = KyBenchmark::Gate;
    return {
        {"copying a tree of 10,000 files", "cp -r", 2, Gate::eTime, 1, &prepareCopy},
        {"deleting a tree of 10,000 files", "rm -r", 1.5, Gate::eTime, 1, &prepareDeletion},
    };
}
