#include "app/ui/LanguageTable.h"

#include "app/ui/Localized.h"
#include "shared/wire/DecodeError.h"

#include <QCoreApplication>
#include <gtest/gtest.h>

#include <string>
#include <utility>

namespace morvex {
namespace {

class LanguageTableTest : public testing::Test {
  protected:
    LanguageTableTest() { QCoreApplication::installTranslator(&table_); }

    ~LanguageTableTest() override { QCoreApplication::removeTranslator(&table_); }

    static std::string translated(const Sentence& sentence) { return localized(sentence).toStdString(); }

    /// A text that came from a file or from the phone.
    static std::string translated(const std::string& text) { return translated(Sentence(text)); }

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

TEST_F(LanguageTableTest, SentencesAreTranslatedWithTheValuesInTheirPlaces) {
    table_.take(QStringLiteral("en"));
    const Sentence cancelled = "Zrušeno."_sentence;
    const std::pair<Sentence, const char*> sentences[] = {
        {"Otevřít nastavení"_sentence, "Open Settings"},
        {"Připojuji… ({cislo}. pokus)"_sentence(2), "Connecting… (attempt 2)"},
        {"Telefon spí ({minut} min)"_sentence(12), "The phone is asleep (12 min)"},
        {"Pracuje: {cim}"_sentence("codex"), "Busy: codex"},
        {"Párování neplatí — {duvod}"_sentence(cancelled), "The pairing is not valid — Cancelled."},
        {"Stav se nepodařilo odeslat: {duvod}"_sentence(cancelled),
         "The status could not be sent: Cancelled."},
        {Sentence("Věta, kterou nikdo nezná: 5"), "Věta, kterou nikdo nezná: 5"},
        {Sentence("Zrušeno."), "Cancelled."},
        {Sentence(), ""},
    };
    for (const auto& [sentence, english] : sentences) EXPECT_EQ(translated(sentence), english);
}

TEST_F(LanguageTableTest, ANameIsTheSameInEveryLanguageWhateverItLooksLike) {
    table_.take(QStringLiteral("en"));
    for (const std::string tool : {"vim", "mac.custom.notes.add", "můj nástroj", "Zrušeno."})
        EXPECT_EQ(translated("Byl požadován nástroj {nastroj}, který tento Mac neumí."_sentence(tool)),
                  "The tool " + tool + " was asked for, which this Mac does not have.");
}

TEST_F(LanguageTableTest, ATextWithAZeroByteStaysWhole) {
    table_.take(QStringLiteral("en"));
    const std::string text("Zrušeno.\0 konec", 16);
    EXPECT_EQ(translated(text), text);
    EXPECT_EQ(translated("Pracuje: {cim}"_sentence(text)), "Busy: " + text);
}

TEST_F(LanguageTableTest, QuotedInputStaysAsItIs) {
    table_.take(QStringLiteral("en"));
    using Reason = DecodeError::Reason;
    const auto words = [](Reason reason, const char* path) {
        return translated(DecodeError{reason, path, Sentence("objekt")}.popis());
    };
    for (const auto* path : {"", "a.b"})
        for (auto reason : {Reason::unknownWord, Reason::badText, Reason::unknownCase})
            EXPECT_NE(words(reason, path).find("“objekt”"), std::string::npos) << words(reason, path);
    EXPECT_NE(words(Reason::wrongType, "a.b").find("(object)"), std::string::npos);
}

TEST_F(LanguageTableTest, WordsFollowTheirNumberButInCzech) {
    const auto apps = [](int connected, int tools) {
        return translated("{prvni} · {druhe}"_sentence("{pocet} připojeno"_sentence(connected),
                                                       "{pocet} nástrojů"_sentence(tools)));
    };
    const auto folders = [](int count) { return translated("{pocet} povolených složek"_sentence(count)); };
    EXPECT_EQ(folders(1), "1 povolených složek");
    EXPECT_EQ(apps(1, 1), "1 připojeno · 1 nástrojů");
    table_.take(QStringLiteral("en"));
    EXPECT_EQ(folders(1), "1 allowed folder");
    EXPECT_EQ(folders(0), "0 allowed folders");
    EXPECT_EQ(folders(12), "12 allowed folders");
    EXPECT_EQ(apps(2, 1), "2 connected · 1 tool");
    table_.take(QStringLiteral("fr"));
    EXPECT_EQ(folders(0), "0 dossier autorisé");
    EXPECT_EQ(apps(1, 2), "1 connectée · 2 outils");
    table_.take(QStringLiteral("de"));
    EXPECT_EQ(folders(1), "1 erlaubter Ordner");
    EXPECT_EQ(apps(3, 1), "3 verbunden · 1 Tool");
    table_.take(QStringLiteral("es"));
    EXPECT_EQ(folders(2), "2 carpetas permitidas");
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
    EXPECT_EQ(translated("Oprávnění ke složce {slozka} se nepodařilo uložit: {duvod}"_sentence("{duvod} %1",
                                                                                               "{slozka}")),
              "The permission for the folder {duvod} %1 could not be saved: {slozka}");
}

} // namespace
} // namespace morvex
