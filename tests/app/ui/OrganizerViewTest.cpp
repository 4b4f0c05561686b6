#include "tests/support/UiHarness.h"

#include <algorithm>

namespace morvex {
namespace {

/// The rows of calendars, reminders and contacts, and the sheet of the calendars.
class OrganizerViewTest : public UiHarness {
  protected:
    OrganizerViewTest() {
        calendars.has = {{"doma", "Domov", "Tento počítač", true},
                         {"prace", "Práce", "firma.example", true},
                         {"svatky", "Svátky", "firma.example", false}};
    }

    MacCalendarService& service() { return features->organizer.calendar(); }

    int number(const std::string& control) {
        return static_cast<int>(std::ranges::count(usableControls(), control));
    }
};

TEST_F(OrganizerViewTest, CalendarsAreAllowedOneByOne) {
    startSecured();
    openUi();
    EXPECT_TRUE(reads("3 kalendářů vybráno"));
    press("Vybrat: Kalendář");
    EXPECT_TRUE(reads("Morvex uvidí pouze označené kalendáře."));
    EXPECT_TRUE(reads("Jen pro čtení"));
    EXPECT_TRUE(isOn("Práce, firma.example"));
    press("Práce, firma.example");
    EXPECT_FALSE(isOn("Práce, firma.example"));
    EXPECT_TRUE(isOn("Domov, Tento počítač")) << "the first choice keeps the others";
    EXPECT_FALSE(service().isEnabled("prace"));
    press("Hotovo");
    EXPECT_TRUE(reads("2 kalendářů vybráno"));
    press("Vybrat: Kalendář");
    press("Práce, firma.example");
    EXPECT_TRUE(service().isEnabled("prace"));
}

TEST_F(OrganizerViewTest, OneOfTheWritableCalendarsTakesNewEventsOrNone) {
    startSecured();
    openUi();
    auto& model = *ui->model().calendars();
    const auto names = [&] {
        std::vector<std::string> all;
        for (const auto& writer : model.writers())
            all.push_back(writer.toMap()[QStringLiteral("name")].toString().toStdString());
        return all;
    };
    EXPECT_EQ(names(), (std::vector<std::string>{"Automaticky", "Práce", "Domov"}));
    EXPECT_EQ(model.writerIndex(), 0);
    model.setWriter(QStringLiteral("doma"));
    settle();
    EXPECT_EQ(service().writeCalendarID(), "doma");
    EXPECT_EQ(model.writerIndex(), 2);
    model.setWriter({});
    settle();
    EXPECT_EQ(service().writeCalendarID(), std::nullopt);
    EXPECT_EQ(model.writerIndex(), 0);
}

TEST_F(OrganizerViewTest, CalendarsOfOneNameAreToldApartByTheirAccounts) {
    calendars.has[1].name = "Domov";
    startSecured();
    openUi();
    const auto writers = ui->model().calendars()->writers();
    ASSERT_EQ(writers.size(), 3);
    EXPECT_EQ(writers[1].toMap()[QStringLiteral("name")].toString(), QStringLiteral("Domov · firma.example"));
}

TEST_F(OrganizerViewTest, TheRowOfTheRemindersSaysWhoAlertsAtPlaces) {
    startSecured();
    openUi();
    EXPECT_TRUE(reads("Připomínky jsou připojené. Na místo upozorní zařízení, která seznam sdílejí, "
                      "tento počítač ne."));
    EXPECT_EQ(number("Povolit: Připomínky"), 0);
}

TEST_F(OrganizerViewTest, TheRowOfTheRemindersIsShortWhereTheComputerItselfAlerts) {
    reminders.rings = true;
    startSecured();
    openUi();
    EXPECT_TRUE(reads("Připomínky jsou připojené"));
}

TEST_F(OrganizerViewTest, WithoutAccessEachRowSaysWhyAndAsksOnAPress) {
    for (auto give : {+[](FakeDesktop& to) -> DataAccess& { return to.calendars.given; },
                      +[](FakeDesktop& to) -> DataAccess& { return to.reminders.given; },
                      +[](FakeDesktop& to) -> DataAccess& { return to.contacts.given; }})
        give(*this) = DataAccess::restricted;
    calendars.requestFailure = TextError("Služba neběží.");
    startSecured();
    openUi();
    EXPECT_TRUE(reads("Přístup ke kalendáři je systémem omezený"));
    EXPECT_TRUE(reads("Služba neběží."));
    EXPECT_TRUE(reads("Přístup k připomínkám je systémem omezený"));
    EXPECT_TRUE(reads("Přístup ke kontaktům je systémem omezený"));
    EXPECT_EQ(number("Vybrat: Kalendář"), 0);
    for (const char* row : {"Kalendář", "Připomínky", "Kontakty"})
        EXPECT_EQ(number("Povolit: " + std::string(row)), 1);
    calendars.requestFailure.reset();
    calendars.givenWhenAsked = DataAccess::full;
    press("Povolit: Kalendář");
    EXPECT_TRUE(reads("3 kalendářů vybráno"));
    EXPECT_FALSE(reads("Služba neběží."));
    EXPECT_EQ(number("Vybrat: Kalendář"), 1);
}

TEST_F(OrganizerViewTest, ACalendarThatComesIsShownInTheOpenSheet) {
    startSecured();
    openUi();
    press("Vybrat: Kalendář");
    calendars.has.push_back({"novy", "Nový", "Tento počítač", true});
    calendars.changed.tell();
    settle();
    EXPECT_TRUE(isOn("Nový, Tento počítač"));
}

TEST_F(OrganizerViewTest, AnOpenSheetSaysThatTheCalendarsHaveGone) {
    startSecured();
    openUi();
    press("Vybrat: Kalendář");
    calendars.given = DataAccess::restricted;
    calendars.changed.tell();
    settle();
    EXPECT_EQ(number("Práce, firma.example"), 0);
    // The row behind the sheet says it, too.
    EXPECT_EQ(ui->model().calendars()->problem(), QStringLiteral("Přístup ke kalendáři je systémem omezený"));
}

} // namespace
} // namespace morvex
