// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyQtValues.h"

#include "KyQtText.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double cSecondsOfDay = 86400.0;
constexpr int cLastMillisecond = 86399999;

/// Of URLs, which are ASCII, and of their user information before percent-encoding; the default set need not even hold
/// ASCII.
constexpr int cURLCharSet = 106;

double numberOrZero(float component) {
    return std::isnan(component) ? 0.0 : static_cast<double>(component);
}

QUrl parseUrl(const KyURL& url) {
    return QUrl(KyApplication::toQString(url.toString(), cURLCharSet), QUrl::TolerantMode);
}

/// Parsed or tolerant user information would lose "%40" and refuse an at sign.
void setUser(QUrl& url, const std::string& user) {
    const std::size_t colon = user.find(':');
    url.setUserName(KyApplication::toQString(user.substr(0, colon), cURLCharSet), QUrl::DecodedMode);
    if (colon != std::string::npos)
        url.setPassword(KyApplication::toQString(user.substr(colon + 1), cURLCharSet), QUrl::DecodedMode);
}

std::string getUser(const QUrl& url) {
    QString user = url.userName(QUrl::FullyDecoded);
    const QString password = url.password(QUrl::FullyDecoded);
    if (!password.isNull())
        user += QLatin1Char(':') + password;
    return KyApplication::toKyString(user, cURLCharSet);
}

} // namespace

QColor KyApplication::toQColor(const KyColor& color) {
    return QColor::fromRgbF(numberOrZero(color[0]), numberOrZero(color[1]), numberOrZero(color[2]),
                            std::clamp(numberOrZero(color[3]), 0.0, 1.0));
}

KyColor KyApplication::toKyColor(const QColor& color) {
    return KyColor(static_cast<float>(color.redF()), static_cast<float>(color.greenF()),
                   static_cast<float>(color.blueF()), static_cast<float>(color.alphaF()));
}

QDate KyApplication::toQDate(const KyDate& date) {
    return date.isValid() ? QDate::fromJulianDay(date.getJulianDay()) : QDate();
}

KyDate KyApplication::toKyDate(const QDate& date) {
    return date.isValid() ? KyDate(date.year(), date.month(), date.day()) : KyDate();
}

QTime KyApplication::toQTime(const KyTime& time) {
    const double seconds = time.getTime();
    if (!(seconds >= 0.0 && seconds < cSecondsOfDay))
        return QTime();
    const int milliseconds = static_cast<int>(std::lround(seconds * 1000.0));
    return QTime::fromMSecsSinceStartOfDay(std::min(milliseconds, cLastMillisecond));
}

KyTime KyApplication::toKyTime(const QTime& time) {
    if (!time.isValid())
        return KyTime();
    return KyTime(time.hour() * 3600 + time.minute() * 60 + time.second() + time.msec() / 1000.0);
}

QDateTime KyApplication::toQDateTime(const KyDateTime& dateTime, Qt::TimeSpec timeSpec) {
    return QDateTime(toQDate(dateTime.date), toQTime(dateTime.time), timeSpec);
}

KyDateTime KyApplication::toKyDateTime(const QDateTime& dateTime) {
    return KyDateTime(toKyDate(dateTime.date()), toKyTime(dateTime.time()));
}

QUrl KyApplication::toQUrl(const KyURL& url) {
    const std::string user = url.getUser();
    if (user.empty())
        return parseUrl(url);
    KyURL withoutUser = url;
    withoutUser.setUser({});
    QUrl result = parseUrl(withoutUser);
    setUser(result, user);
    return result;
}

KyURL KyApplication::toKyURL(const QUrl& url) {
    const QUrl::FormattingOptions format = QUrl::FormattingOptions(QUrl::FullyEncoded) | QUrl::RemoveUserInfo;
    KyURL result(toKyString(url.toString(format), cURLCharSet), KyURL::eURL);
    if (const std::string user = getUser(url); !user.empty())
        result.setUser(user);
    return result;
}

QRectF KyApplication::toQRectF(const KyRectd& rect) {
    return QRectF(rect.origin.x, rect.origin.y, rect.getWidth(), rect.getHeight());
}

KyRectd KyApplication::toKyRectd(const QRectF& rect) {
    if (std::isinf(rect.width()) && std::isinf(rect.height())) {
        KyRectd infinite;
        infinite.setInfinite();
        return infinite;
    }
    return KyRectd(rect.x(), rect.y(), rect.width(), rect.height());
}

QPointF KyApplication::toQPointF(const KyVec2d& vector) {
    return QPointF(vector.x, vector.y);
}

KyVec2d KyApplication::toKyVec2d(const QPointF& point) {
    return KyVec2d(point.x(), point.y());
}

KyVec2d KyApplication::toKyVec2d(const QSizeF& size) {
    return KyVec2d(size.width(), size.height());
}
