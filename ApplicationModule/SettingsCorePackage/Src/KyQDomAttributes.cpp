// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyQDomDocument.h"

#include "KyQtText.h"

#include <algorithm>
#include <array>

using KyApplication::toKyString;
using KyApplication::toQString;

namespace {

constexpr int cNumberDigits = 16;
constexpr int cColorPrecision = 6;
constexpr int cFieldPrecision = 17;
constexpr int cNbColorComponents = 4;

/// The parsed text of the attribute, or the default where there is none.
template <class T, class Parse>
T read(const QDomElement& element, const QString& name, const T& defaultValue, Parse parse) {
    return element.hasAttribute(name) ? parse(element.attribute(name)) : defaultValue;
}

/// False, and nothing changes, for anything but three or four numbers.
bool parseColor(const QString& text, KyColor& color) {
    const QStringList parts = text.split(QLatin1Char(';'));
    if (parts.size() != cNbColorComponents && parts.size() != cNbColorComponents - 1)
        return false;
    KyColor parsed;
    for (int i = 0; i < parts.size(); ++i) {
        bool isNumber = false;
        parsed[i] = parts[i].toFloat(&isNumber);
        if (!isNumber)
            return false;
    }
    color = parsed;
    return true;
}

} // namespace

QString KyQDomDocument::getAttribute(const QDomElement& element, const QString& name, const QString& defaultValue) {
    return read(element, name, defaultValue, [](const QString& text) { return text; });
}

QString KyQDomDocument::getAttribute(const QDomElement& element, const QString& name, const char* defaultValue) {
    return getAttribute(element, name, QString::fromUtf8(defaultValue));
}

int KyQDomDocument::getAttribute(const QDomElement& element, const QString& name, int defaultValue) {
    return read(element, name, defaultValue, [](const QString& text) { return text.toInt(); });
}

unsigned int KyQDomDocument::getAttribute(const QDomElement& element, const QString& name, unsigned int defaultValue) {
    return read(element, name, defaultValue, [](const QString& text) { return text.toUInt(); });
}

float KyQDomDocument::getAttribute(const QDomElement& element, const QString& name, float defaultValue) {
    return read(element, name, defaultValue, [](const QString& text) { return text.toFloat(); });
}

double KyQDomDocument::getAttribute(const QDomElement& element, const QString& name, double defaultValue) {
    return read(element, name, defaultValue, [](const QString& text) { return text.toDouble(); });
}

bool KyQDomDocument::getAttribute(const QDomElement& element, const QString& name, bool defaultValue) {
    return read(element, name, defaultValue, [](const QString& text) { return text == toQString(true); });
}

KyColor KyQDomDocument::getAttribute(const QDomElement& element, const QString& name, const KyColor& defaultValue) {
    return read(element, name, defaultValue, [color = defaultValue](const QString& text) mutable {
        parseColor(text, color);
        return color;
    });
}

KyField KyQDomDocument::getAttribute(const QDomElement& element, const QString& name, const KyField& defaultValue) {
    return read(element, name, defaultValue, [field = defaultValue](const QString& text) mutable {
        field.fromString(toKyString(text));
        return field;
    });
}

void KyQDomDocument::setAttribute(QDomElement element, const QString& name, const char* value) {
    setAttribute(element, name, QString::fromUtf8(value));
}

void KyQDomDocument::setAttribute(QDomElement element, const QString& name, int value) {
    setAttribute(element, name, QString::number(value));
}

void KyQDomDocument::setAttribute(QDomElement element, const QString& name, unsigned int value) {
    setAttribute(element, name, QString::number(value));
}

void KyQDomDocument::setAttribute(QDomElement element, const QString& name, float value) {
    setAttribute(element, name, static_cast<double>(value));
}

void KyQDomDocument::setAttribute(QDomElement element, const QString& name, double value) {
    setAttribute(element, name, QString::number(value, 'f', cNumberDigits));
}

void KyQDomDocument::setAttribute(QDomElement element, const QString& name, bool value) {
    setAttribute(element, name, toQString(value));
}

void KyQDomDocument::setAttribute(QDomElement element, const QString& name, const KyColor& value) {
    QStringList parts;
    for (int i = 0; i < cNbColorComponents; ++i)
        parts.append(QString::number(static_cast<double>(value[i]), 'g', cColorPrecision));
    setAttribute(element, name, parts.join(QLatin1Char(';')));
}

void KyQDomDocument::setAttribute(QDomElement element, const QString& name, const KyField& value) {
    setAttribute(element, name, toQString(value.toString(cFieldPrecision)));
}

QString KyQDomDocument::getAttribute(const QString& path, const QString& name) const {
    return getAttribute(path, name, QString());
}
