#include "tests/app/organizer/OrganizerFixture.h"

namespace morvex {
namespace {

using Texts = std::vector<std::string>;
using namespace std::chrono_literals;

class RemindersToolsTest : public OrganizerFixture {
  protected:
    RemindersToolsTest() {
        reminders.held = {{"r2", "Mléko", false, "Nákup", std::nullopt},
                          {"r1", "Daně", true, "Ostatní", at(31, 22)},
                          {"r3", "Auto", false, "Ostatní", at(1, 8)}};
        places.found = FoundPlace{"Lípa", 50.5, -14.25};
    }

    /// Creates a reminder "Mléko" with these arguments too.
    std::string create(boost::json::object arguments) {
        arguments["title"] = "Mléko";
        return call("mac.reminders.create", arguments);
    }

    const std::string done = R"({"created":true,"id":"new","title":"Mléko"})";
};

TEST_F(RemindersToolsTest, EachErrorHasItsWords) {
    using Case = PersonalServiceError::Case;

    struct Row {
        Case value;
        const char* words;
    };

    for (const auto& row : {
             Row{Case::remindersAccess, "Morvex nemá přístup k připomínkám tohoto Macu."},
             Row{Case::contactsAccess, "Morvex nemá přístup ke kontaktům tohoto Macu."},
             Row{Case::noReminderList, "Na Macu není dostupný seznam připomínek pro zápis."},
             Row{Case::reminderNotFound, "Připomínku jsem nenašel."},
             Row{Case::locationNotFound, "Místo pro polohovou připomínku se nepodařilo najít."},
             Row{Case::noAnswer, "Systémová služba neodpověděla včas."},
         })
        EXPECT_EQ(PersonalServiceError{row.value}.popis(), row.words);
}

TEST_F(RemindersToolsTest, EachStatusHasItsWords) {
    struct Row {
        DataAccess access;
        const char* words;
    };

    for (const auto& row : {
             Row{DataAccess::notDetermined, "Připomínky čekají na povolení"},
             Row{DataAccess::restricted, "Přístup k připomínkám je systémem omezený"},
             Row{DataAccess::denied, "Přístup k připomínkám byl zamítnut"},
             Row{DataAccess::full, "Připomínky jsou připojené"},
             Row{DataAccess::writeOnly, "Připomínky jsou povolené pouze pro zápis"},
             Row{DataAccess::unknown, "Stav připomínek není známý"},
         }) {
        reminders.given = row.access;
        EXPECT_EQ(reminderService.statusText(), row.words);
    }
}

TEST_F(RemindersToolsTest, AreOfferedWithTheSwitchAlone) {
    reminders.given = DataAccess::denied;
    EXPECT_EQ(offered(), (Texts{"mac.reminders.list", "mac.reminders.create", "mac.reminders.complete",
                                "mac.contacts.find"}));
    isOn = false;
    EXPECT_TRUE(offered().empty());
}

TEST_F(RemindersToolsTest, AreListedInTheOrderOfTheStore) {
    const std::string open = R"({"id":"r2","title":"Mléko","completed":false,"list":"Nákup"},)";
    const std::string last =
        R"({"id":"r3","title":"Auto","completed":false,"list":"Ostatní","due":"2026-03-01T08:00:00Z"}]})";
    for (const auto& arguments : std::vector<boost::json::object>{
             {}, {{"include_completed", false}}, {{"include_completed", "true"}}, {{"include_completed", 1}}})
        EXPECT_EQ(call("mac.reminders.list", arguments), R"({"reminders":[)" + open + last);
    EXPECT_EQ(
        call("mac.reminders.list", {{"include_completed", true}}),
        R"({"reminders":[)" + open +
            R"({"id":"r1","title":"Daně","completed":true,"list":"Ostatní","due":"2026-03-31T22:00:00Z"},)" +
            last);
}

TEST_F(RemindersToolsTest, ADueDateOfAnyYearIsListed) {
    reminders.held = {{"r", "x", false, "", Date::max()}};
    EXPECT_TRUE(call("mac.reminders.list", {}).contains(R"("due":"9999-12-31T23:59:59Z")"));
}

TEST_F(RemindersToolsTest, ATitleIsAllThatIsNeeded) {
    EXPECT_EQ(create({}), done);
    ASSERT_EQ(reminders.created.size(), 1U);
    const auto& reminder = reminders.created.front();
    EXPECT_EQ(reminder.title, "Mléko");
    EXPECT_EQ(reminder.due, std::nullopt);
    EXPECT_FALSE(reminder.placeAlarm);
    EXPECT_EQ(reminder.list, "rest");
    EXPECT_TRUE(places.asked.empty());
    reminders.given = DataAccess::denied;
    EXPECT_EQ(call("mac.reminders.create", {}), refusal("Chybí název připomínky."));
    EXPECT_EQ(call("mac.reminders.create", {{"title", ""}}), refusal("Chybí název připomínky."));
    EXPECT_EQ(call("mac.reminders.create", {{"title", 1}}), refusal("Chybí název připomínky."));
}

TEST_F(RemindersToolsTest, ADueDateIsReadLikeEveryDate) {
    create({{"due", "2026-03-14T10:00:00+01:00"}});
    EXPECT_EQ(reminders.created.back().due, at(14, 9));
    create({{"due", "2026-03-29"}});
    EXPECT_EQ(reminders.created.back().due, at(28, 23)) << "the local midnight that begins the day";
    create({{"due", "zítra"}});
    EXPECT_EQ(reminders.created.back().due, std::nullopt) << "what does not parse counts as absent";
}

TEST_F(RemindersToolsTest, APlaceMakesAnAlarmBesideTheTime) {
    EXPECT_EQ(create({{"location", " U lípy 1 "}, {"due", "2026-03-14"}}), done);
    EXPECT_EQ(places.asked, Texts{"U lípy 1"});
    const auto& reminder = reminders.created.back();
    ASSERT_TRUE(reminder.placeAlarm);
    EXPECT_EQ(reminder.placeAlarm->place, (FoundPlace{"Lípa", 50.5, -14.25}));
    EXPECT_EQ(reminder.placeAlarm->radius, 200.0);
    EXPECT_TRUE(reminder.due);
    places.found->name.clear();
    create({{"location", " U lípy 1 "}});
    EXPECT_EQ(reminders.created.back().placeAlarm->place.name, "U lípy 1") << "a place without a name";
}

TEST_F(RemindersToolsTest, OnlyTheWordLeaveMeansOnLeaving) {
    for (const char* proximity : {"leave", "arrive", "Leave", "", "x"}) {
        create({{"location", "x"}, {"proximity", proximity}});
        EXPECT_EQ(reminders.created.back().placeAlarm->onArrival, proximity != std::string("leave"));
    }
    create({{"location", "x"}, {"proximity", 1}});
    EXPECT_TRUE(reminders.created.back().placeAlarm->onArrival);
    create({{"location", "x"}});
    EXPECT_TRUE(reminders.created.back().placeAlarm->onArrival);
}

TEST_F(RemindersToolsTest, ANamedPlaceStandsForItsAddress) {
    namedPlaces = {{"doma", "Lipová 3, Brno"}, {"nikde", "  "}};
    create({{"location", "doma"}});
    EXPECT_EQ(places.asked, Texts{"Lipová 3, Brno"});
    EXPECT_EQ(create({{"location", "nikde"}}), done);
    EXPECT_FALSE(reminders.created.back().placeAlarm) << "a place whose address is blank gives no alarm";
    EXPECT_EQ(create({{"location", " \n"}}), done);
    EXPECT_FALSE(reminders.created.back().placeAlarm);
    EXPECT_EQ(places.asked.size(), 1U);
}

TEST_F(RemindersToolsTest, APlaceThatIsNotFoundMakesNoReminder) {
    const auto words = refusal("Místo pro polohovou připomínku se nepodařilo najít.");
    places.found.reset();
    EXPECT_EQ(create({{"location", "x"}}), words);
    places.failure = TextError("síť neodpovídá");
    EXPECT_EQ(create({{"location", "x"}}), words);
    reminders.has.clear();
    EXPECT_EQ(create({{"location", "x"}}), words) << "before the list";
    EXPECT_TRUE(reminders.created.empty());
    places.failure.reset();
    reminders.given = DataAccess::denied;
    places.asked.clear();
    EXPECT_EQ(create({{"location", "x"}}), refusal("Morvex nemá přístup k připomínkám tohoto Macu."));
    EXPECT_TRUE(places.asked.empty()) << "after the access";
}

TEST_F(RemindersToolsTest, ANamedListIsComparedWithoutCaseAndDiacritics) {
    create({{"list", "NAKUP"}});
    EXPECT_EQ(reminders.created.back().list, "shop");
}

TEST_F(RemindersToolsTest, AListThatDoesNotExistFallsBackToTheUsualOneUnlikeForCalendars) {
    for (const char* name : {"Škola", "", " "}) {
        EXPECT_EQ(create({{"list", name}}), done);
        EXPECT_EQ(reminders.created.back().list, "rest");
    }
    reminders.has[0].writable = false;
    create({{"list", "Nákup"}});
    EXPECT_EQ(reminders.created.back().list, "rest") << "it cannot be written to";
}

TEST_F(RemindersToolsTest, WithoutAUsualListThereIsNoReminder) {
    const auto words = refusal("Na Macu není dostupný seznam připomínek pro zápis.");
    reminders.usual.reset();
    EXPECT_EQ(create({}), words);
    EXPECT_EQ(create({{"list", "Škola"}}), words);
    EXPECT_EQ(create({{"list", "Nákup"}}), done);
    for (const char* usual : {"gone", "rest"}) {
        reminders.usual = usual;
        reminders.has[1].writable = false;
        EXPECT_EQ(create({}), words);
    }
}

TEST_F(RemindersToolsTest, CompletesAReminderAlsoOneThatIsCompleted) {
    const std::string completed = R"({"completed":true,"id":"r3","title":"Auto"})";
    EXPECT_EQ(call("mac.reminders.complete", {{"id", "r3"}}), completed);
    EXPECT_TRUE(reminders.held[2].completed);
    EXPECT_EQ(call("mac.reminders.complete", {{"id", "r3"}}), completed);
    EXPECT_TRUE(ok);
}

TEST_F(RemindersToolsTest, AnIdThatIsPresentIsLookedForAlsoWhenItIsEmpty) {
    for (const char* id : {"", "x", "e1"})
        EXPECT_EQ(call("mac.reminders.complete", {{"id", id}}), refusal("Připomínku jsem nenašel."));
    EXPECT_EQ(call("mac.reminders.complete", {}), refusal("Chybí identifikátor připomínky."));
    EXPECT_EQ(call("mac.reminders.complete", {{"id", true}}), refusal("Chybí identifikátor připomínky."));
}

TEST_F(RemindersToolsTest, AnythingButFullAccessIsNone) {
    const auto words = refusal("Morvex nemá přístup k připomínkám tohoto Macu.");
    for (const auto access : {DataAccess::denied, DataAccess::writeOnly, DataAccess::unknown}) {
        reminders.given = access;
        EXPECT_EQ(call("mac.reminders.list", {}), words);
        EXPECT_EQ(create({}), words);
        EXPECT_EQ(call("mac.reminders.complete", {{"id", "r3"}}), words);
    }
    EXPECT_EQ(reminders.operations + reminders.requests, 0);
    for (const auto access : {DataAccess::notDetermined, DataAccess::restricted}) {
        reminders.given = access;
        reminders.givenWhenAsked.reset();
        reminders.requestFailure = TextError("Není sběrnice.");
        EXPECT_EQ(call("mac.reminders.list", {}), words);
        EXPECT_EQ(reminderService.accessError(), Sentence("Není sběrnice."));
        reminders.requestFailure.reset();
        reminders.givenWhenAsked = DataAccess::full;
        EXPECT_EQ(create({}), done);
        EXPECT_EQ(reminderService.accessError(), std::nullopt);
    }
}

TEST_F(RemindersToolsTest, AFailureOfTheStoreKeepsItsWords) {
    reminders.failure = TextError("Server úkolů neodpovídá.");
    EXPECT_EQ(call("mac.reminders.list", {}), refusal("Server úkolů neodpovídá."));
    EXPECT_EQ(create({}), refusal("Server úkolů neodpovídá."));
    EXPECT_EQ(call("mac.reminders.complete", {{"id", "r3"}}), refusal("Server úkolů neodpovídá."));
}

TEST_F(RemindersToolsTest, ACallHasFifteenSecondsInAll) {
    const auto words = refusal("Systémová služba neodpověděla včas.");
    places.hangs = true;
    EXPECT_EQ(after(15s, "mac.reminders.create", {{"title", "x"}, {"location", "y"}}), words);
    reminders.hangs = true;
    EXPECT_EQ(after(15s, "mac.reminders.list", {}), words);
    EXPECT_EQ(after(15s, "mac.reminders.complete", {{"id", "r3"}}), words);
    EXPECT_EQ(after(14s, "mac.reminders.list", {}), R"({"error":"zrušeno"})") << "abandoned then";
    EXPECT_FALSE(reminders.held[2].completed);
    EXPECT_EQ(clock.waiting(), 0U);
}

TEST_F(RemindersToolsTest, HostileTextsStayReadable) {
    reminders.held = {{"r\xff", "a\r\nSUMMARY:b\xc3", false, std::string("\0", 1), std::nullopt}};
    EXPECT_TRUE(parseJson(call("mac.reminders.list", {})).has_value());
    EXPECT_EQ(call("mac.reminders.create", {{"title", "x\r\nSUMMARY:y"}}),
              R"({"created":true,"id":"new","title":"x\r\nSUMMARY:y"})");
}

TEST_F(RemindersToolsTest, ViewsAskForAccessAndHearOfIt) {
    int changes = 0;
    const auto changed = reminderService.onRowsChange([&changes] { ++changes; });
    reminders.given = DataAccess::denied;
    reminders.requestFailure = TextError("Zamítnuto.");
    EXPECT_TRUE(executor.run(reminderService.requestAccess()));
    EXPECT_EQ(reminderService.accessError(), Sentence("Zamítnuto."));
    EXPECT_EQ(changes, 1);
    reminders.changed.tell();
    EXPECT_EQ(changes, 2);
    EXPECT_TRUE(executor.run(reminderService.refresh()));
    EXPECT_EQ(reminders.requests, 1) << "a denial stands";
    EXPECT_EQ(reminderService.accessError(), std::nullopt);
}

} // namespace
} // namespace morvex
