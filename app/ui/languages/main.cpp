// check-sentences ROOT TABLE... < SOURCES
//
// Compares the sentences of the program with the tables of its languages. Fails if a table lacks a sentence,
// has an unused one, leaves a translation empty or changes its placeholders. Standard input lists the source
// files, one a line, relative to ROOT.
#include "shared/base/Sentence.h"

#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QXmlStreamReader>

#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace {

using Places = std::set<std::string>;

QString contentOf(const QString& path) {
    QFile file(path);
    if (file.open(QIODevice::ReadOnly)) return QString::fromUtf8(file.readAll());
    std::fprintf(stderr, "%s: cannot be read\n", qPrintable(path));
    std::exit(2);
}

/// The text of a literal without escapes.
QString unescaped(QString literal) {
    static const QRegularExpression escape(QStringLiteral("\\\\(.)"));
    for (auto at = literal.indexOf(escape); at >= 0; at = literal.indexOf(escape, at + 1))
        literal.replace(at, 2, literal[at + 1] == u'n' ? QStringLiteral("\n") : literal.mid(at + 1, 1));
    return literal;
}

/// The sentences of a source file.
struct Words {
    std::set<QString> sentences;
    std::vector<QString> unmarked; ///< unmarked Czech that becomes a sentence, so no language has it
};

/// Sentences are the C++ literals that end with `_sentence`, the QML literals in `qsTr`, and in both the
/// literals in `tr`. Adjacent literals are joined, as the compiler does.
Words wordsOf(QString source) {
    static const QRegularExpression joint(QStringLiteral("\"\\s*\\n\\s*\""));
    static const QRegularExpression token(
        QStringLiteral("//[^\\n]*|'(?:[^'\\\\]|\\\\.)'"
                       "|(?:\\b(?:(?<tr>qsTr\\(|tr\\()|(?<plain>Sentence[({]|TextError[({]))\\s*)?"
                       "\"(?<text>(?:[^\"\\\\\\n]|\\\\.)*)\"(?<mark>_sentence)?"));
    static const QRegularExpression czech(QStringLiteral("[áéíóúýěščřžůďťňÁÉÍÓÚÝĚŠČŘŽŮĎŤŇ]"));
    source.remove(joint);
    Words words;
    for (auto matches = token.globalMatch(source); matches.hasNext();) {
        const auto match = matches.next();
        const auto text = unescaped(match.captured(u"text"));
        const bool isMarked = match.hasCaptured(u"tr") || match.hasCaptured(u"mark");
        if (isMarked) words.sentences.insert(text);
        if (!isMarked && match.hasCaptured(u"plain") && text.contains(czech)) words.unmarked.push_back(text);
    }
    return words;
}

/// The placeholders of a C++ sentence and those that QML fills.
Places placesOf(const QString& sentence) {
    static const QRegularExpression numbered(QStringLiteral("%\\d"));
    Places places;
    const auto text = sentence.toStdString();
    for (auto place = morvex::sentencePlaces::next(text, 0); !place.name.empty();
         place = morvex::sentencePlaces::next(text, place.end))
        places.emplace(place.name);
    for (auto matches = numbered.globalMatch(sentence); matches.hasNext();)
        places.insert(matches.next().captured().toStdString());
    return places;
}

/// Whether the sentence contains anything to translate besides its placeholders.
bool hasWords(QString sentence) {
    static const QRegularExpression place(QStringLiteral("\\{[a-z]+\\}|%\\d"));
    static const QRegularExpression letter(QStringLiteral("\\p{L}"));
    return sentence.remove(place).contains(letter);
}

int complaints = 0;

void complain(const QString& file, const char* what, const QString& sentence) {
    ++complaints;
    std::fprintf(stderr, "%s: %s: %s\n", qPrintable(QFileInfo(file).fileName()), what, qPrintable(sentence));
}

struct Translation {
    QString text;
    bool isFinished = true;
};

/// The translations of each sentence: one, or one for each plural form.
std::map<QString, std::vector<Translation>> tableOf(const QString& path) {
    std::map<QString, std::vector<Translation>> table;
    QString source;
    bool hasForms = false;
    bool isFinished = true;
    QXmlStreamReader xml(contentOf(path));
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement) continue;
        const auto attributes = xml.attributes();
        if (xml.name() == QStringLiteral("name"))
            if (const auto context = xml.readElementText(); context != QStringLiteral("Morvex"))
                complain(path, "nobody asks in this context", context);
        if (xml.name() == QStringLiteral("message")) {
            hasForms = attributes.hasAttribute(QStringLiteral("numerus"));
        } else if (xml.name() == QStringLiteral("source")) {
            source = xml.readElementText();
            if (!table.try_emplace(source).second) complain(path, "stands twice", source);
        } else if (xml.name() == QStringLiteral("translation")) {
            isFinished = !attributes.hasAttribute(QStringLiteral("type"));
            if (!hasForms) table[source].push_back({xml.readElementText(), isFinished});
        } else if (xml.name() == QStringLiteral("numerusform")) {
            table[source].push_back({xml.readElementText(), isFinished});
        }
    }
    if (xml.hasError()) {
        std::fprintf(stderr, "%s: %s\n", qPrintable(path), qPrintable(xml.errorString()));
        std::exit(2);
    }
    return table;
}

void compare(const QString& path, const std::set<QString>& told) {
    const auto table = tableOf(path);
    for (const auto& sentence : told)
        if (!table.contains(sentence)) complain(path, "is missing", sentence);
    for (const auto& [sentence, translations] : table) {
        if (!told.contains(sentence)) complain(path, "nobody tells this", sentence);
        for (const auto& [text, isFinished] : translations) {
            if (!isFinished || text.trimmed().isEmpty()) complain(path, "is not translated", sentence);
            if (placesOf(text) != placesOf(sentence)) complain(path, "has other places", text);
        }
        if (translations.empty()) complain(path, "is not translated", sentence);
    }
}

} // namespace

int main(int argc, char** argv) {
    if (argc < 3) {
        std::fputs("check-sentences ROOT TABLE... < SOURCES\n", stderr);
        return 2;
    }
    const auto root = QString::fromLocal8Bit(argv[1]) + QLatin1Char('/');
    std::set<QString> told;
    for (std::string line; std::getline(std::cin, line) && !line.empty();) {
        const auto source = QString::fromStdString(line);
        const auto words = wordsOf(contentOf(root + source));
        for (const auto& sentence : words.sentences)
            if (hasWords(sentence)) told.insert(sentence);
        for (const auto& text : words.unmarked) complain(source, "is in no language but Czech", text);
    }
    for (int table = 2; table < argc; ++table) compare(QString::fromLocal8Bit(argv[table]), told);
    return complaints == 0 ? 0 : 1;
}
