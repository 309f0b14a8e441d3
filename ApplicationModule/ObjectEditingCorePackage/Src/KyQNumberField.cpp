// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyQNumberField_p.h"

#include "KyFieldText_p.h"

#include <QFocusEvent>
#include <QLineEdit>

#include <cmath>
#include <limits>

namespace {

template <class Number>
KyField stepWhole(Number number, int steps) {
    using Limits = std::numeric_limits<Number>;
    const auto distance = static_cast<Number>(std::abs(static_cast<std::int64_t>(steps)));
    if (steps > 0)
        return KyField(number > Limits::max() - distance ? Limits::max() : static_cast<Number>(number + distance));
    return KyField(number < Limits::lowest() + distance ? Limits::lowest() : static_cast<Number>(number - distance));
}

double chooseStep(double number) {
    if (number == 0 || !std::isfinite(number))
        return 0.1;
    return std::pow(10.0, std::floor(std::log10(std::abs(number))) - 1);
}

/// Without the last digit's noise: 0.3 comes after 0.2, not 0.30000000000000004.
KyField stepReal(double number, int steps) {
    constexpr int cSafeDigits = 15;
    KyField next(number + steps * chooseStep(number));
    next.fromString(next.toString(cSafeDigits));
    return next;
}

} // namespace

KyQNumberField::KyQNumberField(KyFieldKind kind, QWidget* parent)
    : QAbstractSpinBox(parent)
    , mLike(KyField::makeDefault(kind)) {
    setFrame(false);
    setMinimumWidth(fontMetrics().averageCharWidth() * 6);
    connect(lineEdit(), &QLineEdit::textEdited, this, &KyQNumberField::typed);
}

bool KyQNumberField::isWhole() const {
    return mLike.getKind() != cFieldKindOf<float> && mLike.getKind() != cFieldKindOf<double>;
}

void KyQNumberField::setText(const QString& text) {
    lineEdit()->setText(text);
}

bool KyQNumberField::getNumber(KyField& number) const {
    return KyFieldText::parse(text().toStdString(), mLike, number);
}

void KyQNumberField::focusInEvent(QFocusEvent* event) {
    QAbstractSpinBox::focusInEvent(event);
    if (event->reason() != Qt::MouseFocusReason)
        selectAll();
}

void KyQNumberField::stepBy(int steps) {
    KyField number;
    if (!getNumber(number))
        return;
    KyField next = stepReal(number.toDouble(), steps);
    if (isWhole())
        next = mLike.getKind() == cFieldKindOf<std::uint64_t> ? stepWhole(number.toUInt64(), steps)
                                                              : stepWhole(number.toInt64(), steps);
    KyField converted;
    if (!next.convert(mLike.getKind(), converted))
        return;
    setText(QString::fromStdString(KyFieldText::format(converted)));
    selectAll();
    stepped();
}

QValidator::State KyQNumberField::validate(QString& text, int&) const {
    KyField number;
    return KyFieldText::parse(text.toStdString(), mLike, number) ? QValidator::Acceptable : QValidator::Intermediate;
}
