#include "app/ui/Localized.h"

#include <QCoreApplication>
#include <QRegularExpression>
#include <QStringList>

#include <optional>

namespace morvex {

namespace {

std::optional<QString> lookUp(const QString& key) {
    auto source = key.toUtf8();
    auto found = QCoreApplication::translate("Morvex", source.constData());
    if (found == key) return std::nullopt;
    return found;
}

std::optional<QString> lookUpNumbers(const QString& sentence) {
    static const QRegularExpression number(QStringLiteral("\\d+"));
    QString key;
    QStringList numbers;
    qsizetype end = 0;
    for (auto matches = number.globalMatch(sentence); matches.hasNext();) {
        auto match = matches.next();
        numbers.push_back(match.captured());
        key += sentence.mid(end, match.capturedStart() - end) + u'%' + QString::number(numbers.size());
        end = match.capturedEnd();
    }
    if (numbers.isEmpty()) return std::nullopt;
    auto found = lookUp(key + sentence.mid(end));
    if (!found) return std::nullopt;
    for (const auto& each : numbers) *found = found->arg(each);
    return found;
}

QString localize(const QString& sentence) {
    if (auto found = lookUp(sentence)) return *found;
    if (auto found = lookUpNumbers(sentence)) return *found;
    for (const auto& mark : {QStringLiteral(": "), QStringLiteral(" — ")}) {
        auto at = sentence.indexOf(mark);
        if (at < 0) continue;
        auto rest = at + mark.size();
        if (auto found = lookUp(sentence.left(rest) + QStringLiteral("%1")))
            return found->arg(localize(sentence.mid(rest)));
    }
    return sentence;
}

} // namespace

QString localized(const std::string& sentence) {
    return sentence.empty() ? QString() : localize(QString::fromStdString(sentence));
}

} // namespace morvex
