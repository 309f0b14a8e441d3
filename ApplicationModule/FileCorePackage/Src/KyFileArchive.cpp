// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyFileUtilities.h"

#include "KyArchiveTool_p.h"
#include "KyFilePath_p.h"
#include "KyToolProcess_p.h"

#include "KyLongWork.h"

#include <QFile>

#include <limits>

namespace {

constexpr int cInterval = 50;

// Nobody knows how far the tool is; the steps are so many only for the listener to be called.
void waitForTool(KyToolProcess& tool, KyTracker& tracker) {
    tracker.beginSubTask();
    tracker.setNbSteps(std::numeric_limits<unsigned>::max());
    while (!tracker.isCanceled() && !tool.waitForFinished(cInterval) && tool.state() != QProcess::NotRunning)
        tracker.step();
    tracker.endSubTask();
    if (tool.state() == QProcess::NotRunning)
        return;
    tool.killAll();
    tool.waitForFinished(-1);
}

// The tool expands wildcards in what it is given, and would take other archives or another directory.
bool isTakenLiterally(const QString& path) {
    return KyFilePath::isExact(path) && !path.contains('*') && !path.contains('?');
}

bool runTool(const QString& program, const QStringList& arguments, KyTracker& tracker) {
    KyToolProcess tool;
    tool.start(program, arguments, QIODevice::NotOpen);
    if (!tool.waitForStarted(-1))
        return false;
    waitForTool(tool, tracker);
    return tool.exitStatus() == QProcess::NormalExit && tool.exitCode() == 0;
}

} // namespace

int KyApplication::extract7z(const QFileInfo& archive, KyTracker* tracker) {
    KyLongWork work("Unpacking " + archive.fileName().toStdString(), tracker);
    KyTracker& progress = work.editTracker();
    const QString program = KyArchiveTool::find();
    const QString path = archive.absoluteFilePath();
    // What the caller's information has stored may be old.
    if (program.isEmpty() || !isTakenLiterally(path) || !QFileInfo(path).isFile() || progress.isCanceled())
        return eArchiveToolFailed;
    const QStringList arguments = {"x", "-o" + archive.absolutePath(), "-y", path};
    progress.setNbSteps(1);
    if (!runTool(program, arguments, progress))
        return eArchiveToolFailed;
    return QFile::remove(path) ? eSuccess : eArchiveNotRemoved;
}
