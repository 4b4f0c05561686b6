#include <QDirIterator>
#include <QFile>
#include <QRegularExpression>
#include <QSet>
#include <QTranslator>
#include <QXmlStreamReader>
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <string>

namespace morvex {
namespace {

/// Files whose Czech is not for the window, and why.
const std::map<QString, const char*>& notForTheWindow() {
    static const char* const phone = "the phone tells it";
    static const char* const terminal = "printed on a terminal";
    static const std::map<QString, const char*> files{
        {QStringLiteral("app/agents/AgentTools.cpp"), phone},
        {QStringLiteral("app/agents/ClaudeCodeAdapter.cpp"), phone},
        {QStringLiteral("app/agents/CodexAdapter.cpp"), phone},
        {QStringLiteral("app/agents/Phrases.h"), phone},
        {QStringLiteral("app/companion/Bdelost.cpp"), "the system shows it to whoever lists its locks"},
        {QStringLiteral("app/agents/AgentsFeature.cpp"), phone},
        {QStringLiteral("app/companion/ToolGate.cpp"), phone},
        {QStringLiteral("app/console/ConsoleApprovals.cpp"), terminal},
        {QStringLiteral("app/console/ConsoleFolders.cpp"), terminal},
        {QStringLiteral("app/console/ConsoleOutput.cpp"), terminal},
        {QStringLiteral("app/console/ConsolePairing.cpp"), terminal},
        {QStringLiteral("app/console/ConsolePairing.h"), terminal},
        {QStringLiteral("app/console/ConsoleShell.cpp"), terminal},
        {QStringLiteral("app/console/TaskLines.cpp"), terminal},
        {QStringLiteral("app/execution/FileTools.cpp"), phone},
        {QStringLiteral("app/execution/OverenaCesta.cpp"), phone},
        {QStringLiteral("app/execution/SouboryBridge.cpp"), phone},
        {QStringLiteral("app/execution/SouboryChyba.cpp"), phone},
        {QStringLiteral("app/execution/TerminalChyba.cpp"), phone},
        {QStringLiteral("app/execution/TerminalGate.cpp"), phone},
        {QStringLiteral("app/execution/TerminalTools.cpp"), phone},
        {QStringLiteral("app/main.cpp"), terminal},
        {QStringLiteral("app/personal/NoteError.cpp"), phone},
        {QStringLiteral("app/personal/NotesTools.cpp"), phone},
        {QStringLiteral("app/tools/Tool.h"), phone},
        {QStringLiteral("app/ui/Localized.cpp"), "forms of sentences"},
        {QStringLiteral("app/ui/models/VoiceModel.cpp"), "each language is called what its speakers call it"},
        {QStringLiteral("app/voice/MacVoiceController.cpp"), "this version has no voice"},
        {QStringLiteral("platform/linux/LogindSleepMonitor.cpp"),
         "the system shows it to whoever lists its locks"},
        {QStringLiteral("shared/wire/ToolCatalogue.cpp"), phone},
        {QStringLiteral("shared/wire/ToolRisk.cpp"), phone},
        {QStringLiteral("shared/wire/WorkItemStatus.cpp"), terminal},
    };
    return files;
}

const QRegularExpression& czech() {
    static const QRegularExpression letters(QStringLiteral("[áéíóúýěščřžůďťňÁÉÍÓÚÝĚŠČŘŽŮĎŤŇ]"));
    return letters;
}

/// What stands between the values of a sentence.
QStringList partsOf(const QString& sentence) {
    static const QRegularExpression value(QStringLiteral("%\\d|\\d+|„|“| · |\\\\n"));
    return sentence.split(value, Qt::SkipEmptyParts);
}

/// The texts of a source, those that the compiler joins as one.
QStringList textsOf(QString source) {
    static const QRegularExpression joint(QStringLiteral("\"\\s*\\n\\s*\""));
    static const QRegularExpression token(
        QStringLiteral("//[^\\n]*|'(?:[^'\\\\]|\\\\.)'|\"((?:[^\"\\\\\\n]|\\\\.)*)\""));
    QStringList texts;
    source.remove(joint);
    for (auto matches = token.globalMatch(source); matches.hasNext();) texts << matches.next().captured(1);
    return texts;
}

QString contentOf(const QString& path) {
    QFile file(QStringLiteral(MORVEX_SOURCE_DIR "/") + path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
    return QString::fromUtf8(file.readAll());
}

/// The parts of every sentence that the tables of the languages have; all have the same.
QSet<QString> translatedParts() {
    QSet<QString> parts;
    for (QXmlStreamReader xml(contentOf(QStringLiteral("app/ui/languages/en.ts"))); !xml.atEnd();
         xml.readNext())
        if (xml.isStartElement() && xml.name() == QStringLiteral("source"))
            for (const auto& part : partsOf(xml.readElementText())) parts.insert(part.trimmed());
    return parts;
}

/// Pieces from which the program makes one part of a sentence.
const QSet<QString>& pieces() {
    static const QSet<QString> all{QStringLiteral("Zpráva"),        QStringLiteral("Trezor odmítl"),
                                   QStringLiteral("čtení"),         QStringLiteral("zápis"),
                                   QStringLiteral("mazání"),        QStringLiteral("spí ("),
                                   QStringLiteral("není připojený")};
    return all;
}

/// Whether the tables have this part, whole: most words stand somewhere in another sentence.
bool isIn(const QSet<QString>& translated, const QString& part) {
    const auto whole = part.trimmed();
    return translated.contains(whole) ||
           (pieces().contains(whole) &&
            std::any_of(translated.cbegin(), translated.cend(),
                        [&whole](const QString& other) { return other.contains(whole); }));
}

QStringList sources() {
    QStringList found;
    const QString root = QStringLiteral(MORVEX_SOURCE_DIR "/");
    for (const char* folder : {"app", "foundation", "platform/linux", "platform/net", "platform/ports",
                               "platform/qt", "shared", "shared-apple"}) {
        QDirIterator files(root + QString::fromUtf8(folder), {QStringLiteral("*.cpp"), QStringLiteral("*.h")},
                           QDir::Files, QDirIterator::Subdirectories);
        while (files.hasNext()) found << files.next().mid(root.size());
    }
    return found;
}

TEST(SourceSentences, WhateverTheWindowMayTellIsInTheTables) {
    const auto translated = translatedParts();
    int looked = 0;
    for (const auto& path : sources()) {
        if (notForTheWindow().contains(path)) continue;
        for (const auto& text : textsOf(contentOf(path)))
            for (const auto& part : partsOf(text)) {
                if (!czech().match(part).hasMatch()) continue;
                ++looked;
                EXPECT_TRUE(isIn(translated, part)) << path.toStdString() << ": " << text.toStdString();
            }
    }
    EXPECT_GT(looked, 150);
}

TEST(SourceSentences, NoFileIsExceptedWithoutNeed) {
    const auto translated = translatedParts();
    for (const auto& [path, why] : notForTheWindow()) {
        bool needed = false;
        for (const auto& text : textsOf(contentOf(path)))
            for (const auto& part : partsOf(text))
                needed = needed || (czech().match(part).hasMatch() && !isIn(translated, part));
        EXPECT_TRUE(needed) << path.toStdString() << ": " << why;
    }
}

} // namespace
} // namespace morvex
