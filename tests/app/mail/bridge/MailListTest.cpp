#include "tests/app/mail/bridge/MailFixture.h"

#include <algorithm>
#include <iterator>

namespace morvex {
namespace {

/// Two accounts: the inbox of the first one has its Czech name beside an alias that looks empty.
constexpr std::string_view twoAccounts = R"({"accounts": [
  {"name": "Práce", "emailAddresses": ["jana@firma.example"], "mailboxes": [
    {"name": "INBOX", "messages": []},
    {"name": "Doručená pošta", "messages": [
      {"id": 11, "subject": "Smlouva k podpisu", "sender": "Řehoř <rehor@firma.example>", "content": "Dobrý den.",
       "dateReceived": "pondělí 3. března 2025", "readStatus": false},
      {"id": 12, "subject": "Oběd", "sender": "Kantýna <jidlo@firma.example>", "content": "Dnes smlouva s kuchařem.",
       "dateReceived": "úterý 4. března 2025", "readStatus": true},
      {"id": 13, "subject": "Faktura", "sender": "Řehoř <rehor@firma.example>", "content": "V příloze.",
       "dateReceived": "středa 5. března 2025", "readStatus": false}]}]},
  {"name": "Domov", "emailAddresses": ["jana@domov.example", "Jana.N@domov.example"], "mailboxes": [
    {"name": "Archiv", "messages": [{"id": 20, "subject": "Stará smlouva", "sender": "a@b.example", "content": "x",
       "dateReceived": "d", "readStatus": false}]},
    {"name": "INBOX", "messages": [
      {"id": 21, "subject": "SMLOUVA na byt", "sender": "Realitka <r@byty.example>", "content": "Posílám.",
       "dateReceived": "čtvrtek 6. března 2025", "readStatus": true}]}]}]})";

/// A Mail with one account, "A", whose inbox has these messages.
std::string inboxOf(std::string_view messages) {
    return R"({"accounts": [{"name": "A", "emailAddresses": [], "mailboxes": [{"name": "INBOX", "messages": [)" +
           std::string(messages) + "]}]}]}";
}

/// Reading a property of this fails.
constexpr std::string_view refused = R"({"error": "Can't get object.", "number": -1728})";

class MailListTest : public MailFixture {
  protected:
    enum class Which { unread, all };

    Result<std::vector<MailZprava>> list(const std::string& wanted, const std::string& account = "",
                                         Which which = Which::all, std::int64_t limit = 10) {
        return wait(bridge.zpravy(wanted, account, which == Which::unread, limit));
    }

    using Ids = std::vector<std::string>;

    static Ids ids(const Result<std::vector<MailZprava>>& messages) {
        Ids all;
        std::ranges::transform(messages.value(), std::back_inserter(all), &MailZprava::id);
        return all;
    }

    [[nodiscard]] std::vector<std::int64_t> contentsRead() const {
        return boost::json::value_to<std::vector<std::int64_t>>(journal().at("contentsRead"));
    }
};

TEST_F(MailListTest, GivesEveryFieldOfAMessage) {
    mailIs(twoAccounts);
    const auto messages = list("podpis").value();
    ASSERT_EQ(messages.size(), 1U);
    EXPECT_EQ(messages.front(), (MailZprava{.id = "11",
                                            .ucet = "Práce",
                                            .slozka = "Doručená pošta",
                                            .od = "Řehoř <rehor@firma.example>",
                                            .predmet = "Smlouva k podpisu",
                                            .datum = "pondělí 3. března 2025",
                                            .precteno = false,
                                            .ukazka = "Dobrý den."}));
}

TEST_F(MailListTest, GoesOverTheInboxesOfAllAccountsInTheOrderOfMail) {
    mailIs(twoAccounts);
    EXPECT_EQ(ids(list("")), (Ids{"11", "12", "13", "21"}));
}

TEST_F(MailListTest, GivesUnreadMessagesAloneWhereOnlyTheyAreWanted) {
    mailIs(twoAccounts);
    EXPECT_EQ(ids(list("", "", Which::unread)), (Ids{"11", "13"}));
}

TEST_F(MailListTest, TheCzechInboxComesFirst) {
    mailIs(twoAccounts);
    EXPECT_EQ(list("", "Práce").value().front().slozka, "Doručená pošta");
    EXPECT_EQ(list("", "Domov").value().front().slozka, "INBOX");
}

TEST_F(MailListTest, AnAccountIsFoundWithoutDiacriticsOrByOneOfItsAddresses) {
    mailIs(twoAccounts);
    EXPECT_EQ(ids(list("", " prace ")), (Ids{"11", "12", "13"}));
    EXPECT_EQ(ids(list("", "jana.n@DOMOV.example")), Ids{"21"});
}

