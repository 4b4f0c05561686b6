#include "app/mail/bridge/MacMailAccounts.h"

#include "app/mail/bridge/MailScripts.h"
#include "platform/memory/ManualExecutor.h"
#include "platform/memory/MemoryDefaults.h"
#include "tests/app/mail/bridge/ScriptedMail.h"

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <utility>

namespace morvex {
namespace {

using Names = ScriptedMail::Names;

class MacMailAccountsTest : public testing::Test {
  protected:
    MacMailAccountsTest() { restart(); }

    void restart() {
        accounts = std::make_unique<MacMailAccounts>(MacMailAccounts::Services{defaults, mail.bridge});
        connection = accounts->onChange([this] { ++changes; });
    }

    void load(const Names& names) {
        mail.has(names);
        load();
    }

    void load() { EXPECT_TRUE(executor.run(accounts->obnovit())); }

    void set(const std::string& name, bool allowed) {
        EXPECT_TRUE(executor.run(accounts->nastav(name, allowed)).value());
    }

    /// The account to use; "-" for none, or the sentence of the refusal.
    [[nodiscard]] std::string toUse(std::string_view name = {}) const {
        const auto found = accounts->ucetProOdeslani(name);
        return found ? found->value_or("-") : found.error().popis().czech();
    }

    [[nodiscard]] std::string problem() const {
        return accounts->problem() ? accounts->problem()->czech() : "";
    }

    using Default = std::optional<std::string>;

