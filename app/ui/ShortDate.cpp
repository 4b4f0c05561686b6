#include "app/ui/ShortDate.h"

#include <QDateTime>
#include <QRegularExpression>

namespace morvex {

namespace {

QDateTime localTime(Date date) {
    return QDateTime::fromSecsSinceEpoch(wholeSeconds(date));
}

/// Uses the long form without its time zone, because the short form lacks the seconds.
QString formatWithSeconds(const QLocale& locale) {
    static const QRegularExpression timeZone(QStringLiteral("[\\s,(\\[]*t+[\\s)\\]]*"));
    return locale.timeFormat(QLocale::LongFormat).remove(timeZone);
}

} // namespace

QString shortDate(Date date, const QLocale& locale) {
    return locale.toString(localTime(date), QLocale::ShortFormat);
}

QString timeWithSeconds(Date date, const QLocale& locale) {
    return locale.toString(localTime(date).time(), formatWithSeconds(locale));
}

} // namespace morvex
