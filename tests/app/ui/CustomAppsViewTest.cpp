#include "shared/base/Bytes.h"
#include "tests/support/UiHarness.h"

#include <QAccessible>

#include <algorithm>

namespace morvex {
namespace {

class CustomAppsViewTest : public UiHarness {
  protected:
    /// What a screen reader is told to stand in a field.
    std::string valueOf(const std::string& field) {
        QString found;
        walk(window(), [&](QAccessibleInterface* node) {
            if (node->role() != QAccessible::EditableText ||
                node->text(QAccessible::Name).toStdString() != field)
                return;
            found = node->text(QAccessible::Value);
            if (auto* text = node->textInterface()) found += text->text(0, text->characterCount());
        });
        return found.toStdString();
    }
};

/// What the toolkit told of changes in fields.
QString toldOfChanges; // NOLINT(cppcoreguidelines-avoid-non-const-global-variables): a handler has no state

void noteChange(QAccessibleEvent* event) {
    if (event->type() == QAccessible::TextInserted)
        toldOfChanges += static_cast<QAccessibleTextInsertEvent*>(event)->textInserted();
    if (event->type() == QAccessible::TextUpdated)
        toldOfChanges += static_cast<QAccessibleTextUpdateEvent*>(event)->textInserted();
    if (event->type() == QAccessible::ValueChanged)
        toldOfChanges += static_cast<QAccessibleValueChangeEvent*>(event)->value().toString();
}

TEST_F(CustomAppsViewTest, ACustomAppIsAddedEditedSwitchedAndRemoved) {
    start();
    openUi();
    press("Spravovat: Vlastní aplikace");
    EXPECT_TRUE(reads("Žádné vlastní aplikace"));
    press("Přidat aplikaci");
    giveKeyboard(window());
    goTo("Uložit");
    give(Qt::Key_Return);
    EXPECT_TRUE(reads("Doplň název vlastní aplikace."));
    EXPECT_EQ(focused(), "Uložit");
    EXPECT_EQ(focusedDescription(), "Doplň název vlastní aplikace.") << "a screen reader is told too";
    type("Název", "Sklad");
    type("Adresa", "https://sklad.example/api/mcp");
    type("Token", "tajny");
    http.replies.push_back({200, R"({"result":{"tools":[{"name":"find"}]}})", {}});
    press("Uložit");
    ASSERT_EQ(features->customApps.service().apps().size(), 1U);
    EXPECT_EQ(features->customApps.service().apps()[0].endpoint, "https://sklad.example/api/mcp");
    EXPECT_TRUE(reads("Přidáno na Macu")) << "the list is there again";
    EXPECT_TRUE(reads("1 připojeno · 1 nástrojů"));
    press("Sklad");
    EXPECT_FALSE(features->customApps.service().apps()[0].enabled);
    press("Odebrat: Sklad");
    EXPECT_TRUE(reads("Odebrat aplikaci „Sklad“?"));
    EXPECT_EQ(features->customApps.service().apps().size(), 1U);
    press("Odebrat");
    EXPECT_TRUE(features->customApps.service().apps().empty());
    EXPECT_TRUE(reads("Žádné vlastní aplikace")) << "the list is there again";
}

TEST_F(CustomAppsViewTest, ARowSaysWhyAnAppIsNotThereAndAsksAgain) {
    startSecured();
    openUi();
    EXPECT_TRUE(ended(features->customApps.service().save({}, "Sklad", "https://sklad.example", "")));
    settle();
    press("Spravovat: Vlastní aplikace");
    EXPECT_TRUE(reads("Nepřipojeno: síť neodpovídá"));
    http.replies.push_back({200, R"({"result":{"tools":[{"name":"find"}]}})", {}});
    press("Zkusit znovu: Sklad");
    EXPECT_TRUE(reads("Připojeno · 1 nástrojů · 0 ms"));
    EXPECT_EQ(std::ranges::count(usableControls(), "Zkusit znovu: Sklad"), 0);
}

TEST_F(CustomAppsViewTest, ChangesOfToolsAreShownUntilAPersonHasLooked) {
    startSecured();
    openUi();
    const auto lend = [this](const char* description) {
        http.replies.push_back(
            {200,
             R"({"result":{"tools":[{"name":"find","description":")" + std::string(description) + R"("}]}})",
             {}});
    };
    lend("Hledá.");
    EXPECT_TRUE(ended(features->customApps.service().save({}, "Sklad", "https://sklad.example", "")));
    settle();
    lend("Maže\u200b.");
    features->customApps.service().refreshSoon();
    settle();
    press("Spravovat: Vlastní aplikace");
    EXPECT_TRUE(reads("Změněné nebo nové nástroje: 1"));
    press("Změny nástrojů: Sklad");
    EXPECT_TRUE(reads("Změněný nástroj: find"));
    EXPECT_TRUE(reads("Bylo: Hledá."));
    EXPECT_TRUE(reads("Je: Maže."));
    for (int asked = 0; asked < 2; ++asked) lend("Maže\\u200b.");
    press("Změny nástrojů nejdřív schválit");
    EXPECT_TRUE(features->customApps.service().apps()[0].holdsChanges);
    press("Beru na vědomí");
    EXPECT_TRUE(reads("Přidáno na Macu")) << "the list is there again";
    EXPECT_FALSE(mentions("Změněné nebo nové nástroje"));
    press("Změny nástrojů: Sklad");
    EXPECT_TRUE(reads("Od posledního pohledu se nic nezměnilo."));
}

TEST_F(CustomAppsViewTest, AnAppIsEditedFromWhatItHasAndKeepsItsTokenUnlessThereIsANewOne) {
    start();
    ASSERT_TRUE(
        ended(features->customApps.service().save({}, "Sklad", "https://sklad.example/api/mcp", "tajny")));
    const auto before = features->customApps.service().apps().at(0);
    openUi();
    press("Spravovat: Vlastní aplikace");
    press("Přidat aplikaci");
    EXPECT_TRUE(reads("Přidat vlastní aplikaci"));
    EXPECT_TRUE(reads("Přístupový token — volitelný"));
    EXPECT_EQ(typedInto("Název") + typedInto("Adresa") + typedInto("Token"), "");
    press("Zrušit");
    press("Upravit: Sklad");
    EXPECT_TRUE(reads("Upravit vlastní aplikaci"));
    EXPECT_TRUE(reads("Nový token — ponech prázdné beze změny"));
    EXPECT_TRUE(reads("Token se ukládá pouze do Keychainu tohoto Macu."));
    EXPECT_EQ(typedInto("Název"), "Sklad");
    EXPECT_EQ(typedInto("Adresa"), "https://sklad.example/api/mcp");
    EXPECT_EQ(typedInto("Token"), "");
    type("Název", "Velký sklad");
    press("Uložit");
    ASSERT_EQ(features->customApps.service().apps().size(), 1U) << "it is no new app";
    EXPECT_EQ(features->customApps.service().apps()[0].id, before.id);
    EXPECT_EQ(features->customApps.service().apps()[0].name, "Velký sklad");
    EXPECT_EQ(asText(vault.items[{"zz.bramwick.Morvex.mac", "custom.app." + before.id + ".token"}]), "tajny");
}

TEST_F(CustomAppsViewTest, WhileAnAppIsSavedItCannotBeSavedAgain) {
    start();
    openUi();
    press("Spravovat: Vlastní aplikace");
    press("Přidat aplikaci");
    const auto offersToSave = [this] { return std::ranges::count(usableControls(), "Uložit") == 1; };
    EXPECT_TRUE(offersToSave());
    ui->model().customApps()->save({}, {}, {}, {});
    EXPECT_FALSE(offersToSave());
    settle();
    EXPECT_TRUE(reads("Doplň název vlastní aplikace."));
    EXPECT_TRUE(offersToSave());
}

TEST_F(CustomAppsViewTest, ASaveThatEndsAfterItsEditorSaysNothingInTheNextOne) {
    start();
    openUi();
    press("Spravovat: Vlastní aplikace");
    press("Přidat aplikaci");
    auto& apps = *ui->model().customApps();
    const auto address = QStringLiteral("https://sklad.example/api/mcp");
    auto saveAndLeave = [&](const QString& id) {
        apps.save(id, QStringLiteral("Sklad"), address, QStringLiteral("tajny"));
        apps.startEditing();
        settle();
        EXPECT_TRUE(reads("Přidat vlastní aplikaci")) << "the next editor stays open";
        EXPECT_EQ(apps.error(), QString());
        EXPECT_FALSE(apps.saving());
    };
    saveAndLeave({});
    ASSERT_EQ(features->customApps.service().apps().size(), 1U);
    const auto id = features->customApps.service().apps()[0].id;
    vault.refusals["add custom.app." + id + ".token"] = -25293;
    saveAndLeave(QString::fromStdString(id));
}

TEST_F(CustomAppsViewTest, AScreenReaderIsToldOfTheTokensFieldButNotTheToken) {
    startSecured();
    openUi();
    giveKeyboard(window());
    press("Spravovat: Vlastní aplikace");
    press("Přidat aplikaci");
    toldOfChanges.clear();
    auto* before = QAccessible::installUpdateHandler(noteChange);
    goTo("Token");
    QTest::keyClick(window(), 'x');
    QTest::keyClick(window(), 'q');
    settle();
    QAccessible::installUpdateHandler(before);
    EXPECT_EQ(valueOf("Token"), "");
    EXPECT_FALSE(toldOfChanges.contains(u'x')) << toldOfChanges.toStdString();
    type("Token", "tajny");
    EXPECT_EQ(valueOf("Token"), "");
    EXPECT_EQ(typedInto("Token"), "tajny");
    type("Název", "Sklad");
    EXPECT_EQ(typedInto("Název"), "Sklad");
    type("Adresa", "https://sklad.example/api/mcp");
    press("Uložit");
    ASSERT_EQ(features->customApps.service().apps().size(), 1U);
    const auto account = "custom.app." + features->customApps.service().apps()[0].id + ".token";
    EXPECT_EQ(asText(vault.items[{"zz.bramwick.Morvex.mac", account}]), "tajny");
}

TEST_F(CustomAppsViewTest, AnAppOfThePhoneCanBeSwitchedButNotRemovedHere) {
    startSecured();
    openUi();
    phone.send({MacPayload::CustomApps{{{"a", "Počasí", "https://p.example/api/mcp", ""}}}}, "c");
    settle();
    press("Spravovat: Vlastní aplikace");
    EXPECT_TRUE(reads("Synchronizováno z iPhonu"));
    EXPECT_FALSE(mentions("Odebrat: Počasí"));
    EXPECT_FALSE(mentions("Upravit: Počasí"));
}

} // namespace
} // namespace morvex
