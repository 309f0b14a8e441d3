// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyQtText.h"

#include "KyException.h"

#include <QTextCodec>

#include <algorithm>
#include <array>
#include <atomic>
#include <limits>

namespace {

constexpr int cASCII = 3;
constexpr int cLatin1 = 4;
constexpr int cUTF8 = 106;
constexpr int cUCS4 = 1001;
constexpr int cUTF32 = 1017;
constexpr int cUTF32BE = 1018;
constexpr int cUTF32LE = 1019;

std::atomic<int> gDefaultCharSet = cLatin1;

int chooseCharSet(int charSet) {
    return charSet != 0 ? charSet : gDefaultCharSet.load(std::memory_order_relaxed);
}

/// Qt counts in int; what is longer could not be held anyway.
template <class Text>
int countUnits(const Text& text) {
    return static_cast<int>(std::min<std::size_t>(text.size(), std::numeric_limits<int>::max()));
}

/// Null, with a report, when there is none. Qt's own look-up locks and walks, so each thread keeps its last one.
QTextCodec* findCodec(int charSet) {
    thread_local int lastCharSet = 0;
    thread_local QTextCodec* lastCodec = nullptr;
    if (charSet == lastCharSet)
        return lastCodec;
    QTextCodec* codec = QTextCodec::codecForMib(charSet);
    if (!codec) {
        KyException::create("String conversion error: unknown character set #" + std::to_string(charSet) + ".");
        return nullptr;
    }
    lastCharSet = charSet;
    return lastCodec = codec;
}

void reportLostCharacters(int charSet) {
    KyException::create("String conversion error : some characters may not be correctly encoded with caracter set #" +
                        std::to_string(charSet) + ".");
}

/// The characters of a set whose code is that of Unicode and one byte: those below the number.
constexpr char16_t countPlainCharacters(int charSet) {
    switch (charSet) {
    case cLatin1:
        return 0x100;
    case cASCII:
    case cUTF8:
        return 0x80;
    default:
        return 0;
    }
}

/// False when a character is not below the limit.
bool narrow(const QString& text, char16_t limit, std::string& bytes) {
    bytes.resize(static_cast<std::size_t>(text.size()));
    unsigned all = 0;
    std::transform(text.begin(), text.end(), bytes.begin(), [&all](QChar c) {
        all |= c.unicode();
        return static_cast<char>(c.unicode());
    });
    return all < limit;
}

/// Sets of 16-bit units, which hold half a character as it is.
constexpr bool isUTF16(int charSet) {
    constexpr std::array cSets{1000, 1013, 1014, 1015};
    return std::ranges::find(cSets, charSet) != cSets.end();
}

constexpr bool isUTF32(int charSet) {
    constexpr std::array cSets{cUCS4, cUTF32, cUTF32BE, cUTF32LE};
    return std::ranges::find(cSets, charSet) != cSets.end();
}

bool isBigEndian(int charSet) {
    return charSet == cUTF32BE || (charSet != cUTF32LE && Q_BYTE_ORDER == Q_BIG_ENDIAN);
}

void appendUTF32(std::string& bytes, char32_t character, bool isBigEndian) {
    for (int i = 0; i < 4; ++i)
        bytes += static_cast<char>(character >> (isBigEndian ? 24 - 8 * i : 8 * i));
}

/// Qt's codec leaves bytes that it never wrote behind characters beyond the first 65536.
std::string encodeUTF32(const QString& text, int charSet) {
    std::string bytes;
    for (const char32_t character : text.toUcs4())
        appendUTF32(bytes, character, isBigEndian(charSet));
    if (!text.isValidUtf16())
        reportLostCharacters(charSet);
    return bytes;
}

/// With "?" for what is half a character.
QString replaceHalves(const QString& text) {
    QString whole = text;
    QChar* const characters = whole.data();
    for (int i = 0; i < whole.size(); ++i) {
        if (!characters[i].isSurrogate())
            continue;
        // The text ends with a zero, which is no half.
        if (characters[i].isHighSurrogate() && characters[i + 1].isLowSurrogate())
            ++i;
        else
            characters[i] = QLatin1Char('?');
    }
    return whole;
}

std::string encodeByCodec(const QString& text, int charSet) {
    const QTextCodec* codec = findCodec(charSet);
    if (!codec)
        return {};
    // With a header, every UTF text would begin with a byte-order mark.
    QTextCodec::ConverterState state(QTextCodec::IgnoreHeader);
    // Codecs lose some half characters in silence.
    const bool isWhole = isUTF16(charSet) || text.isValidUtf16();
    const QString whole = isWhole ? text : replaceHalves(text);
    const QByteArray bytes = codec->fromUnicode(whole.constData(), whole.size(), &state);
    if (!isWhole || state.invalidChars != 0)
        reportLostCharacters(charSet);
    return KyApplication::toKyString(bytes);
}

template <class Texts>
QStringList decodeAll(const Texts& texts, int charSet) {
    QStringList result;
    result.reserve(countUnits(texts));
    for (const std::string& text : texts)
        result.append(KyApplication::toQString(text, charSet));
    return result;
}

template <class Texts>
Texts encodeAll(const QStringList& texts, int charSet) {
    Texts result;
    for (const QString& text : texts)
        result.push_back(KyApplication::toKyString(text, charSet));
    return result;
}

} // namespace

int KyApplication::getDefaultCharSet() {
    return gDefaultCharSet.load(std::memory_order_relaxed);
}

void KyApplication::setDefaultCharSet(int charSet) {
    if (charSet != 0)
        gDefaultCharSet.store(charSet, std::memory_order_relaxed);
}

QString KyApplication::toQString(const std::string& text, int charSet) {
    const int chosen = chooseCharSet(charSet);
    if (chosen == cLatin1)
        return QString::fromLatin1(text.data(), countUnits(text));
    if (chosen == cUTF8)
        return QString::fromUtf8(text.data(), countUnits(text));
    const QTextCodec* codec = findCodec(chosen);
    return codec ? codec->toUnicode(text.data(), countUnits(text)) : QString();
}

QString KyApplication::toQString(const char* text, int charSet) {
    return toQString(std::string(text ? text : ""), charSet);
}

const QString& KyApplication::getBooleanText(bool value) {
    static const QString cTrue = QStringLiteral("true");
    static const QString cFalse = QStringLiteral("false");
    return value ? cTrue : cFalse;
}

std::string KyApplication::toKyString(const QString& text, int charSet) {
    const int chosen = chooseCharSet(charSet);
    std::string bytes;
    if (const char16_t limit = countPlainCharacters(chosen); limit != 0 && narrow(text, limit, bytes))
        return bytes;
    if (isUTF32(chosen))
        return encodeUTF32(text, chosen);
    return encodeByCodec(text, chosen);
}

std::string KyApplication::toKyString(const QByteArray& bytes) {
    return std::string(bytes.constData(), static_cast<std::size_t>(bytes.size()));
}

QByteArray KyApplication::toQByteArray(const std::string& bytes) {
    return QByteArray(bytes.data(), countUnits(bytes));
}

QStringList KyApplication::toQStringList(const std::list<std::string>& texts, int charSet) {
    return decodeAll(texts, charSet);
}

QStringList KyApplication::toQStringList(const std::vector<std::string>& texts, int charSet) {
    return decodeAll(texts, charSet);
}

std::list<std::string> KyApplication::toKyStringList(const QStringList& texts, int charSet) {
    return encodeAll<std::list<std::string>>(texts, charSet);
}

std::vector<std::string> KyApplication::toKyStringVector(const QStringList& texts, int charSet) {
    return encodeAll<std::vector<std::string>>(texts, charSet);
}
