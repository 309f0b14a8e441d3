// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyQDateTimeEditor_p.h"

#include "KyDateTime.h"
#include "KyQtValues.h"

#include <QDateTimeEdit>

using namespace KyApplication;

namespace {

constexpr int cFirstYear = 1;
constexpr int cLastYear = 9999;

const char* getFormat(KyFieldKind kind) {
    if (kind == cFieldKindOf<KyDate>)
        return "yyyy-MM-dd";
    return kind == cFieldKindOf<KyTime> ? "HH:mm:ss.zzz" : "yyyy-MM-dd HH:mm:ss.zzz";
}

/// In universal time, which skips no hour.
QDateTime toUniversal(const KyField& field) {
    if (const KyDate* date = field.get<KyDate>())
        return QDateTime(toQDate(*date), QTime(0, 0), Qt::UTC);
    if (const KyTime* time = field.get<KyTime>())
        return toQTime(*time).isNull() ? QDateTime() : QDateTime(QDate(2000, 1, 1), toQTime(*time), Qt::UTC);
    const KyDateTime* both = field.get<KyDateTime>();
    return both && !toQTime(both->time).isNull() ? toQDateTime(*both, Qt::UTC) : QDateTime();
}

} // namespace

KyQDateTimeEditor::KyQDateTimeEditor(QWidget* parent)
    : KyQFieldEditor(parent)
    , mEdit(new QDateTimeEdit) {
    mEdit->setFrame(false);
    mEdit->setTimeSpec(Qt::UTC);
    mEdit->setDateRange(QDate(cFirstYear, 1, 1), QDate(cLastYear, 12, 31));
    connect(mEdit, &QDateTimeEdit::dateTimeChanged, this, [this] { noteModified(); });
    addPart(mEdit);
}

bool KyQDateTimeEditor::canShow(const KyField& field) const {
    const QDateTime value = toUniversal(field);
    return value.isValid() && value.date().year() >= cFirstYear && value.date().year() <= cLastYear;
}

bool KyQDateTimeEditor::getField(KyField& field) const {
    mEdit->interpretText();
    if (mKind == cFieldKindOf<KyDate>)
        field = KyField(toKyDate(mEdit->date()));
    else if (mKind == cFieldKindOf<KyTime>)
        field = KyField(toKyTime(mEdit->time()));
    else
        field = KyField(toKyDateTime(mEdit->dateTime()));
    return true;
}

void KyQDateTimeEditor::showField(const KyField& field) {
    if (field.getKind() != mKind) {
        mKind = field.getKind();
        mEdit->setDisplayFormat(QString::fromLatin1(getFormat(mKind)));
        mEdit->setCalendarPopup(mKind != cFieldKindOf<KyTime>);
    }
    if (canShow(field))
        mEdit->setDateTime(toUniversal(field));
}