    ManualExecutor executor;
    MemoryDefaults defaults;
    ScriptedMail mail{executor};
    std::unique_ptr<MacMailAccounts> accounts;
    int changes = 0;
    Connection connection;
};

TEST_F(MacMailAccountsTest, AsksMailForTheNamesOfItsAccounts) {
    load({"Práce", "Domov"});
    EXPECT_EQ(accounts->available(), (Names{"Práce", "Domov"}));
    EXPECT_EQ(problem(), "");
    ASSERT_EQ(mail.programs.programs.size(), 1U);
    EXPECT_EQ(mail.programs.programs.front().args.back(), scriptRun::program(mailScripts::accounts, {}));
}

TEST_F(MacMailAccountsTest, WithNothingChosenAllAccountsAreAllowed) {
    load({"B", "A"});
    EXPECT_EQ(accounts->povolene(), (Names{"B", "A"}));
    EXPECT_EQ(defaults.boolean("mail.selectionConfigured"), false);
    EXPECT_EQ(defaults.texts("mail.selectedAccounts"), Names{});
}

TEST_F(MacMailAccountsTest, TheFirstUntickingCopiesAllOthers) {
    load({"C", "B", "A"});
    set("B", false);
    EXPECT_EQ(accounts->povolene(), (Names{"C", "A"}));
    EXPECT_FALSE(accounts->isAllowed("B"));
    EXPECT_TRUE(accounts->isAllowed("A"));
    EXPECT_EQ(defaults.boolean("mail.selectionConfigured"), true);
    EXPECT_EQ(defaults.texts("mail.selectedAccounts"), (Names{"A", "C"}));
}

TEST_F(MacMailAccountsTest, TheFirstTickingCopiesAllOthersToo) {
    load({"B", "A"});
    set("A", true);
    EXPECT_EQ(accounts->povolene(), (Names{"B", "A"}));
    EXPECT_EQ(defaults.boolean("mail.selectionConfigured"), true);
}

TEST_F(MacMailAccountsTest, AChoiceOutlivesTheProgram) {
    load({"A", "B", "C"});
    set("B", false);
    set("C", false);
    set("C", true);
    accounts->nastavVychozi("C");
    restart();
    EXPECT_EQ(accounts->povolene(), Names{});
    load({"A", "B", "C"});
    EXPECT_EQ(accounts->povolene(), (Names{"A", "C"}));
    EXPECT_EQ(toUse(), "C");
}

TEST_F(MacMailAccountsTest, AfterAChoiceANewAccountIsOff) {
    load({"A", "B"});
    set("B", false);
    load({"A", "B", "N"});
    EXPECT_EQ(accounts->povolene(), Names{"A"});
}

TEST_F(MacMailAccountsTest, AnAccountThatComesBackStaysOff) {
    load({"A", "B", "C"});
    set("C", false);
    load({"A", "C"});
    EXPECT_EQ(defaults.texts("mail.selectedAccounts"), Names{"A"});
    load({"A", "B", "C"});
    EXPECT_EQ(accounts->povolene(), Names{"A"});
}

TEST_F(MacMailAccountsTest, ADamagedChoiceAllowsNothingOnceThereWasOne) {
    defaults.set("mail.selectionConfigured", true);
    defaults.set("mail.selectedAccounts", "text");
    restart();
    load({"A"});
    EXPECT_EQ(accounts->povolene(), Names{});
}

TEST_F(MacMailAccountsTest, MailWithoutAccountsSaysSo) {
    load({"A"});
    load({});
    EXPECT_EQ(accounts->available(), Names{});
    EXPECT_EQ(problem(), "V Apple Mailu není nastavený žádný účet.");
    EXPECT_EQ(accounts->defaultAccount(), Default{});
    load({"A"});
    EXPECT_EQ(problem(), "");
}

TEST_F(MacMailAccountsTest, AFailedLoadKeepsTheListAndTellsWhy) {
    load({"A", "B"});
    mail.failsWith("execution error: Not authorized (-1743)");
    load();
    EXPECT_EQ(accounts->povolene(), (Names{"A", "B"}));
    EXPECT_EQ(problem(), MailChyba{MailChyba::Nepovoleno{}}.popis().czech());
    EXPECT_EQ(changes, 2);
}

TEST_F(MacMailAccountsTest, WhereThereIsNoMailTheProblemSaysSo) {
    std::filesystem::remove(mail.path);
    load();
    EXPECT_EQ(problem(), "Apple Mail existuje jen v systému macOS.");
    EXPECT_EQ(accounts->povolene(), Names{});
    EXPECT_TRUE(mail.programs.programs.empty());
    EXPECT_EQ(changes, 1);
    EXPECT_EQ(defaults.writes, 0);
}

TEST_F(MacMailAccountsTest, EachLoadAndEachChoiceIsTold) {
    load({"A", "B"});
    EXPECT_EQ(changes, 1);
    set("A", false);
    EXPECT_EQ(changes, 2);
    set("A", true);
    EXPECT_EQ(changes, 3);
    accounts->nastavVychozi("A");
    EXPECT_EQ(changes, 4);
}

TEST_F(MacMailAccountsTest, OfSeveralLoadsTheLastOneCounts) {
    mail.answer.reset();
    executor.start(accounts->obnovit());
    executor.start(accounts->obnovit());
    executor.runUntilIdle();
    ASSERT_EQ(mail.programs.children.size(), 2U);
    const auto end = [this](std::size_t child, const Names& names) {
        auto& listener = *mail.programs.children.at(child)->listener;
        listener.output(ScriptedMail::listOf(names));
        listener.exited(0);
        listener.ended();
        executor.runUntilIdle();
    };
    end(1, {"new"});
    end(0, {"old"});
    EXPECT_EQ(accounts->available(), Names{"new"});
    EXPECT_EQ(changes, 1);
}

TEST_F(MacMailAccountsTest, AStopEndsALoad) {
    mail.answer.reset();
    std::stop_source stop;
    executor.start(accounts->obnovit(stop.get_token()));
    executor.runUntilIdle();
    stop.request_stop();
    auto& child = *mail.programs.children.at(0);
    EXPECT_EQ(child.signals, std::vector<ChildSignal>{ChildSignal::terminate});
    child.listener->exited(0);
    child.listener->ended();
    executor.runUntilIdle();
}

TEST_F(MacMailAccountsTest, TheOnlyAccountBecomesTheDefault) {
    load({"A"});
    EXPECT_EQ(accounts->defaultAccount(), "A");
    EXPECT_EQ(defaults.text("mail.defaultAccount"), "A");
}

TEST_F(MacMailAccountsTest, AmongSeveralAccountsNoneBecomesTheDefault) {
    load({"A", "B"});
    EXPECT_EQ(accounts->defaultAccount(), Default{});
    EXPECT_EQ(toUse(), "-");
}

TEST_F(MacMailAccountsTest, TheOnlyAllowedAccountIsUsedEvenWithoutADefault) {
    load({"A", "B"});
    set("B", false);
    EXPECT_EQ(accounts->defaultAccount(), Default{});
    EXPECT_EQ(toUse(), "A");
}

TEST_F(MacMailAccountsTest, TheDefaultAccountIsUsedWhereNoneIsNamed) {
    load({"A", "B"});
    accounts->nastavVychozi("B");
    EXPECT_EQ(defaults.text("mail.defaultAccount"), "B");
    EXPECT_EQ(toUse(), "B");
    EXPECT_EQ(toUse(""), "B");
    EXPECT_EQ(toUse("a"), "A");
}

TEST_F(MacMailAccountsTest, ADefaultThatIsNotAllowedIsNotUsed) {
    load({"A", "B", "C"});
    set("C", false);
    accounts->nastavVychozi("C");
    EXPECT_EQ(toUse(), "-");
    load();
    EXPECT_EQ(accounts->defaultAccount(), Default{});
}

TEST_F(MacMailAccountsTest, NoDefaultIsNoKey) {
    load({"A", "B"});
    accounts->nastavVychozi("B");
    accounts->nastavVychozi({});
    EXPECT_EQ(defaults.get("mail.defaultAccount"), std::nullopt);
    accounts->nastavVychozi("B");
    accounts->nastavVychozi("");
    EXPECT_EQ(defaults.get("mail.defaultAccount"), std::nullopt);
}

TEST_F(MacMailAccountsTest, SwitchingOffTheDefaultAccountClearsIt) {
    load({"A", "B", "C"});
    accounts->nastavVychozi("B");
    set("A", false);
    EXPECT_EQ(toUse(), "B");
    set("A", true);
    set("B", false);
    EXPECT_EQ(accounts->defaultAccount(), Default{});
    EXPECT_EQ(defaults.get("mail.defaultAccount"), std::nullopt);
    EXPECT_EQ(toUse(), "-");
}

TEST_F(MacMailAccountsTest, ADefaultAccountThatMailNoLongerHasIsCleared) {
    load({"A", "B", "C"});
    accounts->nastavVychozi("C");
    load({"A", "B"});
    EXPECT_EQ(accounts->defaultAccount(), Default{});
}

TEST_F(MacMailAccountsTest, ANameIsComparedWithoutCaseAndDiacritics) {
    load({"Práce", "Domov"});
    EXPECT_EQ(toUse("PRACE"), "Práce");
    EXPECT_EQ(toUse("domóv"), "Domov");
}

TEST_F(MacMailAccountsTest, AnAccountThatIsOffOrUnknownIsNotAllowed) {
    load({"Práce", "Domov"});
    set("Domov", false);
    EXPECT_EQ(toUse("domov"), "Poštovní účet „domov“ není v Morvex povolený.");
    EXPECT_EQ(toUse("Škola"), "Poštovní účet „Škola“ není v Morvex povolený.");
    EXPECT_TRUE(accounts->ucetProOdeslani("Škola").error().as<MacMailAccounts::Error>());
}

TEST_F(MacMailAccountsTest, AnAccountThatCannotBeSavedAsAllowedStaysOff) {
    load({"A", "B"});
    set("B", false);
    defaults.refusal = TextError("The disk is full.");
    EXPECT_FALSE(executor.run(accounts->nastav("B", true)).value());
    EXPECT_EQ(accounts->povolene(), Names{"A"});
}

} // namespace
} // namespace morvex
