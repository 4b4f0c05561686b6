#include "app/ui/LanguageTable.h"

#include "app/ui/Localized.h"

#include <QCoreApplication>
#include <QDirIterator>
#include <QFile>
#include <QRegularExpression>
#include <gtest/gtest.h>

#include <set>

namespace morvex {
namespace {

class LanguageTableTest : public testing::Test {
  protected:
    LanguageTableTest() { QCoreApplication::installTranslator(&table_); }

    ~LanguageTableTest() override { QCoreApplication::removeTranslator(&table_); }

    static std::string translated(const std::string& sentence) { return localized(sentence).toStdString(); }

    LanguageTable table_;
};

TEST_F(LanguageTableTest, IsCzechAtFirstAndForALanguageWithoutATable) {
    EXPECT_EQ(translated("Otevřít nastavení"), "Otevřít nastavení");
    EXPECT_TRUE(table_.take(QStringLiteral("en")));
    EXPECT_EQ(translated("Otevřít nastavení"), "Open Settings");
    EXPECT_FALSE(table_.take(QStringLiteral("en")));
    for (const char* code : {"xx", "cs"}) {
        EXPECT_TRUE(table_.take(QString::fromUtf8(code)));
        EXPECT_EQ(translated("Otevřít nastavení"), "Otevřít nastavení") << code;
    }
}

TEST_F(LanguageTableTest, SentencesWithValuesAreFoundByTheirForm) {
    table_.take(QStringLiteral("en"));
    const std::pair<const char*, const char*> sentences[] = {
        {"Otevřít nastavení", "Open Settings"},
        {"Připojuji… (2. pokus)", "Connecting… (attempt 2)"},
        {"Telefon spí (12 min)", "The phone is asleep (12 min)"},
        {"Pracuje: codex", "Busy: codex"},
        {"Párování neplatí — Zrušeno.", "The pairing is not valid — Cancelled."},
        {"Stav se nepodařilo odeslat: Zrušeno.", "The status could not be sent: Cancelled."},
        {"Věta, kterou nikdo nezná: 5", "Věta, kterou nikdo nezná: 5"},
        {"", ""},
    };
    for (const auto& [czech, english] : sentences) EXPECT_EQ(translated(czech), english);
}

/// What is written in the sources between `call("` and the next quote.
std::set<QString> textsOf(const QString& folder, const QString& filter, const QString& call) {
    const QRegularExpression text(QStringLiteral("\\b%1\\(\"([^\"]+)\"").arg(call));
    std::set<QString> found;
    QDirIterator files(QStringLiteral(MORVEX_SOURCE_DIR "/app/ui/") + folder, {filter}, QDir::Files);
    while (files.hasNext()) {
        QFile file(files.next());
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        auto content = QString::fromUtf8(file.readAll());
        for (auto matches = text.globalMatch(content); matches.hasNext();)
            found.insert(matches.next().captured(1));
    }
    return found;
}

TEST_F(LanguageTableTest, EveryLanguageKnowsEveryTextOfTheWindow) {
    auto texts = textsOf(QStringLiteral("qml"), QStringLiteral("*.qml"), QStringLiteral("qsTr"));
    texts.merge(textsOf(QStringLiteral("models"), QStringLiteral("*.cpp"), QStringLiteral("localized")));
    texts.merge(textsOf(QString(), QStringLiteral("*.cpp"), QStringLiteral("tr")));
    EXPECT_GT(texts.size(), 90U);
    for (const char* code : {"en", "de", "fr", "es"}) {
        QTranslator table;
        ASSERT_TRUE(table.load(QStringLiteral(":/languages/%1.qm").arg(QString::fromUtf8(code)))) << code;
        for (const auto& text : texts) {
            auto translated = table.translate("Morvex", text.toUtf8().constData());
            EXPECT_FALSE(translated.isEmpty()) << code << ": " << text.toStdString();
            EXPECT_EQ(translated.count(u'%'), text.count(u'%')) << code << ": " << text.toStdString();
        }
    }
}

} // namespace
} // namespace morvex
