#include "tests/app/organizer/OrganizerFixture.h"

namespace morvex {
namespace {

using namespace std::chrono_literals;

class ContactsToolsTest : public OrganizerFixture {
  protected:
    std::string find(const boost::json::object& arguments) { return call("mac.contacts.find", arguments); }
};

TEST_F(ContactsToolsTest, EachStatusHasItsWords) {
    struct Row {
        DataAccess access;
        const char* words;
    };

    for (const auto& row : {
             Row{DataAccess::notDetermined, "Kontakty čekají na povolení"},
             Row{DataAccess::restricted, "Přístup ke kontaktům je systémem omezený"},
             Row{DataAccess::denied, "Přístup ke kontaktům byl zamítnut"},
             Row{DataAccess::full, "Kontakty jsou připojené"},
             Row{DataAccess::writeOnly, "Stav kontaktů není známý"},
             Row{DataAccess::unknown, "Stav kontaktů není známý"},
         }) {
        contacts.given = row.access;
        EXPECT_EQ(contactService.statusText(), row.words);
    }
}

TEST_F(ContactsToolsTest, TellsAddressesAndNumbers) {
    contacts.found = {{"1", "Jan", "Novák", "Firma", {"jan@example.com", "j@example.org"}, {"+420 123"}},
                      {"2", "", "Nová", "", {}, {}}};
    EXPECT_EQ(find({{"query", " jan "}}),
              R"({"contacts":[{"id":"1","name":"Jan Novák","emails":["jan@example.com","j@example.org"],)"
              R"("phones":["+420 123"]},{"id":"2","name":"Nová","emails":[],"phones":[]}]})");
    EXPECT_EQ(contacts.asked.front().first, "jan");
}

TEST_F(ContactsToolsTest, AContactWithoutAPersonalNameAppearsUnderItsCompany) {
    struct Row {
        Contact contact;
        const char* name;
    };

    for (const auto& row : {
             Row{{"", "Jan", "Novák", "Firma", {}, {}}, "Jan Novák"},
             Row{{"", "Jan", "", "Firma", {}, {}}, "Jan"},
             Row{{"", "", "Novák", "Firma", {}, {}}, "Novák"},
             Row{{"", "", "", "Firma", {}, {}}, "Firma"},
             Row{{"", "", "", "", {}, {}}, ""},
         })
        EXPECT_EQ(MacContactsService::nameOf(row.contact), row.name);
}

TEST_F(ContactsToolsTest, ALimitIsFiveAtFirstAndAtMostTwoHundred) {
    struct Row {
        boost::json::value limit;
        std::size_t asked;
    };

    for (const auto& row : {Row{nullptr, 5}, Row{"7", 5}, Row{7, 7}, Row{2.9, 2}, Row{200, 200},
                            Row{201, 200}, Row{1e15, 200}}) {
        find({{"query", "x"}, {"limit", row.limit}});
        EXPECT_EQ(contacts.asked.back().second, row.asked);
    }
}

TEST_F(ContactsToolsTest, ALimitBelowOneFindsNone) {
    contacts.found = {{"1", "Jan", "", "", {}, {}}};
    for (const auto limit : {0, -1, -1'000'000})
        EXPECT_EQ(find({{"query", "x"}, {"limit", limit}}), R"({"contacts":[]})");
    EXPECT_TRUE(ok);
    EXPECT_TRUE(contacts.asked.empty());
}

TEST_F(ContactsToolsTest, NoMoreThanTheLimitAreTold) {
    contacts.found.assign(3, {"1", "Jan", "", "", {}, {}});
    const auto answer = parseJson(find({{"query", "x"}, {"limit", 2}})).value();
    EXPECT_EQ(answer.as_object().at("contacts").as_array().size(), 2U);
}

TEST_F(ContactsToolsTest, AnEmptyQueryIsPresentAndFindsNone) {
    for (const char* query : {"", " ", "\n\t"}) EXPECT_EQ(find({{"query", query}}), R"({"contacts":[]})");
    EXPECT_TRUE(ok);
    EXPECT_TRUE(contacts.asked.empty());
    contacts.given = DataAccess::denied;
    EXPECT_EQ(find({{"query", ""}}), refusal("Morvex nemá přístup ke kontaktům tohoto Macu."))
        << "after the access";
    EXPECT_EQ(find({}), refusal("Chybí jméno kontaktu.")) << "before it";
    EXPECT_EQ(find({{"query", 1}}), refusal("Chybí jméno kontaktu."));
}

TEST_F(ContactsToolsTest, AnythingButFullAccessIsNone) {
    const auto words = refusal("Morvex nemá přístup ke kontaktům tohoto Macu.");
    for (const auto access : {DataAccess::denied, DataAccess::writeOnly, DataAccess::unknown}) {
        contacts.given = access;
        EXPECT_EQ(find({{"query", "x"}}), words);
    }
    EXPECT_EQ(contacts.operations + contacts.requests, 0);
    contacts.given = DataAccess::notDetermined;
    contacts.requestFailure = TextError("Není sběrnice.");
    EXPECT_EQ(find({{"query", "x"}}), words);
    EXPECT_EQ(contactService.accessError(), Sentence("Není sběrnice."));
    contacts.requestFailure.reset();
    contacts.givenWhenAsked = DataAccess::full;
    EXPECT_EQ(find({{"query", "x"}}), R"({"contacts":[]})");
    EXPECT_EQ(contactService.accessError(), std::nullopt);
}

TEST_F(ContactsToolsTest, AFailureKeepsItsWordsAndACallHasFifteenSeconds) {
    contacts.failure = TextError("Adresář neodpovídá.");
    EXPECT_EQ(find({{"query", "x"}}), refusal("Adresář neodpovídá."));
    contacts.hangs = true;
    EXPECT_EQ(after(15s, "mac.contacts.find", {{"query", "x"}}),
              refusal("Systémová služba neodpověděla včas."));
}

TEST_F(ContactsToolsTest, HostileTextsStayReadable) {
    contacts.found = {{"\xff", "a\r\nb", "\xc3", "", {"\x80@x"}, {std::string("\0", 1)}}};
    EXPECT_TRUE(parseJson(find({{"query", "x"}})).has_value());
}

TEST_F(ContactsToolsTest, ViewsAskForAccessAndHearOfIt) {
    int changes = 0;
    const auto changed = contactService.onRowsChange([&changes] { ++changes; });
    contacts.given = DataAccess::denied;
    contacts.requestFailure = TextError("Zamítnuto.");
    EXPECT_TRUE(executor.run(contactService.requestAccess()));
    EXPECT_EQ(contactService.accessError(), Sentence("Zamítnuto."));
    EXPECT_EQ(changes, 1);
    contacts.changed.tell();
    EXPECT_EQ(changes, 2);
    EXPECT_TRUE(executor.run(contactService.refresh()));
    EXPECT_EQ(contacts.requests, 1) << "a denial stands";
    EXPECT_EQ(contactService.accessError(), std::nullopt);
}

} // namespace
} // namespace morvex
