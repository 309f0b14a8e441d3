// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyQtFont.h"

#include "KyQtText.h"

#include "KyFontFormat.h"

#include <QFontInfo>

#include <memory>

namespace {

// Both sides number the styles alike.
static_assert(int(QFont::StyleNormal) == KyFontFormat::eNormal && int(QFont::StyleItalic) == KyFontFormat::eItalic &&
              int(QFont::StyleOblique) == KyFontFormat::eOblique);

QFont::StyleHint toStyleHint(int hint) {
    const bool isKnown = hint >= QFont::Helvetica && hint <= QFont::Fantasy;
    return isKnown ? static_cast<QFont::StyleHint>(hint) : QFont::AnyStyle;
}

/// Not positive for a font whose size nobody knows.
double getPoints(const QFont& font) {
    return font.pointSizeF() > 0 ? font.pointSizeF() : QFontInfo(font).pointSizeF();
}

} // namespace

QFont KyApplication::toQFont(const KyFontFormat& format) {
    QFont font;
    if (!format.getFamily().empty())
        font.setFamily(toQString(format.getFamily()));
    font.setStyleHint(toStyleHint(format.getStyleHint()));
    if (format.getSize() > 0)
        font.setPointSizeF(format.getSize());
    font.setWeight(format.getWeight());
    font.setStyle(static_cast<QFont::Style>(format.getStyle()));
    font.setUnderline(format.isUnderline());
    font.setStrikeOut(format.isStrikeOut());
    return font;
}

KyFontFormat* KyApplication::toKyFontFormat(const QFont& font) {
    auto format = std::make_unique<KyFontFormat>();
    format->setFamily(toKyString(font.family()));
    format->setStyleHint(font.styleHint());
    format->setSize(getPoints(font));
    format->setWeight(font.weight());
    format->setStyle(font.style());
    format->setUnderline(font.underline());
    format->setStrikeOut(font.strikeOut());
    return format.release();
}
