#include "app/mail/MacSMTPServiceError.h"
#include "tests/app/mail/MailParts.h"

#include <gtest/gtest.h>

namespace morvex {
namespace {

class MacSMTPServiceTest : public testing::Test {
  protected:
    MacSMTPServiceTest() {
        changed = service.onChange([this] { ++changes; });
    }

    std::string add(MacSMTPAccount account, const std::string& password = "heslo") {
        auto saved = executor.run(service.ulozit(std::move(account), password));
        return *saved ? **saved : saved->error().popis().czech();
    }

    [[nodiscard]] std::string stored() const {
        return std::string(asText(parts.defaults.data("smtp.accounts.v1").value_or(Bytes())));
    }

    std::optional<std::string> password(const std::string& id) {
        return *executor.run(parts.keychain.read("smtp.password." + id));
    }

    /// The label of the account that is picked, or the words of the failure.
    [[nodiscard]] std::string picked(const std::optional<std::string>& name) const {
        const auto account = service.ucet(name);
        return account ? account->label : account.error().popis().czech();
    }

    [[nodiscard]] std::vector<std::string> labels() const {
        std::vector<std::string> all;
        for (const auto& account : service.accounts()) all.push_back(account.label);
        return all;
    }

    ManualExecutor executor;
    MailParts parts{executor};
    MacSMTPService service{parts.services()};
    int changes = 0;
    Connection changed;
};

using Texts = std::vector<std::string>;

TEST_F(MacSMTPServiceTest, AnAccountIsKeptTrimmedAndItsPasswordInTheKeychain) {
    const auto id = add({"", " Práce\n", " eva@example.com ", "", " imap.a\t", "smtp.a "});
    EXPECT_EQ(stored(), R"([{"id":")" + id + R"(","label":"Práce","address":"eva@example.com",)" +
                            R"("senderName":"","imapHost":"imap.a","smtpHost":"smtp.a"}])");
    EXPECT_EQ(password(id), "heslo");
    EXPECT_EQ(parts.defaults.text("smtp.defaultAccount.v1"), id);
    EXPECT_EQ(changes, 1);
    MacSMTPService again(parts.services());
    EXPECT_EQ(again.accounts(), service.accounts());
    EXPECT_EQ(again.defaultAccountID(), id);
}

TEST_F(MacSMTPServiceTest, ABlankPasswordKeepsTheOldOne) {
    const auto id = add(mailAccount());
    auto account = service.accounts().front();
    account.label = "Doma";
    EXPECT_EQ(add(account, ""), id);
    EXPECT_EQ(labels(), Texts{"Doma"});
    EXPECT_EQ(password(id), "heslo");
    EXPECT_EQ(add(account, "nové"), id);
    EXPECT_EQ(password(id), "nové");
}

TEST_F(MacSMTPServiceTest, APasswordThatTheVaultRefusesChangesNothing) {
    const auto id = add(mailAccount());
    parts.vault.refusals["add smtp.password." + id] = -25308;
    auto account = service.accounts().front();
    account.imapHost = "other.example.com";
    EXPECT_NE(add(account, "nové"), id);
    EXPECT_EQ(service.accounts().front().imapHost, "imap.example.com");
}

TEST_F(MacSMTPServiceTest, TheOnlyAccountIsTheDefaultAndADefaultThatGoesIsNone) {
    const auto first = add(mailAccount("A"));
    const auto second = add(mailAccount("B"));
    const auto third = add(mailAccount("C"));
    EXPECT_EQ(service.defaultAccountID(), first);
    service.nastavVychozi(second);
    service.nastavVychozi("nobody");
    EXPECT_EQ(service.defaultAccountID(), second);
    executor.run(service.odstranit(second));
    EXPECT_EQ(service.defaultAccountID(), std::nullopt);
    EXPECT_EQ(parts.defaults.text("smtp.defaultAccount.v1"), std::nullopt);
    executor.run(service.odstranit(first));
    EXPECT_EQ(service.defaultAccountID(), third) << "the only one that is left";
    EXPECT_EQ(password(first), std::nullopt);
    executor.run(service.odstranit("nobody"));
    EXPECT_EQ(labels(), Texts{"C"});
}

TEST_F(MacSMTPServiceTest, AnAccountIsPickedByIdLabelOrAddressWithoutDiacritics) {
    EXPECT_EQ(picked({}), "Není nastavený žádný přímý SMTP/IMAP účet.");
    const auto id = add(mailAccount("Práce", "eva@example.com"));
    EXPECT_EQ(picked({}), "Práce");
    EXPECT_EQ(picked(""), "Práce");
    add(mailAccount("Škola", "eva@skola.example"));
    EXPECT_EQ(picked({}), "Práce") << "the default";
    EXPECT_EQ(picked("skola"), "Škola");
    EXPECT_EQ(picked("EVA@SKOLA.example"), "Škola");
    EXPECT_EQ(picked(id), "Práce");
    EXPECT_EQ(picked("Doma"), "SMTP účet „Doma“ není připojený.");
}

TEST_F(MacSMTPServiceTest, WithSeveralAccountsAndNoDefaultOneMustBeChosen) {
    const auto first = add(mailAccount("A"));
    add(mailAccount("B"));
    add(mailAccount("C"));
    executor.run(service.odstranit(first));
    EXPECT_EQ(picked({}), "Vyber výchozí SMTP účet nebo řekni jeho název.");
    EXPECT_EQ(service.najdiUcet({}), std::nullopt);
}

TEST_F(MacSMTPServiceTest, AnIncompleteAccountIsInvisibleToNajdiUcet) {
    for (auto empty : {&MacSMTPAccount::address, &MacSMTPAccount::imapHost, &MacSMTPAccount::smtpHost}) {
        auto account = mailAccount("A");
        account.*empty = " ";
        EXPECT_FALSE(account.isComplete());
        const auto id = add(account);
        EXPECT_FALSE(service.hasCompleteAccount());
        EXPECT_EQ(service.najdiUcet("A"), std::nullopt);
        EXPECT_EQ(service.najdiUcet({}), std::nullopt);
        EXPECT_EQ(picked("A"), "A");
        executor.run(service.odstranit(id));
    }
    add(mailAccount("B"));
    EXPECT_TRUE(service.hasCompleteAccount());
    EXPECT_EQ(service.najdiUcet("b").value_or(MacSMTPAccount{}).label, "B");
}

TEST_F(MacSMTPServiceTest, OneBadRecordEmptiesTheList) {
    add(mailAccount("A"));
    const auto good = stored();
    for (const auto& damaged :
         {std::string("nonsense"), good.substr(0, good.size() - 1) + R"(,{"id":"x"}])"}) {
        parts.defaults.set("smtp.accounts.v1", toBytes(damaged));
        MacSMTPService again(parts.services());
        EXPECT_TRUE(again.accounts().empty()) << damaged;
        EXPECT_EQ(again.defaultAccountID(), std::nullopt);
    }
}

TEST_F(MacSMTPServiceTest, ADraftIsNeverKept) {
    EXPECT_EQ(MacSMTPService::koncept().error().popis().czech(),
              "Přímé SMTP neumí ukládat koncepty. Pro koncept použij účet v Apple Mailu.");
}

} // namespace
} // namespace morvex
