#include "tests/app/organizer/OrganizerFixture.h"

#include <memory>

namespace morvex {
namespace {

using Texts = std::vector<std::string>;

class MacCalendarServiceTest : public OrganizerFixture {
  protected:
    void load() { EXPECT_TRUE(executor.run(calendar.refresh())); }

    [[nodiscard]] Texts enabled() const {
        Texts ids;
        for (const auto& each : calendar.enabledCalendars()) ids.push_back(each.id);
        return ids;
    }

    [[nodiscard]] Texts optionIDs() const {
        Texts ids;
        for (const auto& each : calendar.options()) ids.push_back(each.id);
        return ids;
    }

    /// A service as after another start.
    [[nodiscard]] std::unique_ptr<MacCalendarService> anew() {
        return std::make_unique<MacCalendarService>(MacCalendarService::Services{calendars, defaults, clock});
    }

    void choose(const std::string& id) {
        EXPECT_TRUE(executor.run(calendar.setWriteCalendar(id)).value().has_value());
    }

    [[nodiscard]] std::string error() const { return calendar.accessError().value_or(Sentence()).czech(); }

    int changes = 0;
    int rowChanges = 0;
    Connection changed = calendar.onChange([this] { ++changes; });
    Connection rowsChanged = calendar.onRowsChange([this] { ++rowChanges; });
};

TEST_F(MacCalendarServiceTest, EachErrorHasItsWords) {
    using Case = MacCalendarService::Error::Case;

    struct Row {
        Case value;
        const char* words;
    };

    for (const auto& row : {
             Row{Case::noAccess,
                 "Morvex nemá plný přístup ke kalendářům na tomto Macu. Povol ho v okně Morvex "
                 "nebo v Nastavení systému → Soukromí a zabezpečení → Kalendáře."},
             Row{Case::noWritableCalendar, "Na Macu není kalendář, do kterého lze zapisovat."},
             Row{Case::notFound, "Událost už v kalendáři nemohu najít."},
             Row{Case::readOnly, "Vybraný kalendář je pouze pro čtení."},
             Row{Case::calendarNotEnabled, "Tento kalendář není v Morvex povolený."},
             Row{Case::noValidTime, "Chybí název nebo platný čas události."},
         })
        EXPECT_EQ(MacCalendarService::Error{row.value}.popis(), row.words);
}

TEST_F(MacCalendarServiceTest, EachStatusHasItsWords) {
    struct Row {
        DataAccess access;
        const char* words;
    };

    for (const auto& row : {
             Row{DataAccess::notDetermined, "Kalendář čeká na povolení"},
             Row{DataAccess::restricted, "Přístup ke kalendáři je systémem omezený"},
             Row{DataAccess::denied, "Přístup ke kalendáři byl zamítnut"},
             Row{DataAccess::full, "Kalendář je připojený"},
             Row{DataAccess::writeOnly, "Kalendář je povolený pouze pro zápis"},
             Row{DataAccess::unknown, "Stav kalendáře není známý"},
         }) {
        calendars.given = row.access;
        EXPECT_EQ(calendar.statusText(), row.words);
    }
}

TEST_F(MacCalendarServiceTest, TheOptionsAreSortedByAccountAndNameWithoutRegardToCase) {
    calendars.has = {{"4", "b", "Účet", true},
                     {"3", "Č", "ucet", true},
                     {"2", "c", "UCET", true},
                     {"1", "C", "ucet", true},
                     {"5", "a", "alfa", true}};
    load();
    EXPECT_EQ(optionIDs(), (Texts{"5", "1", "2", "3", "4"}));
    EXPECT_EQ(rowChanges, 1);
    load();
    EXPECT_EQ(rowChanges, 1) << "nothing is other than before";
}

TEST_F(MacCalendarServiceTest, WithoutAChoiceAllCalendarsAreEnabled) {
    load();
    EXPECT_EQ(enabled(), (Texts{"home", "feast", "work"}));
    EXPECT_EQ(defaults.writes, 0);
}

TEST_F(MacCalendarServiceTest, TheFirstUntickKeepsTheRest) {
    load();
    enable("home", false);
    EXPECT_EQ(enabled(), (Texts{"feast", "work"}));
    EXPECT_EQ(defaults.boolean("calendar.selectionConfigured"), true);
    EXPECT_EQ(defaults.texts("calendar.selectedIDs"), (Texts{"feast", "work"}));
    EXPECT_EQ(defaults.get("calendar.writeID"), std::nullopt);
    EXPECT_EQ(defaults.writes, 1) << "together";
    EXPECT_EQ(changes, 1);
}

TEST_F(MacCalendarServiceTest, AfterAChoiceANewCalendarIsOff) {
    load();
    enable("home", false);
    calendars.has.push_back({"new", "Nový", "Doma", true});
    load();
    EXPECT_EQ(enabled(), (Texts{"feast", "work"}));
    enable("new", true);
    EXPECT_TRUE(calendar.isEnabled("new"));
    EXPECT_EQ(changes, 2);
}

TEST_F(MacCalendarServiceTest, AFirstChoiceNeedsToKnowTheCalendars) {
    const auto chosen = executor.run(calendar.setCalendarEnabled("home", false)).value();
    EXPECT_FALSE(chosen.has_value()) << "it would take all others away";
    EXPECT_EQ(defaults.writes, 0);
}

TEST_F(MacCalendarServiceTest, AChoiceOutlivesTheProgram) {
    load();
    enable("home", false);
    choose("work");
    const auto next = anew();
    EXPECT_TRUE(executor.run(next->refresh()));
    EXPECT_FALSE(next->isEnabled("home"));
    EXPECT_TRUE(next->isEnabled("work"));
    EXPECT_EQ(next->writeCalendarID(), "work");
}

TEST_F(MacCalendarServiceTest, AStoredChoiceThatCannotBeReadCountsAsMissing) {
    defaults.set("calendar.selectionConfigured", std::string("true"));
    defaults.set("calendar.writeID", true);
    defaults.set("calendar.selectedIDs", std::vector<DefaultsItem>{std::string("home"), Bytes{1}});
    const auto next = anew();
    EXPECT_TRUE(executor.run(next->refresh()));
    EXPECT_EQ(next->enabledCalendars().size(), 3U);
    EXPECT_EQ(next->writeCalendarID(), std::nullopt);
    defaults.set("calendar.selectionConfigured", true);
    const auto chosen = anew();
    EXPECT_TRUE(executor.run(chosen->refresh()));
    EXPECT_EQ(chosen->enabledCalendars().size(), 0U) << "a list with one wrong element is none";
}

TEST_F(MacCalendarServiceTest, UntickingClearsTheWriteCalendar) {
    load();
    choose("work");
    EXPECT_EQ(defaults.text("calendar.writeID"), "work");
    enable("home", false);
    EXPECT_EQ(calendar.writeCalendarID(), "work");
    enable("work", false);
    EXPECT_EQ(calendar.writeCalendarID(), std::nullopt);
    EXPECT_EQ(defaults.get("calendar.writeID"), std::nullopt);
}

TEST_F(MacCalendarServiceTest, OnlyAnEnabledWritableCalendarTakesNewEvents) {
    load();
    enable("home", false);
    const int before = changes;
    for (const auto& id : {std::optional<std::string>(), std::optional<std::string>("home"),
                           std::optional<std::string>("feast"), std::optional<std::string>("gone"),
                           std::optional<std::string>("")})
        EXPECT_TRUE(executor.run(calendar.setWriteCalendar(id)).value().has_value());
    EXPECT_EQ(calendar.writeCalendarID(), std::nullopt);
    EXPECT_EQ(changes, before);
    choose("work");
    EXPECT_EQ(calendar.writeCalendarID(), "work");
    EXPECT_EQ(changes, before + 1);
}

TEST_F(MacCalendarServiceTest, AnAbsentWriteCalendarDoesNothingAndAutomaticallyClearsIt) {
    load();
    choose("work");
    EXPECT_TRUE(executor.run(calendar.setWriteCalendar(std::nullopt)).value().has_value());
    EXPECT_EQ(calendar.writeCalendarID(), "work");
    calendar.clearWriteCalendar();
    EXPECT_EQ(calendar.writeCalendarID(), std::nullopt);
    EXPECT_EQ(defaults.get("calendar.writeID"), std::nullopt);
    EXPECT_EQ(changes, 2);
}

TEST_F(MacCalendarServiceTest, WhatLetsThePhoneDoMoreCountsOnceItIsSaved) {
    load();
    enable("home", false);
    defaults.refusal = TextError("Disk je plný.");
    const auto enabling = executor.run(calendar.setCalendarEnabled("home", true)).value();
    ASSERT_FALSE(enabling.has_value());
    EXPECT_EQ(enabling.error().popis(), "Disk je plný.");
    EXPECT_FALSE(calendar.isEnabled("home"));
    const auto choosing = executor.run(calendar.setWriteCalendar("work")).value();
    ASSERT_FALSE(choosing.has_value());
    EXPECT_EQ(choosing.error().popis(), "Disk je plný.");
    EXPECT_EQ(calendar.writeCalendarID(), std::nullopt);
    EXPECT_EQ(changes, 1);
    enable("work", false);
    EXPECT_FALSE(calendar.isEnabled("work")) << "what lets it do less counts at once";
}

TEST_F(MacCalendarServiceTest, WhatIsGoneIsForgotten) {
    load();
    enable("feast", false);
    choose("work");
    const auto all = std::exchange(calendars.has, {calendars.has[1]});
    load();
    EXPECT_EQ(defaults.texts("calendar.selectedIDs"), Texts{"home"});
    EXPECT_EQ(calendar.writeCalendarID(), std::nullopt);
    EXPECT_EQ(defaults.get("calendar.writeID"), std::nullopt);
    calendars.has = all;
    load();
    EXPECT_EQ(enabled(), Texts{"home"}) << "what comes back is off";
}

TEST_F(MacCalendarServiceTest, ALoadThatChangesNothingSavesNothing) {
    load();
    enable("feast", false);
    choose("work");
    const int before = defaults.writes;
    load();
    EXPECT_EQ(defaults.writes, before);
}

TEST_F(MacCalendarServiceTest, AWriteCalendarThatIsGoneIsForgottenWithoutASelectionToo) {
    load();
    choose("work");
    std::erase_if(calendars.has, [](const CalendarInfo& each) { return each.id == "work"; });
    load();
    EXPECT_EQ(calendar.writeCalendarID(), std::nullopt);
    EXPECT_EQ(defaults.get("calendar.writeID"), std::nullopt);
}

TEST_F(MacCalendarServiceTest, CalendarsThatCannotBeReadAreNotForgotten) {
    load();
    enable("feast", false);
    choose("work");
    calendars.failure = TextError("Služba spadla.");
    load();
    EXPECT_EQ(error(), "Služba spadla.");
    EXPECT_EQ(enabled(), (Texts{"home", "work"}));
    calendars.failure.reset();
    for (const auto access : {DataAccess::denied, DataAccess::writeOnly, DataAccess::unknown}) {
        calendars.given = access;
        load();
        EXPECT_TRUE(calendar.options().empty());
        EXPECT_EQ(error(), "") << "a new look ends it";
    }
    calendars.given = DataAccess::full;
    load();
    EXPECT_EQ(enabled(), (Texts{"home", "work"}));
    EXPECT_EQ(calendar.writeCalendarID(), "work");
}

TEST_F(MacCalendarServiceTest, AStoreThatIsLostWhileItIsReadForgetsNothing) {
    load();
    enable("feast", false);
    calendars.hangs = true;
    calendars.has.clear();
    executor.start(calendar.refresh());
    executor.runUntilIdle();
    calendars.given = DataAccess::restricted;
    calendars.goOn();
    executor.runUntilIdle();
    EXPECT_TRUE(calendar.options().empty());
    EXPECT_EQ(defaults.texts("calendar.selectedIDs"), (Texts{"home", "work"}));
}

TEST_F(MacCalendarServiceTest, AnOlderReadDoesNotReplaceANewerOne) {
    calendars.hangs = true;
    executor.start(calendar.refresh());
    executor.runUntilIdle();
    calendars.hangs = false;
    calendars.has.push_back({"new", "Nový", "Doma", true});
    load();
    calendars.goOn();
    executor.runUntilIdle();
    EXPECT_TRUE(calendar.isEnabled("new"));
}

TEST_F(MacCalendarServiceTest, ARequestAsksWhateverWasSaidBefore) {
    calendars.given = DataAccess::denied;
    EXPECT_TRUE(executor.run(calendar.requestAccess()));
    EXPECT_EQ(calendars.requests, 1);
    calendars.givenWhenAsked = DataAccess::full;
    EXPECT_TRUE(executor.run(calendar.requestAccess()));
    EXPECT_EQ(enabled().size(), 3U);
}

TEST_F(MacCalendarServiceTest, ALookOpensNoQuestionToThePerson) {
    calendars.given = DataAccess::notDetermined;
    calendars.givenWhenAsked = DataAccess::full;
    calendars.asksPerson = true;
    load();
    EXPECT_EQ(calendars.requests, 0);
    EXPECT_FALSE(calendar.isUsable());
    calendars.asksPerson = false;
    load();
    EXPECT_EQ(calendars.requests, 1);
    EXPECT_TRUE(calendar.isUsable());
    load();
    EXPECT_EQ(calendars.requests, 1);
}

TEST_F(MacCalendarServiceTest, AServiceOutOfReachIsLookedForAgainAndSaysWhy) {
    calendars.given = DataAccess::restricted;
    calendars.requestFailure = TextError("Není sběrnice.");
    load();
    load();
    EXPECT_EQ(calendars.requests, 2);
    EXPECT_EQ(error(), "Není sběrnice.");
    calendars.requestFailure.reset();
    calendars.givenWhenAsked = DataAccess::full;
    load();
    EXPECT_EQ(error(), "");
    EXPECT_TRUE(calendar.isUsable());
}

TEST_F(MacCalendarServiceTest, AServiceThatIsThereAgainHasNoTrouble) {
    calendars.given = DataAccess::restricted;
    calendars.requestFailure = TextError("Není sběrnice.");
    load();
    calendars.given = DataAccess::full;
    rowChanges = 0;
    calendars.changed.tell();
    EXPECT_EQ(error(), "");
    EXPECT_GT(rowChanges, 0);
}

TEST_F(MacCalendarServiceTest, ARequestThatNobodyAnswersEnds) {
    calendars.requestHangs = true;
    executor.start(calendar.requestAccess());
    executor.runUntilIdle();
    clock.advance(std::chrono::seconds(14));
    executor.runUntilIdle();
    EXPECT_EQ(error(), "");
    clock.advance(std::chrono::seconds(1));
    executor.runUntilIdle();
    EXPECT_EQ(error(), "Systémová služba neodpověděla včas.");
}

TEST_F(MacCalendarServiceTest, APersonHasAllTheTimeForAnAnswer) {
    calendars.given = DataAccess::notDetermined;
    calendars.givenWhenAsked = DataAccess::full;
    calendars.asksPerson = true;
    calendars.requestHangs = true;
    executor.start(calendar.requestAccess());
    executor.runUntilIdle();
    clock.advance(std::chrono::hours(1));
    executor.runUntilIdle();
    EXPECT_FALSE(calendar.isUsable());
    calendars.goOn();
    executor.runUntilIdle();
    EXPECT_TRUE(calendar.isUsable());
}

} // namespace
} // namespace morvex
