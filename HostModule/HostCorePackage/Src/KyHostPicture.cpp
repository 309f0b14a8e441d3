// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyHostPicture.h"

#include "KyHostErrors.h"

#include "KyImage.h"
#include "KyURL.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QFile>
#include <QImage>

#include <cstdio>
#include <filesystem>

namespace fs = std::filesystem;

namespace {

bool savePNG(const fs::path& path, const KyImage& image) {
    return image.savePNG(KyURL(path.string(), KyURL::eLocalPath));
}

bool savePNG(const fs::path& path, const QImage& image) {
    return image.save(QString::fromLocal8Bit(path.string().c_str()), "PNG");
}

/// Devices and pipes are written to as they are.
template <class Image>
bool replaceFile(const fs::path& path, const Image& image) {
    std::error_code error;
    if (fs::exists(path, error) && !fs::is_regular_file(path, error))
        return savePNG(path, image);
    fs::path target = fs::weakly_canonical(path, error);
    if (error)
        target = path;
    fs::path unfinished = target;
    unfinished += '.' + std::to_string(QCoreApplication::applicationPid()) + ".part";
    const bool isWritten = savePNG(unfinished, image);
    if (isWritten)
        fs::rename(unfinished, target, error);
    if (isWritten && !error)
        return true;
    fs::remove(unfinished, error);
    return false;
}

template <class Image>
bool saveImage(const Image& image, const std::string& path, std::string& error) {
    if (replaceFile(path, image))
        return true;
    error = "cannot write '" + path + "'";
    return false;
}

/// Pictures of one second are numbered.
std::string findName() {
    const QString stem = QDateTime::currentDateTime().toString("'kyhost-'yyyyMMdd-HHmmss");
    QString name = stem + ".png";
    for (int i = 2; QFile::exists(name); ++i)
        name = stem + '-' + QString::number(i) + ".png";
    return name.toStdString();
}

} // namespace

bool KyHostPicture::save(const KyImage& image, const std::string& path, std::string& error) {
    return saveImage(image, path, error);
}

bool KyHostPicture::save(const QImage& image, const std::string& path, std::string& error) {
    return saveImage(image, path, error);
}

void KyHostPicture::writeNext(const Save& save) {
    const std::string name = findName();
    std::string error;
    if (!save(name, error)) {
        KyHostErrors::write(error);
        return;
    }
    std::printf("wrote %s\n", name.c_str());
    std::fflush(stdout);
}
