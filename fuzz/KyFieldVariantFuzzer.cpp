// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyException.h"
#include "KyQtConversion.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

namespace {

void require(bool condition) {
    if (!condition)
        std::abort();
}

class Input {
public:
    Input(const std::uint8_t* data, std::size_t size)
        : mData(data)
        , mSize(size) {}
    /// Any bit pattern, zeros when the input is used up.
    template <class T>
    T take() {
        T value{};
        if (const std::size_t count = std::min(sizeof(T), mSize); count != 0)
            std::memcpy(&value, mData, count);
        skip(sizeof(T));
        return value;
    }
    /// A number that may be huge, tiny or NaN, or a small one.
    double takeNumber() { return take<std::uint8_t>() % 2 ? take<double>() : take<std::int32_t>() / 1000.0; }
    std::string takeText() {
        const std::size_t length = std::min<std::size_t>(take<std::uint8_t>(), mSize);
        const std::string text(reinterpret_cast<const char*>(mData), length);
        skip(length);
        return text;
    }

private:
    void skip(std::size_t count) {
        mData += std::min(count, mSize);
        mSize -= std::min(count, mSize);
    }

    const std::uint8_t* mData;
    std::size_t mSize;
};

KyDate takeDate(Input& input) {
    return KyDate::fromJulianDay(input.take<std::int64_t>() % 800'000'000'000);
}

/// Fields that come back as they are, whatever their value.
KyField makeLasting(Input& input) {
    switch (input.take<std::uint8_t>() % 8) {
    case 0:
        return KyField(input.take<std::int32_t>());
    case 1:
        return KyField(input.take<std::uint8_t>() % 2 != 0);
    case 2:
        return KyField(input.takeText());
    case 3: {
        const double number = input.takeNumber();
        return KyField(std::isfinite(number) ? number : 0.0);
    }
    case 4: {
        const double x = input.take<std::int32_t>(), y = input.take<std::int32_t>() / 7.0;
        return KyField(KyVec2d(x, y));
    }
    case 5: {
        const double x = input.take<std::int16_t>(), y = input.take<std::int16_t>();
        return KyField(KyRectd(x, y, input.take<std::int16_t>(), input.take<std::int16_t>() / 3.0));
    }
    case 6: {
        const KyDate date = takeDate(input);
        return date.isValid() ? KyField(date) : KyField();
    }
    default:
        return KyField(KyColor(input.take<std::uint8_t>() / 255.0f, 0, 1, input.take<std::uint8_t>() / 255.0f));
    }
}

/// Fields that may come back as something else.
KyField makeAny(Input& input) {
    const auto kind = static_cast<KyFieldKind>(input.take<std::uint8_t>() % cNbBuiltInFieldTypes);
    switch (kind % 6) {
    case 0:
        return KyField(KyTime(input.takeNumber()));
    case 1:
        return KyField(KyColor(input.take<float>(), input.take<float>(), input.take<float>(), input.take<float>()));
    case 2:
        return KyField(KyDateTime(takeDate(input), KyTime(input.takeNumber())));
    case 3:
        return KyField(KyRectd(input.takeNumber(), input.takeNumber(), input.takeNumber(), input.takeNumber()));
    case 4:
        return KyField(std::vector<KyField>{makeLasting(input), makeLasting(input)});
    default: {
        KyField field = KyField::makeDefault(KyFieldManager::getFieldType(kind).getKind());
        field.fromString(input.takeText());
        return field;
    }
    }
}

/// What Qt reads of a URL may be written otherwise, but then it stays; user information is never touched.
void crossUrl(const std::string& text, const std::string& user) {
    KyURL url(text);
    url.setUser(user);
    const QUrl crossed = KyApplication::toQUrl(url);
    if (!crossed.isValid())
        return;
    const KyURL back = KyApplication::toKyURL(crossed);
    require(KyApplication::toKyURL(KyApplication::toQUrl(back)) == back);
    const QString decoded = QString::fromUtf8(user.data(), static_cast<int>(user.size()));
    if (KyApplication::toKyString(decoded, 106) == user)
        require(back.getUser() == url.getUser());
}

void crossText(const std::string& bytes, int charSet) {
    const QString text = KyApplication::toQString(bytes, charSet);
    const std::string again = KyApplication::toKyString(text, charSet);
    if (charSet == 4)
        require(again == bytes);
}

bool gHasReport = false;

void note(const std::string&) {
    gHasReport = true;
}

/// Nothing is lost in silence, half characters included; but a byte-order mark in front is one to the reader.
void crossUnits(const std::string& bytes, int charSet) {
    QString text(static_cast<int>(bytes.size() / 2), Qt::Uninitialized);
    std::memcpy(text.data(), bytes.data(), bytes.size() / 2 * 2);
    text.prepend('x');
    gHasReport = false;
    require(KyApplication::toQString(KyApplication::toKyString(text, charSet), charSet) == text || gHasReport);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    KyException::setReportHandler(&note);
    KyFieldToQVariantConvertersRepository::initializeSingleton();
    Input input(data, size);
    const KyField lasting = makeLasting(input);
    require(KyApplication::toKyField(KyApplication::toQVariant(lasting)) == lasting);
    const KyField once = KyApplication::toKyField(KyApplication::toQVariant(makeAny(input)));
    KyApplication::toKyField(KyApplication::toQVariant(once));

    constexpr std::array cCharSets{3, 4, 17, 39, 106, 111, 1013, 1015, 1017, 1018, 2026, 2252, 99999};
    crossText(input.takeText(), cCharSets[input.take<std::uint8_t>() % cCharSets.size()]);
    constexpr std::array cUnicodeSets{106, 1001, 1017, 1018, 1019};
    crossUnits(input.takeText(), cUnicodeSets[input.take<std::uint8_t>() % cUnicodeSets.size()]);
    const std::string user = input.takeText();
    crossUrl("http://host/" + input.takeText(), user);
    crossUrl(input.takeText(), user);
    return 0;
}
