// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <string>

class KyImage;
class QImage;

/// PNG files of what the program shows.
class KyHostPicture {
public:
    /// Writes the file at that path; false, and the reason, when it cannot.
    using Save = std::function<bool(const std::string& path, std::string& error)>;

    /// Takes the place of the file of that path at once: whoever reads it finds the picture before or the new one,
    /// whole. False, and the reason, when that cannot be done.
    static bool save(const KyImage& image, const std::string& path, std::string& error);
    static bool save(const QImage& image, const std::string& path, std::string& error);

    /// Gives `save` a name that no file of the current folder has yet, kyhost-DATE-TIME.png, and prints it, or why the
    /// picture could not be written.
    static void writeNext(const Save& save);
};
