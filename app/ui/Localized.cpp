#include "app/ui/Localized.h"

#include <QCoreApplication>
#include <QRegularExpression>
#include <QStringList>

#include <optional>

namespace morvex {

namespace {

/// Bytes. What agents, phones and relays wrote may be far longer, and is in no table.
constexpr std::size_t longestSentence = 2'000;
/// How many sentences may stand in one another.
constexpr int deepest = 4;
const QString besides = QStringLiteral(" · ");

constexpr int noNumber = -1;

/// `number` is the one in the sentence, for languages whose words follow it.
std::optional<QString> lookUp(const QString& key, int number = noNumber) {
    auto source = key.toUtf8();
    auto found = QCoreApplication::translate("Morvex", source.constData(), nullptr, number);
    if (found == key) return std::nullopt;
    return found;
}

/// What differs from one sentence of a form to the next: quoted names, numbers, tools, and the few names that
/// stand bare.
const QRegularExpression& value() {
    static const QRegularExpression expression(QStringLiteral(
        "(?<=„)[^“]*(?=“)"
        "|\\bmac(?:\\.\\w+)+"
        "|(?<=^Oprávnění ke složce ).+?(?= se nepodařilo uložit)|(?<=^Složka ).+(?= (?:neexistuje|už není "
        "povolená)\\.$)"
        "|(?<=^Už běží jiný úkol: ).+(?=\\. Počkej, nebo ho zruš\\.$)"
        "|(?<=špatný typ \\()(?<type>.+)(?=\\)\\.$)"
        "|(?<=^Trezor odmítl čtení |^Trezor odmítl zápis |^Trezor odmítl mazání ).+?(?=: )"
        "|^[\\w-]+(?= skončil chybou: )|(?<=^Mac právě pracuje: ).+(?=\\.$)"
        "|(?<=^Nástroj )\\S+(?= neznám\\.$| není nainstalovaný\\.$| není na Macu k dispozici: | není "
        "povolený: )"
        "|(?<=^Cesta ).+(?= leží mimo povolené složky\\. Nesahám na ni\\.$)"
        "|(?<=jinou verzí protokolu \\()\\S+(?= proti )|(?<= proti )\\S+(?=\\)\\. Aktualizuj )"
        "|(?<=je odložený jako ).+$"
        "|\\d+"));
    return expression;
}

struct Form {
    QString key;
    QStringList values;

    [[nodiscard]] int number() const {
        bool isNumber = false;
        const auto first = values.value(0).toInt(&isNumber);
        return isNumber ? first : noNumber;
    }
};

/// Each value as %1, %2, … in its key.
Form formOf(const QString& sentence) {
    Form form;
    qsizetype end = 0;
    for (auto matches = value().globalMatch(sentence); matches.hasNext();) {
        auto match = matches.next();
        const auto type = match.captured(QStringLiteral("type"));
        form.values.push_back(type.isEmpty() ? match.captured() : lookUp(type).value_or(type));
        form.key +=
            sentence.mid(end, match.capturedStart() - end) + u'%' + QString::number(form.values.size());
        end = match.capturedEnd();
    }
    form.key += sentence.mid(end);
    return form;
}

/// All places at once, since a value may look like a place for another one.
QString filled(const QString& form, const QStringList& values) {
    QString text;
    for (qsizetype at = 0; at < form.size(); ++at) {
        const bool isPlace = form[at] == u'%' && at + 1 < form.size() && form[at + 1].isDigit();
        text += isPlace ? values.value(form[++at].digitValue() - 1) : QString(form[at]);
    }
    return text;
}

QString localize(const QString& sentence, int deep);

/// Facts side by side, each a sentence of its own.
QString localizeFacts(const QString& sentence, int deep) {
    QStringList facts;
    for (const auto& fact : sentence.split(besides)) facts << localize(fact, deep + 1);
    return facts.join(besides);
}

QString localize(const QString& sentence, int deep) {
    if (auto found = lookUp(sentence)) return *found;
    const auto whole = formOf(sentence);
    if (auto found = lookUp(whole.key, whole.number())) return filled(*found, whole.values);
    if (deep == deepest) return sentence;
    for (const auto& mark : {QStringLiteral(": "), QStringLiteral(" — "), QStringLiteral(". ")}) {
        auto at = sentence.indexOf(mark);
        if (at < 0) continue;
        auto form = formOf(sentence.left(at + mark.size()));
        auto found = lookUp(form.key + u'%' + QString::number(form.values.size() + 1), form.number());
        if (!found) continue;
        form.values.push_back(localize(sentence.mid(at + mark.size()), deep + 1));
        return filled(*found, form.values);
    }
    return sentence.contains(besides) ? localizeFacts(sentence, deep) : sentence;
}

} // namespace

QString localized(const std::string& sentence) {
    auto text = QString::fromStdString(sentence);
    return text.isEmpty() || sentence.size() > longestSentence ? text : localize(text, 0);
}

} // namespace morvex
