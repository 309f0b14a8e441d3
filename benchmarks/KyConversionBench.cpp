// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyBenchmark.h"

#include "KyQtConversion.h"

#include <QVariant>

#include <array>
#include <functional>
#include <memory>
#include <string>

namespace {

constexpr const char* cText = "Camera front";

volatile int gSink = 0;

/// Runs an operation on one text after another.
template <class Text, class Operation>
std::function<void(long)> makeLoop(std::shared_ptr<Text> text, Operation operation) {
    return [text, operation](long count) {
        for (long i = 0; i < count; ++i)
            gSink = gSink + static_cast<int>(operation(*text).size());
    };
}

KyBenchmarkSides prepareDecoding() {
    const auto text = std::make_shared<std::string>(cText);
    return {makeLoop(text, [](const std::string& bytes) { return KyApplication::toQString(bytes); }),
            makeLoop(text,
                     [](const std::string& bytes) {
                         return QString::fromLatin1(bytes.data(), static_cast<int>(bytes.size()));
                     }),
            text};
}

KyBenchmarkSides prepareEncoding() {
    const auto text = std::make_shared<QString>(cText);
    return {makeLoop(text, [](const QString& characters) { return KyApplication::toKyString(characters); }),
            // The byte array alone would be no text of the object model.
            makeLoop(text,
                     [](const QString& characters) {
                         const QByteArray bytes = characters.toLatin1();
                         return std::string(bytes.constData(), static_cast<std::size_t>(bytes.size()));
                     }),
            text};
}

// The peers of the two other rows: a careful hand's switch, with the same results for what is measured.

QVariant switchToVariant(const KyField& field) {
    switch (field.getKind()) {
    case cFieldKindOf<bool>:
        return QVariant(field.unchecked<bool>());
    case cFieldKindOf<std::int32_t>:
        return QVariant(qlonglong(field.unchecked<std::int32_t>()));
    case cFieldKindOf<std::uint32_t>:
        return QVariant(qulonglong(field.unchecked<std::uint32_t>()));
    case cFieldKindOf<double>:
        return QVariant(field.unchecked<double>());
    case cFieldKindOf<std::string>: {
        const std::string& text = field.unchecked<std::string>();
        return QVariant(QString::fromLatin1(text.data(), static_cast<int>(text.size())));
    }
    case cFieldKindOf<KyColor>: {
        const KyColor& color = field.unchecked<KyColor>();
        return QVariant(QColor::fromRgbF(static_cast<double>(color.red), static_cast<double>(color.green),
                                         static_cast<double>(color.blue), static_cast<double>(color.alpha)));
    }
    case cFieldKindOf<KyVec2d>: {
        const KyVec2d& vector = field.unchecked<KyVec2d>();
        return QVariant(QPointF(vector.x, vector.y));
    }
    case cFieldKindOf<KyRectd>: {
        const KyRectd& rect = field.unchecked<KyRectd>();
        return QVariant(QRectF(rect.origin.x, rect.origin.y, rect.width, rect.height));
    }
    default:
        return QVariant();
    }
}

KyField switchToField(const QVariant& variant) {
    switch (variant.userType()) {
    case QMetaType::Bool:
        return variant.isNull() ? KyField() : KyField(variant.toBool());
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
        return variant.isNull() ? KyField() : KyField(variant.toInt());
    case QMetaType::Double:
        return variant.isNull() ? KyField() : KyField(variant.toDouble());
    case QMetaType::QString: {
        if (variant.isNull())
            return KyField();
        const QByteArray bytes = variant.toString().toLatin1();
        return KyField(std::string(bytes.constData(), static_cast<std::size_t>(bytes.size())));
    }
    case QMetaType::QColor: {
        if (variant.isNull())
            return KyField();
        const auto color = variant.value<QColor>();
        return KyField(KyColor(static_cast<float>(color.redF()), static_cast<float>(color.greenF()),
                               static_cast<float>(color.blueF()), static_cast<float>(color.alphaF())));
    }
    case QMetaType::QPointF: {
        const QPointF point = variant.toPointF();
        return KyField(KyVec2d(point.x(), point.y()));
    }
    case QMetaType::QRectF: {
        const QRectF rect = variant.toRectF();
        return KyField(KyRectd(rect.x(), rect.y(), rect.width(), rect.height()));
    }
    default:
        return KyField();
    }
}

/// The kinds that attributes have most, one of each.
struct Values {
    std::array<KyField, 8> fields{KyField(7),
                                  KyField(7u),
                                  KyField(0.5),
                                  KyField(true),
                                  KyField(cText),
                                  KyField(KyColor(1, 0.5f, 0, 1)),
                                  KyField(KyVec2d(1, 2)),
                                  KyField(KyRectd(1, 2, 3, 4))};
    std::array<QVariant, 8> variants;

    Values() {
        for (std::size_t i = 0; i < fields.size(); ++i)
            variants[i] = switchToVariant(fields[i]);
    }
};

template <QVariant (*Convert)(const KyField&)>
std::function<void(long)> makeFieldLoop(const std::shared_ptr<Values>& values) {
    return [values](long count) {
        for (long i = 0; i < count; ++i)
            gSink = gSink + Convert(values->fields[static_cast<std::size_t>(i) % values->fields.size()]).isValid();
    };
}

template <KyField (*Convert)(const QVariant&)>
std::function<void(long)> makeVariantLoop(const std::shared_ptr<Values>& values) {
    return [values](long count) {
        for (long i = 0; i < count; ++i)
            gSink = gSink + Convert(values->variants[static_cast<std::size_t>(i) % values->variants.size()]).isEmpty();
    };
}

KyBenchmarkSides prepareToVariant() {
    const auto values = std::make_shared<Values>();
    return {makeFieldLoop<&KyApplication::toQVariant>(values), makeFieldLoop<&switchToVariant>(values), values};
}

KyBenchmarkSides prepareToField() {
    const auto values = std::make_shared<Values>();
    return {makeVariantLoop<&KyApplication::toKyField>(values), makeVariantLoop<&switchToField>(values), values};
}

} // namespace

std::vector<KyBenchmark> getConversionBenchmarks() {
    using enum KyBenchmark::Gate;
    return {
        {"text to QString, 12 characters", "QString::fromLatin1", 1.1, eInstructions, 20000, &prepareDecoding},
        {"QString to text, 12 characters", "QString::toLatin1, copied into a text", 1.1, eInstructions, 20000,
         &prepareEncoding},
        {"field to variant", "a hand-written switch over the kinds", 1.2, eInstructions, 20000, &prepareToVariant},
        {"variant to field", "a hand-written switch over the types", 1.2, eInstructions, 20000, &prepareToField},
    };
}
