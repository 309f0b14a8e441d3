// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QFile>
#include <QString>

class QIODevice;

/// The file that a download goes to. One that was there before stays as it is until something is written.
class KyDownloadFile {
public:
    /// Whether it can be written; a file is there then. Never what is a link, a directory, a pipe or a device.
    bool open(const QString& path);
    /// Everything that the source has got. False when the system refuses it.
    bool write(QIODevice& source);
    /// Empties what was there before, if that was not done by writing.
    bool overwrite();
    /// False when something could not be written.
    bool close();
    /// Closed too; but what was there before and has not been overwritten stays.
    void remove();

    QString getPath() const { return mFile.fileName(); }
    QString getErrorText() const { return mFile.errorString(); }
    /// Bytes written since it was opened.
    qint64 getNbWritten() const { return mNbWritten; }
    /// Whether another file of this name is still there.
    bool isForeign() const { return mIsForeign; }

private:
    QFile mFile;
    qint64 mNbWritten = 0;
    bool mIsForeign = false;
};
