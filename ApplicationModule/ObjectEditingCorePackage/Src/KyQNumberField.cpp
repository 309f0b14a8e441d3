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

/// Without the last digit's noise: 0.3 comes after 0.2, not 0.30000000000000004. The largest number is the last.
KyField stepReal(double number, int steps, double largest) {
    constexpr int cSafeDigits = 15;
    const double next = number + steps * chooseStep(number);
    if (std::abs(next) > largest)
        return KyField(std::isfinite(number) ? std::copysign(largest, next) : number);
    KyField rounded(next);
    rounded.fromString(rounded.toString(cSafeDigits));
    return rounded;
}

/// A float counts as the number that people read, not as the double that it is.
double readReal(const KyField& number) {
    KyField real(0.0);
    real.fromString(KyFieldText::format(number));
    return real.unchecked<double>();
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

KyField KyQNumberField::step(const KyField& number, int steps) const {
    if (mLike.getKind() == cFieldKindOf<std::uint64_t>)
        return stepWhole(number.toUInt64(), steps);
    if (isWhole())
        return stepWhole(number.toInt64(), steps);
    const bool isSingle = mLike.getKind() == cFieldKindOf<float>;
    const double largest = isSingle ? std::numeric_limits<float>::max() : std::numeric_limits<double>::max();
    return stepReal(readReal(number), steps, largest);
}

void KyQNumberField::stepBy(int steps) {
    KyField number;
    KyField next;
    if (!getNumber(number) || !step(number, steps).convert(mLike.getKind(), next) || KyFieldText::areSame(number, next))
        return;
    setText(QString::fromStdString(KyFieldText::format(next)));
    selectAll();
    stepped();
}

QValidator::State KyQNumberField::validate(QString& text, int&) const {
    KyField number;
    return KyFieldText::parse(text.toStdString(), mLike, number) ? QValidator::Acceptable : QValidator::Intermediate;
}
