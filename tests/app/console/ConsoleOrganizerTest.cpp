#include "tests/app/console/ConsoleFixture.h"

#include <vector>

namespace morvex {
namespace {

using Lines = std::vector<std::string>;

class ConsoleOrganizerTest : public ConsoleFixture {
  protected:
    ConsoleOrganizerTest() {
        calendars.has = {{"doma", "Domov", "Tento počítač", true},
                         {"prace", "Práce", "firma.example", true},
                         {"svatky", "Svátky", "firma.example", false}};
    }

    MacCalendarService& service() { return features->organizer.calendar(); }
};

TEST_F(ConsoleOrganizerTest, CalendarsAreListedWithTheirIdsAndAccounts) {
    startShell();
    EXPECT_EQ(type("kalendare"), (Lines{"Kalendář: prace, Práce, firma.example, povolený",
                                        "Kalendář: svatky, Svátky, firma.example, povolený, jen pro čtení",
                                        "Kalendář: doma, Domov, Tento počítač, povolený"}));
}

TEST_F(ConsoleOrganizerTest, ACalendarIsAllowedForbiddenAndWrittenInto) {
    startShell();
    type("kalendare");
    EXPECT_EQ(type("kalendar vychozi prace"), Lines{"Výchozí pro nové události: Práce"});
    EXPECT_TRUE(hasLine(type("kalendare"),
                        "Kalendář: prace, Práce, firma.example, povolený, výchozí pro nové "
                        "události"));
    EXPECT_EQ(type("kalendar vyp prace"), Lines{"Nepovoleno: Práce"});
    EXPECT_FALSE(service().isEnabled("prace"));
    EXPECT_TRUE(hasLine(type("kalendare"), "Kalendář: prace, Práce, firma.example, nepovolený"));
    EXPECT_EQ(type("kalendar vychozi prace"),
              Lines{"Do tohohle kalendáře nejde zapisovat, nebo není povolený: Práce"});
    EXPECT_EQ(type("kalendar vychozi svatky"),
              Lines{"Do tohohle kalendáře nejde zapisovat, nebo není povolený: Svátky"});
    EXPECT_EQ(type("kalendar ZAP prace"), Lines{"Povoleno: Práce"});
    EXPECT_TRUE(service().isEnabled("prace"));
}

TEST_F(ConsoleOrganizerTest, AWrongCommandOrIdIsTold) {
    startShell();
    type("kalendare");
    for (const char* wrong : {"kalendar zap", "kalendar smaz prace"})
        EXPECT_EQ(type(wrong), Lines{"Správně: kalendar zap|vyp|vychozi ID"});
    EXPECT_EQ(type("kalendar zap Práce"), Lines{"Kalendář „Práce“ tu není. Seznam ukáže „kalendare“."});
}

TEST_F(ConsoleOrganizerTest, CalendarsThatCannotBeReachedAreTold) {
    calendars.given = DataAccess::restricted;
    calendars.requestFailure = TextError("Služba neběží.");
    startShell();
    EXPECT_EQ(type("kalendare"),
              (Lines{"Přístup ke kalendáři je systémem omezený", "Potíž: Služba neběží."}));
}

TEST_F(ConsoleOrganizerTest, ACalendarThatCannotBeAllowedStaysOff) {
    startShell();
    type("kalendare");
    type("kalendar vyp prace");
    defaults.refusal = TextError("Na disku není místo.");
    EXPECT_EQ(type("kalendar zap prace"),
              Lines{"Potíž: Nastavení se nepodařilo uložit: Na disku není místo."});
    EXPECT_FALSE(service().isEnabled("prace"));
}

TEST_F(ConsoleOrganizerTest, OpenRemindersAreListedWithTheirTimesHere) {
    reminders.held = {
        {"1", "Koupit mléko", false, "Nákup", parseWireDate("2026-03-14T08:05:00Z")},
        {"2", "Hotové", true, "Nákup", {}},
        {"3", "Zavolat", false, "", {}},
    };
    startShell();
    EXPECT_EQ(type("pripominky"),
              (Lines{"Připomínka: Koupit mléko, Nákup, 14. 3. 2026 09:05", "Připomínka: Zavolat"}));
    reminders.held.clear();
    EXPECT_EQ(type("pripominky"), Lines{"Žádné nesplněné připomínky."});
    reminders.given = DataAccess::denied;
    EXPECT_EQ(type("pripominky"), Lines{"Potíž: Morvex nemá přístup k připomínkám tohoto Macu."});
}

TEST_F(ConsoleOrganizerTest, ContactsAreListedWithAddressesAndNumbers) {
    contacts.found = {{"1", "Jana", "Nová", "Firma", {"jana@b.cz", "nova@c.cz"}, {"+420 777 123 456"}},
                      {"2", "", "", "Úřad", {}, {}}};
    startShell();
    EXPECT_EQ(type("kontakt Jana Nová"), (Lines{"Kontakt: Jana Nová", "  jana@b.cz", "  nova@c.cz",
                                                "  +420 777 123 456", "Kontakt: Úřad"}));
    EXPECT_EQ(contacts.asked.back().first, "Jana Nová");
    contacts.found.clear();
    EXPECT_EQ(type("kontakt nikdo"), Lines{"Kontakt „nikdo“ jsem nenašel."});
    EXPECT_EQ(type("kontakt"), Lines{"Správně: kontakt JMÉNO"});
    contacts.given = DataAccess::restricted;
    EXPECT_EQ(type("kontakt Jana"), Lines{"Potíž: Morvex nemá přístup ke kontaktům tohoto Macu."});
}

} // namespace
} // namespace morvex
