// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyApplicationExport.h"

#include "KyColor.h"
#include "KyDateTime.h"
#include "KyRect.h"
#include "KyURL.h"
#include "KyVec2.h"

#include <QColor>
#include <QDateTime>
#include <QPointF>
#include <QRectF>
#include <QSizeF>
#include <QUrl>

/// Values between the object model and Qt. Nothing fails: what one side cannot hold becomes its invalid value.
namespace KyApplication {

/// Alpha is limited to 0 ... 1; red, green and blue beyond that range are kept. NaN becomes 0.
KYAPPLICATION_EXPORT QColor toQColor(const KyColor& color);
/// An invalid colour becomes the default one.
KYAPPLICATION_EXPORT KyColor toKyColor(const QColor& color);

/// Null for an invalid date.
KYAPPLICATION_EXPORT QDate toQDate(const KyDate& date);
/// An invalid date becomes an invalid one.
KYAPPLICATION_EXPORT KyDate toKyDate(const QDate& date);
/// To the nearest millisecond of the day; null when the time is none of a day (negative, 24 hours and more, NaN).
KYAPPLICATION_EXPORT QTime toQTime(const KyTime& time);
/// Midnight for an invalid time.
KYAPPLICATION_EXPORT KyTime toKyTime(const QTime& time);
/// Date and time each by itself, in the given specification. A local time that the change to summer time skips is
/// invalid for Qt, but its date and time are right.
KYAPPLICATION_EXPORT QDateTime toQDateTime(const KyDateTime& dateTime, Qt::TimeSpec timeSpec);
/// The date and time that the value shows, whatever its time zone.
KYAPPLICATION_EXPORT KyDateTime toKyDateTime(const QDateTime& dateTime);

/// User name and password arrive as they are, whatever characters they have. Invalid when Qt cannot read the URL.
KYAPPLICATION_EXPORT QUrl toQUrl(const KyURL& url);
/// An invalid address becomes an empty one.
KYAPPLICATION_EXPORT KyURL toKyURL(const QUrl& url);

/// An infinite rectangle has an infinite width and height on both sides.
KYAPPLICATION_EXPORT QRectF toQRectF(const KyRectd& rect);
/// Origin, width and height as they are.
KYAPPLICATION_EXPORT KyRectd toKyRectd(const QRectF& rect);
/// x and y as they are.
KYAPPLICATION_EXPORT QPointF toQPointF(const KyVec2d& vector);
/// x and y as they are.
KYAPPLICATION_EXPORT KyVec2d toKyVec2d(const QPointF& point);
/// Width and height.
KYAPPLICATION_EXPORT KyVec2d toKyVec2d(const QSizeF& size);

} // namespace KyApplication