TEST_F(MailListTest, AnUnknownAccountIsToldWithTheAccountsThereAre) {
    mailIs(twoAccounts);
    EXPECT_EQ(sentence(list("", "Škola")), R"(Error: Účet "Škola" neznám. Mám tyhle: Práce, Domov.)");
}

TEST_F(MailListTest, AnAccountWithoutAddressesIsFoundByItsName) {
    mailIs(R"({"accounts": [{"name": "A", "emailAddresses": null, "mailboxes": []},
                            {"name": "B", "emailAddresses": ["b@b.example"], "mailboxes": []}]})");
    EXPECT_EQ(ids(list("", "b@b.example")), Ids{});
}

TEST_F(MailListTest, SearchesSubjectAndSenderWithoutDiacriticsButNotTheContent) {
    mailIs(twoAccounts);
    EXPECT_EQ(ids(list("smlouvá")), (Ids{"11", "21"}));
    EXPECT_EQ(ids(list("rehor")), (Ids{"11", "13"}));
}

TEST_F(MailListTest, ReadsTheContentOfMatchesAlone) {
    mailIs(twoAccounts);
    ASSERT_EQ(ids(list("faktura")), Ids{"13"});
    EXPECT_EQ(contentsRead(), std::vector<std::int64_t>{13});
}

TEST_F(MailListTest, EndsAtTheLimitAndReadsNothingBehindIt) {
    mailIs(twoAccounts);
    EXPECT_EQ(ids(list("", "", Which::all, 2)), (Ids{"11", "12"}));
    EXPECT_EQ(contentsRead(), (std::vector<std::int64_t>{11, 12}));
    EXPECT_EQ(ids(list("", "", Which::all, 0)), Ids{});
    EXPECT_EQ(contentsRead(), std::vector<std::int64_t>{});
}

TEST_F(MailListTest, AnAccountWithoutAnInboxOrWithARefusingOneIsSkipped) {
    mailIs(R"({"accounts": [
        {"name": "A", "emailAddresses": [], "mailboxes": [{"name": "Archiv", "messages": []}]},
        {"name": "B", "emailAddresses": [], "mailboxes": )" +
           std::string(refused) + R"(},
        {"name": "C", "emailAddresses": [], "mailboxes": [{"name": "Inbox", "messages": )" +
           std::string(refused) + R"(}]},
        {"name": "D", "emailAddresses": [], "mailboxes": [{"name": "Inbox", "messages": [
            {"id": 4, "subject": "s", "sender": "o", "content": "c", "dateReceived": "d", "readStatus": true}]}]}]})");
    EXPECT_EQ(ids(list("")), Ids{"4"});
}

TEST_F(MailListTest, WhatMailDoesNotTellOfAMessageHasItsDefault) {
    const std::string no(refused);
    mailIs(inboxOf(R"({"id": 5, "subject": )" + no + R"(, "sender": )" + no + R"(, "content": )" + no +
                   R"(, "dateReceived": )" + no + R"(, "readStatus": )" + no + "}"));
    EXPECT_EQ(
        list("").value(),
        (std::vector{MailZprava{
            .id = "5", .ucet = "A", .slozka = "INBOX", .predmet = "(bez předmětu)", .precteno = true}}));
}

TEST_F(MailListTest, AMessageWithoutContentHasAnEmptyExcerpt) {
    mailIs(inboxOf(R"({"id": 5, "subject": "", "sender": "o", "content": null, "dateReceived": "d",
                       "readStatus": true})"));
    EXPECT_EQ(list("").value().front().ukazka, "");
    EXPECT_EQ(list("").value().front().predmet, "(bez předmětu)");
}

TEST_F(MailListTest, TheExcerptHas300Characters) {
    mailIs(inboxOf(R"({"id": 5, "subject": "s", "sender": "o", "content": ")" + std::string(299, 'a') +
                   R"(bc", "dateReceived": "d", "readStatus": true})"));
    EXPECT_EQ(list("").value().front().ukazka, std::string(299, 'a') + "b");
}

TEST_F(MailListTest, AnExcerptThatEndsWithinACharacterIsReadable) {
    mailIs(inboxOf(R"({"id": 5, "subject": "s", "sender": "o", "content": ")" + std::string(299, 'a') +
                   R"(😀", "dateReceived": "d", "readStatus": true})"));
    EXPECT_EQ(list("").value().front().ukazka, std::string(299, 'a') + "\uFFFD");
}

} // namespace
} // namespace morvex
