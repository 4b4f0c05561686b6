#include "platform/linux/evolution/EvolutionContactStore.h"
#include "tests/platform/linux/evolution/EvolutionTest.h"

#include <libebook/libebook.h>

#include <algorithm>
#include <cstddef>

namespace morvex {
namespace {

class EvolutionContactStoreTest : public EvolutionTest {
  protected:
    static inline const std::string personal = "system-address-book";
    static inline const std::string work = "work";

    void SetUp() override {
        EvolutionTest::SetUp();
        desktop->addSource(work, "Práce", "Address Book");
        store.emplace(*service);
    }

    ~EvolutionContactStoreTest() override { store.reset(); }

    static std::string vcard(const std::string& lines) {
        return "BEGIN:VCARD\r\nVERSION:3.0\r\n" + lines + "END:VCARD\r\n";
    }

    /// Puts contacts into a book as another program would.
    void put(const std::string& book, const std::vector<std::string>& cards) {
        const auto done = run(service->run(
            {}, [=](EvolutionDesktop& there, const TimeZone&, GCancellable* cancellable) -> Result<void> {
                return there.with<void>(
                    SourceKind::contacts, book, cancellable,
                    [&](EClient* client, GLibError& error) -> Result<void> {
                        GSList* contacts = nullptr;
                        for (const auto& card : cards)
                            contacts = g_slist_prepend(contacts, e_contact_new_from_vcard(card.c_str()));
                        contacts = g_slist_reverse(contacts);
                        e_book_client_add_contacts_sync(E_BOOK_CLIENT(client), contacts,
                                                        E_BOOK_OPERATION_FLAG_NONE, nullptr, cancellable,
                                                        error.slot());
                        g_slist_free_full(contacts, g_object_unref);
                        if (error) return fail(evolutionFailure(error));
                        return {};
                    });
            }));
        ASSERT_TRUE(done.has_value()) << done.error().popis();
    }

    std::vector<Contact> named(const std::string& name, std::size_t limit = 50) {
        auto found = run(store->named(name, limit, {}));
        EXPECT_TRUE(found.has_value()) << found.error().popis();
        return found.value_or(std::vector<Contact>());
    }

    std::vector<std::string> namesOf(const std::string& name) {
        std::vector<std::string> names;
        for (const auto& each : named(name))
            names.push_back(each.givenName + "|" + each.familyName + "|" + each.organization);
        return names;
    }

