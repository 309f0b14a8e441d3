// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyScriptLines.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>

namespace {

constexpr qint64 cMaxSize = qint64(16) * 1024 * 1024;

bool holdsCode(std::string_view line) {
    const std::size_t begin = line.find_first_not_of(" \t\r\f\v;");
    return begin != std::string_view::npos && !line.substr(begin).starts_with("--");
}

} // namespace

KyScriptLines::KyScriptLines(std::string_view script)
    : mIsKnown(true) {
    while (!script.empty()) {
        const std::size_t end = script.find('\n');
        mHoldCode.push_back(holdsCode(script.substr(0, end)));
        script.remove_prefix(end == std::string_view::npos ? script.size() : end + 1);
    }
}

KyScriptLines KyScriptLines::read(const QString& path) {
    QFile file(path);
    if (!QFileInfo(path).isFile() || file.size() > cMaxSize || !file.open(QIODevice::ReadOnly))
        return {};
    return KyScriptLines(file.readAll().toStdString());
}

int KyScriptLines::findCode(int line) const {
    if (line < 1 || !mIsKnown)
        return std::max(line, 0);
    const auto first = mHoldCode.begin() + std::min(line - 1, static_cast<int>(mHoldCode.size()));
    const auto found = std::find(first, mHoldCode.end(), true);
    return found == mHoldCode.end() ? 0 : static_cast<int>(found - mHoldCode.begin()) + 1;
}
