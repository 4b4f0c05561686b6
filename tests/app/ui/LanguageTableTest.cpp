#include "app/ui/LanguageTable.h"

#include "app/ui/Localized.h"

#include <QCoreApplication>
#include <QDirIterator>
#include <QFile>
#include <QRegularExpression>
#include <QXmlStreamReader>
#include <gtest/gtest.h>

#include <set>
#include <vector>

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

TEST_F(LanguageTableTest, WordsFollowTheirNumberButInCzech) {
    const auto apps = [](int connected, int tools) {
        return translated(std::to_string(connected) + " připojeno · " + std::to_string(tools) + " nástrojů");
    };
    EXPECT_EQ(translated("1 povolených složek"), "1 povolených složek");
    EXPECT_EQ(apps(1, 1), "1 připojeno · 1 nástrojů");
    table_.take(QStringLiteral("en"));
    EXPECT_EQ(translated("1 povolených složek"), "1 allowed folder");
    EXPECT_EQ(translated("0 povolených složek"), "0 allowed folders");
    EXPECT_EQ(translated("12 povolených složek"), "12 allowed folders");
    EXPECT_EQ(apps(2, 1), "2 connected · 1 tool");
    table_.take(QStringLiteral("fr"));
    EXPECT_EQ(translated("0 povolených složek"), "0 dossier autorisé");
    EXPECT_EQ(apps(1, 2), "1 connectée · 2 outils");
    table_.take(QStringLiteral("de"));
    EXPECT_EQ(translated("1 povolených složek"), "1 erlaubter Ordner");
    EXPECT_EQ(apps(3, 1), "3 verbunden · 1 Tool");
    table_.take(QStringLiteral("es"));
    EXPECT_EQ(translated("2 povolených složek"), "2 carpetas permitidas");
    EXPECT_EQ(apps(1, 1), "1 conectada · 1 herramienta");
}

TEST_F(LanguageTableTest, TheToolkitSpeaksTheSameLanguage) {
    const auto cancel = [] { return QCoreApplication::translate("QPlatformTheme", "Cancel").toStdString(); };
    EXPECT_EQ(cancel(), "Zrušit");
    table_.take(QStringLiteral("de"));
    EXPECT_EQ(cancel(), "Abbrechen");
    table_.take(QStringLiteral("en"));
    EXPECT_EQ(cancel(), "Cancel");
}

