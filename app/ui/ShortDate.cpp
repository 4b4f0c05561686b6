#include "app/ui/ShortDate.h"

#include <QDateTime>
#include <QRegularExpression>

namespace morvex {

namespace {

QDateTime localTime(Date date) {
    return QDateTime::fromSecsSinceEpoch(wholeSeconds(date));
}

/// The long form has the seconds that the short one lacks, but names the time zone too.
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
