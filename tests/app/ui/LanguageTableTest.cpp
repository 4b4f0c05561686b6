#include "app/ui/LanguageTable.h"

#include "app/ui/Localized.h"
#include "platform/memory/MemoryDefaults.h"

#include <QCoreApplication>
#include <gtest/gtest.h>

namespace morvex {
namespace {

class LanguageTableTest : public testing::Test {
  protected:
    ~LanguageTableTest() override { QCoreApplication::removeTranslator(&table_); }

    void takeFromPhone(const std::string& code) {
        defaults_.set("app.language.receivedFromPhone", true);
        defaults_.set("app.language", code);
        table_.update();
        QCoreApplication::installTranslator(&table_);
    }

    static std::string translated(const std::string& sentence) { return localized(sentence).toStdString(); }

    MemoryDefaults defaults_;
    LanguageTable table_{defaults_};
};

TEST_F(LanguageTableTest, IsCzechUntilThePhoneHasSentALanguage) {
    EXPECT_EQ(table_.code(), QStringLiteral("cs"));
    defaults_.set("app.language", std::string("en"));
    EXPECT_FALSE(table_.update()) << "a language alone does not count";
    defaults_.set("app.language.receivedFromPhone", true);
    EXPECT_TRUE(table_.update());
    EXPECT_EQ(table_.code(), QStringLiteral("en"));
    EXPECT_FALSE(table_.update());
    defaults_.remove("app.language");
    EXPECT_TRUE(table_.update());
    EXPECT_EQ(table_.code(), QStringLiteral("cs"));
}

TEST_F(LanguageTableTest, ALanguageWithoutATableStaysCzech) {
    takeFromPhone("xx");
    EXPECT_EQ(translated("Otevřít nastavení"), "Otevřít nastavení");
}

TEST_F(LanguageTableTest, SentencesWithValuesAreFoundByTheirForm) {
    takeFromPhone("en");
    const std::pair<const char*, const char*> sentences[] = {
        {"Otevřít nastavení", "Open Settings"},
        {"Připojuji… (2. pokus)", "Connecting… (attempt 2)"},
        {"Telefon spí (12 min)", "Phone is asleep (12 min)"},
        {"Pracuje: codex", "Busy: codex"},
        {"Párování neplatí — Zrušeno.", "Pairing is not valid — Cancelled."},
        {"Stav se nepodařilo odeslat: Zrušeno.", "The status could not be sent: Cancelled."},
        {"Věta, kterou nikdo nezná: 5", "Věta, kterou nikdo nezná: 5"},
        {"", ""},
    };
    for (const auto& [czech, english] : sentences) EXPECT_EQ(translated(czech), english);
}

} // namespace
} // namespace morvex