    std::optional<EvolutionContactStore> store;
};

using Names = std::vector<std::string>;

TEST_F(EvolutionContactStoreTest, APersonIsTakenWithEverything) {
    put(personal, {vcard("N:Žluťoučký;Řehoř;;;\r\nFN:Řehoř "
                         "Žluťoučký\r\nORG:Škola;Třída\r\nEMAIL;TYPE=WORK:r@skola.example\r\n"
                         "EMAIL;TYPE=HOME:r@doma.example\r\nTEL;TYPE=CELL:+420 123 456 789\r\nTEL:987\r\n")});
    const auto found = named("Řehoř");
    ASSERT_EQ(found.size(), 1U);
    const auto& contact = found.front();
    EXPECT_EQ(contact.givenName, "Řehoř");
    EXPECT_EQ(contact.familyName, "Žluťoučký");
    EXPECT_EQ(contact.organization, "Škola");
    EXPECT_EQ(contact.emails, (Names{"r@skola.example", "r@doma.example"}));
    EXPECT_EQ(contact.phones, (Names{"+420 123 456 789", "987"}));
    EXPECT_EQ(EventId::parse(contact.id)->source, personal);
}

TEST_F(EvolutionContactStoreTest, EveryWordIsInTheNameOrTheOrganization) {
    put(personal, {vcard("N:Žluťoučký;Řehoř;;;\r\nFN:Řehoř Žluťoučký\r\nORG:Škola\r\n"),
                   vcard("N:Kůň;Řehoř;;;\r\nFN:Řehoř Kůň\r\n"), vcard("FN:Pekárna\r\nORG:Pekárna U Lípy\r\n"),
                   vcard("N:O\"Hara;Jan\\\\;;;\r\nFN:Jan\\\\ O\"Hara\r\n")});
    const Names both{"Řehoř|Kůň|", "Řehoř|Žluťoučký|Škola"};
    EXPECT_EQ(namesOf("řehoř"), both);
    EXPECT_EQ(namesOf("REHOR"), both);
    EXPECT_EQ(namesOf("zlutoucky  rehor"), Names{both[1]});
    EXPECT_EQ(namesOf("rehor skola"), Names{both[1]});
    EXPECT_EQ(namesOf("lipy"), Names{"Pekárna||Pekárna U Lípy"});
    EXPECT_EQ(namesOf("o\"hara"), Names{"Jan\\|O\"Hara|"});
    EXPECT_EQ(namesOf("jan\\"), Names{"Jan\\|O\"Hara|"});
    for (const char* name : {"", " \n", "rehor nikdo", "\") (exists \"full_name", "*", "%", "_", "\\\"",
                             "rehor\") (contains \"full_name\" \"kun", "(", "#t"})
        EXPECT_EQ(namesOf(name), Names()) << name;
    EXPECT_EQ(namesOf(std::string(200'000, 'a')), Names());
    EXPECT_TRUE(named("rehor", 0).empty());
}

TEST_F(EvolutionContactStoreTest, ACompanyHasNoOtherName) {
    put(personal,
        {vcard("FN:Pekárna\r\nORG:Pekárna\r\nTEL:1\r\n"), vcard("FN:Lékárna U Anděla\r\nN:;;;;\r\n")});
    const auto bakery = named("pekarna");
    ASSERT_EQ(bakery.size(), 1U);
    EXPECT_EQ(bakery[0].givenName + bakery[0].familyName, "");
    EXPECT_EQ(bakery[0].organization, "Pekárna");
    EXPECT_EQ(namesOf("lekarna"), Names{"Lékárna U Anděla||"});
}

TEST_F(EvolutionContactStoreTest, OnePersonInTwoBooksIsOne) {
    put(personal, {vcard("N:Nová;Jana;;;\r\nFN:Jana Nová\r\nEMAIL:JANA@a.example\r\nTEL:+420 111\r\n"),
                   vcard("N:Malý;Petr;;;\r\nFN:Petr Malý\r\nTEL:00420 222-333\r\n"),
                   vcard("N:Jiná;Eva;;;\r\nFN:Eva Jiná\r\nEMAIL:e1@a.example\r\n")});
    put(work,
        {vcard(
             "N:Nová;Jana;;;\r\nFN:Jana Nová\r\nORG:Firma\r\nEMAIL:jana@a.example\r\nEMAIL:j@b.example\r\n"),
         vcard("N:Malý;Petr;;;\r\nFN:Petr Malý\r\nTEL:+420222333\r\n"),
         vcard("N:Jiná;Eva;;;\r\nFN:Eva Jiná\r\nEMAIL:e2@a.example\r\n")});
    const auto jana = named("jana");
    ASSERT_EQ(jana.size(), 1U);
    EXPECT_EQ(jana[0].organization, "Firma");
    EXPECT_EQ(jana[0].phones, Names{"+420 111"});
    ASSERT_EQ(jana[0].emails.size(), 2U);
    EXPECT_THAT(jana[0].emails, testing::Contains("j@b.example"));
    EXPECT_EQ(named("petr").size(), 1U);
    EXPECT_EQ(named("eva").size(), 2U);
    EXPECT_EQ(namesOf("a"),
              (Names{"Eva|Jiná|", "Eva|Jiná|", "Jana|Nová|" + jana[0].organization, "Petr|Malý|"}));
}

TEST_F(EvolutionContactStoreTest, TwoOfOneBookStayTwo) {
    const auto card = vcard("N:Nová;Jana;;;\r\nFN:Jana Nová\r\nEMAIL:jana@a.example\r\n");
    put(personal, {card, card});
    EXPECT_EQ(named("jana").size(), 2U);
}

TEST_F(EvolutionContactStoreTest, AListOfContactsIsNobody) {
    put(personal, {vcard("FN:Parta\r\nN:Parta;;;;\r\nX-EVOLUTION-LIST:TRUE\r\nEMAIL:a@b.example\r\n"),
                   vcard("FN:Parta Hic\r\nN:Hic;Parta;;;\r\n")});
    EXPECT_EQ(namesOf("parta"), Names{"Parta|Hic|"});
}

TEST_F(EvolutionContactStoreTest, ABookThatFailsDoesNotHideTheOthers) {
    std::ofstream(desktop->sources() / "broken.source")
        << "[Data Source]\nDisplayName=Rozbitá\nEnabled=true\nParent=local-stub\n\n[Address Book]\n"
           "BackendName=nothing\n";
    put(personal, {vcard("N:Nová;Jana;;;\r\nFN:Jana Nová\r\n")});
    const auto hasIt = [&] {
        const auto done = run(service->run({}, [](EvolutionDesktop& there, const TimeZone&, GCancellable*) {
            return Result<std::size_t>(there.sources(SourceKind::contacts).size());
        }));
        return done.value_or(0) == 3;
    };
    ASSERT_TRUE(eventually(hasIt));
    EXPECT_EQ(named("jana").size(), 1U);
}

TEST_F(EvolutionContactStoreTest, OfAWholeBookOnlySomeAreRead) {
    std::vector<std::string> cards;
    for (int each = 0; each < 510; ++each)
        cards.push_back(
            vcard("N:X;A" + std::to_string(each) + ";;;\r\nFN:A" + std::to_string(each) + " X\r\n"));
    put(personal, cards);
    EXPECT_EQ(named("x", 1000).size(), 500U);
    EXPECT_EQ(named("x", 7).size(), 7U);
}

} // namespace
} // namespace morvex