TEST_F(LanguageTableTest, ALongTextOfManySentencesIsLeftAsItIsAtOnce) {
    table_.take(QStringLiteral("en"));
    for (const std::string part : {"Soubor: hotov. ", "Spojení přerušeno: ", "a — ", "„", "Složka "}) {
        std::string text;
        for (int i = 0; i < 1'000; ++i) text += part;
        EXPECT_EQ(translated(text), text);
        const auto shorter = text.substr(0, 20 * part.size());
        EXPECT_FALSE(translated(shorter).empty());
    }
}

TEST_F(LanguageTableTest, AValueThatLooksLikeAPlaceStaysAsItIs) {
    table_.take(QStringLiteral("en"));
    EXPECT_EQ(translated("Oprávnění ke složce %2 %1 se nepodařilo uložit: %1"),
              "The permission for the folder %2 %1 could not be saved: %1");
}

/// Sentences that arise outside of the window and are shown in it, one of each form.
const char* const sentences[] = {
    "Binárku „codex“ jsem nenašel (prohledáno 12 adresářů). Nainstaluj: npm i -g @openai/codex (nebo brew "
    "install codex). Codex ve webovém ChatGPT ani rozšíření do editoru žádné CLI neinstalují.",
    "Claude Code je nainstalovaný, ale přihlášení není platné nebo kontrola neodpověděla. V Terminálu spusť "
    "`claude auth login` a potom zde klikni na Zjistit znovu.",
    "Přihlášení Claude Code selhalo. V Terminálu spusť `claude auth login` a potom v aplikaci klikni na "
    "Zjistit znovu.",
    "Už běží jiný úkol: codex. Počkej, nebo ho zruš.",
    "Složka /home/jana/web neexistuje.",
    "Složka /home/jana/web už není povolená.",
    "Oprávnění ke složce Moje smlouvy se nepodařilo uložit: Na disku není místo.",
    "Byl požadován nástroj mac.neco.noveho, který tento Mac neumí.",
    "Párování neplatí — Zařízení není spárované. Relay neposlal výzvu.",
    "Telefon a Mac mluví jinou verzí protokolu (1.4 proti 2.0). Aktualizuj tu starší aplikaci.",
    "Zprávu nejde ověřit: Pole „toolCall.name“ má špatný typ (číslo).",
    "Zprávu nejde ověřit: Zpráva dorazila mimo dobu své platnosti. Zkontroluj hodiny na obou zařízeních.",
    "Telefon poslal nekompatibilní párovací zprávu: Zpráva není platný JSON (bajt 17).",
    "Spojení přerušeno — Server odmítl WebSocket (HTTP 403).",
    "Klíč telefonu nejde použít: Klíč má mít 32 bajtů, má jich 31.",
    "Počítač se nepodařilo udržet vzhůru: Přihlašovací služba systému to nezařídila: Chybí k tomu oprávnění.",
    "Spojení přerušeno — Certifikát serveru nevydala autorita, které tento počítač věří. Certifikát vlastní "
    "autority ulož s příponou .crt do /usr/local/share/ca-certificates a spusť sudo update-ca-certificates.",
    "Historii úkolů se nepodařilo uložit: Disk je jen pro čtení.",
    "Adresa relaye začíná https:// nebo http://. Napiš „https://relay.example.com“.",
    "Složku s daty „/home/jana/.local/share/Morvex“ nejde použít: Na disku není místo.",
    "Vlastní aplikace vrátila HTTP 500.",
    "Povolit akci na Macu",
    "Relay odmítl požadavek (429).",
    "Párování neplatí — Trezor odmítl čtení parovani.protejsek: uživatel odemčení zrušil",
    "Trezor odmítl zápis identita: položku nejde číst nebo zapsat",
    "Trezor odmítl mazání identita: kód 5",
    "claude-code skončil chybou: Proces skončil s kódem 1.",
    "Nástroj nevrátil žádný text.",
    "Prázdné zadání.",
    "Nástroj vim neznám.",
    "Mac právě pracuje: codex.",
    "Nástroj codex není na Macu k dispozici: Prázdné zadání.",
    "Nástroj mac.mail.send není povolený: Zamítnuto.",
    "Zamítnuto: Zrušeno.",
    "Stav se nepodařilo odeslat: Zpráva je na přenos příliš dlouhá.",
    "Zpráva je na zašifrování moc dlouhá.",
    "Hlavička požadavku má neplatné znaky.",
    "Spojení přerušeno — Neznámý druh rámce.",
    "Relaci se nepodařilo otevřít. Zkontroluj, že je nainstalovaná aplikace Codex.",
};

TEST_F(LanguageTableTest, SentencesFromOutsideOfTheWindowAreFoundInEveryLanguage) {
    // Letters of Czech alone.
    const QRegularExpression czech(QStringLiteral("[ěščřžůďťň]"));
    for (const char* code : {"en", "de", "fr", "es"}) {
        table_.take(QString::fromUtf8(code));
        for (const char* sentence : sentences) {
            auto found = QString::fromStdString(translated(sentence));
            EXPECT_FALSE(czech.match(found).hasMatch()) << code << ": " << found.toStdString();
            EXPECT_FALSE(found.contains(u'%')) << code << ": " << found.toStdString();
        }
    }
}

/// Each source sentence of a table with its translations, one for each form of its number, and whether it is
/// told to be unfinished.
struct Entry {
    QString source;
    QStringList translations;
    bool finished;
};

std::vector<Entry> entriesOf(const QString& code) {
    QFile file(QStringLiteral(MORVEX_SOURCE_DIR "/app/ui/languages/%1.ts").arg(code));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << code.toStdString();
    std::vector<Entry> entries;
    bool hasForms = false;
    for (QXmlStreamReader xml(&file); !xml.atEnd(); xml.readNext()) {
        if (!xml.isStartElement()) continue;
        if (xml.name() == QStringLiteral("message"))
            hasForms = xml.attributes().hasAttribute(QStringLiteral("numerus"));
        if (xml.name() == QStringLiteral("source")) entries.push_back({xml.readElementText(), {}, true});
        if (xml.name() == QStringLiteral("numerusform")) entries.back().translations << xml.readElementText();
        if (xml.name() != QStringLiteral("translation")) continue;
        entries.back().finished = !xml.attributes().hasAttribute(QStringLiteral("type"));
        if (!hasForms) entries.back().translations << xml.readElementText();
    }
    return entries;
}

QStringList placesIn(const QString& text) {
    static const QRegularExpression place(QStringLiteral("%\\d"));
    QStringList places;
    for (auto matches = place.globalMatch(text); matches.hasNext();) places << matches.next().captured();
    places.sort();
    return places;
}

TEST_F(LanguageTableTest, EveryLanguageHasTheSameSentencesWithTheSamePlaces) {
    std::set<QString> english;
    for (const auto& entry : entriesOf(QStringLiteral("en"))) english.insert(entry.source);
    EXPECT_GT(english.size(), 200U);
    for (const char* code : {"en", "de", "fr", "es"}) {
        std::set<QString> sources;
        for (const auto& [source, translations, finished] : entriesOf(QString::fromUtf8(code))) {
            sources.insert(source);
            EXPECT_TRUE(finished && !translations.isEmpty()) << code << ": " << source.toStdString();
            for (const auto& translation : translations) {
                EXPECT_FALSE(translation.isEmpty()) << code << ": " << source.toStdString();
                EXPECT_EQ(placesIn(source), placesIn(translation)) << code << ": " << source.toStdString();
            }
        }
        EXPECT_EQ(sources, english) << code;
    }
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
