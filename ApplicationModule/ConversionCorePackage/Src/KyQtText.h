// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyApplicationExport.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <concepts>
#include <list>
#include <string>
#include <vector>

/// Texts between the object model, which keeps bytes in some character set, and Qt, which keeps UTF-16.
///
/// A character set is an IANA MIB number (4 ISO-8859-1, 106 UTF-8, 2252 windows-1252); 0 stands for the default set. An
/// unknown one is reported and gives an empty text. Any thread may convert; the default set is one for the process and
/// is to be changed while nobody converts.
///
/// ```
/// KyApplication::toQString("Gr\xc3\xbcn", 106);  // "Grün"
/// KyApplication::toKyString(widget.windowTitle()); // in the default set
/// ```
namespace KyApplication {

/// Initially 4, ISO-8859-1.
KYAPPLICATION_EXPORT int getDefaultCharSet();
/// 0 is ignored.
KYAPPLICATION_EXPORT void setDefaultCharSet(int charSet);

/// Bytes that are no text of the set become replacement characters, but for an incomplete character at the end, which
/// is dropped; zero bytes pass.
KYAPPLICATION_EXPORT QString toQString(const std::string& text, int charSet = 0);
/// Null stands for an empty text.
KYAPPLICATION_EXPORT QString toQString(const char* text, int charSet = 0);

/// Two shared texts, "true" and "false".
KYAPPLICATION_EXPORT const QString& getBooleanText(bool value);
/// "true" or "false"; for a bool only, so that no pointer is taken for one.
template <std::same_as<bool> T>
QString toQString(T value) {
    return getBooleanText(value);
}

/// Characters that the set does not have become "?" or what the set has for it, with one report; no byte-order mark.
KYAPPLICATION_EXPORT std::string toKyString(const QString& text, int charSet = 0);
/// The bytes as they are.
KYAPPLICATION_EXPORT std::string toKyString(const QByteArray& bytes);
/// Bytes have no character set to convert from.
std::string toKyString(const QByteArray& bytes, int charSet) = delete;
/// The bytes as they are.
KYAPPLICATION_EXPORT QByteArray toQByteArray(const std::string& bytes);

/// @{
/// Each text as toQString and toKyString convert it.
KYAPPLICATION_EXPORT QStringList toQStringList(const std::list<std::string>& texts, int charSet = 0);
KYAPPLICATION_EXPORT QStringList toQStringList(const std::vector<std::string>& texts, int charSet = 0);
KYAPPLICATION_EXPORT std::list<std::string> toKyStringList(const QStringList& texts, int charSet = 0);
KYAPPLICATION_EXPORT std::vector<std::string> toKyStringVector(const QStringList& texts, int charSet = 0);
/// @}

} // namespace KyApplication
