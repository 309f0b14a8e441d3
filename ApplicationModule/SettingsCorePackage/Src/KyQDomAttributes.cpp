// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyQDomDocument.h"

#include <algorithm>
#include <array>

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

/// A character in front keeps Qt from taking a byte-order mark out of the text.
QString fromUtf8(const std::string& text) {
    const std::string guarded = ' ' + text;
    return QString::fromUtf8(guarded.data(), static_cast<int>(guarded.size())).mid(1);
}

} // namespace

QString KyQDomDocument::getAttribute(const QDomElement& element, const QString& name, const QString& defaultValue) {
    return read(element, name, defaultValue, [](const QString& text) { return text; });
}

QString KyQDomDocument::getAttribute(const QDomElement& element, const QString& name, const char* defaultValue) {
    return getAttribute(element, name, QString::fromUtf8(defaultValue));
}

QString KyQDomDocument::getAttribute(const QDomElement& element, const QString& name, QLatin1String defaultValue) {
    return getAttribute(element, name, QString(defaultValue));
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

bool KyQDomDocument::getBool(const QDomElement& element, const QString& name, bool defaultValue) {
    return read(element, name, defaultValue, [](const QString& text) { return text == QLatin1String("true"); });
}

KyColor KyQDomDocument::getAttribute(const QDomElement& element, const QString& name, const KyColor& defaultValue) {
    return read(element, name, defaultValue, [color = defaultValue](const QString& text) mutable {
        parseColor(text, color);
        return color;
    });
}

KyColor KyQDomDocument::getAttribute(const QDomElement& element, const QString& name, KyColor::Name defaultValue) {
    return getAttribute(element, name, KyColor(defaultValue));
}

KyField KyQDomDocument::getAttribute(const QDomElement& element, const QString& name, const KyField& defaultValue) {
    return read(element, name, defaultValue, [field = defaultValue](const QString& text) mutable {
        field.fromString(text.toUtf8().toStdString());
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

void KyQDomDocument::setAttribute(QDomElement element, const QString& name, QLatin1String value) {
    setAttribute(element, name, QString(value));
}

void KyQDomDocument::setAttribute(QDomElement element, const QString& name, const KyColor& value) {
    QStringList parts;
    for (int i = 0; i < cNbColorComponents; ++i)
        parts.append(QString::number(static_cast<double>(value[i]), 'g', cColorPrecision));
    setAttribute(element, name, parts.join(QLatin1Char(';')));
}

void KyQDomDocument::setAttribute(QDomElement element, const QString& name, KyColor::Name value) {
    setAttribute(element, name, KyColor(value));
}

void KyQDomDocument::setAttribute(QDomElement element, const QString& name, const KyField& value) {
    setAttribute(element, name, fromUtf8(value.toString(cFieldPrecision)));
}

QString KyQDomDocument::getAttribute(const QString& path, const QString& name) const {
    return getAttribute(path, name, QString());
}
