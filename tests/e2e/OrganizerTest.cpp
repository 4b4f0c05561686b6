#include "tests/e2e/EndToEnd.h"
#include "tests/support/PrivateDesktop.h"
#include "tests/support/Sanitized.h"

#include <boost/json.hpp>

#include <thread>

namespace morvex {
namespace {

namespace json = boost::json;

/// Whole programs with the calendars of a real desktop.
class OrganizerTest : public EndToEnd {
  protected:
    OrganizerTest() {
        shared["DBUS_SESSION_BUS_ADDRESS"] = desktop.address();
        shared["GSETTINGS_BACKEND"] = "memory";
        shared["TZ"] = "Europe/Prague";
        shared["ASAN_OPTIONS"] = wholeStacks();
        desktop.addSource("work", "Práce", "Calendar");
        mac = startMac();
        pair(*mac);
    }

    ~OrganizerTest() override {
        mac->type("konec");
        EXPECT_EQ(mac->wait(), 0) << mac->output();
    }

    std::string type(const std::string& command, const std::string& answer) {
        mac->type(command);
        return mac->waitForNextLine(answer);
    }

    json::array week() {
        return answerOf("mac.calendar.list", {{"from", "2026-03-09"}, {"to", "2026-03-15"}})
            .at("events")
            .as_array();
    }

    std::string created(json::object event) {
        const auto answer = answerOf("mac.calendar.create", event);
        return std::string(answer.at("id").as_string());
    }

    PrivateDesktop desktop;
    std::unique_ptr<Program> mac;
};

TEST_F(OrganizerTest, ThePhoneMakesMovesAndDeletesAnEvent) {
    const auto id = created({{"title", "Schůzka"},
                             {"start", "2026-03-10T09:00:00+01:00"},
                             {"end", "2026-03-10T10:00:00+01:00"},
                             {"calendar", "prace"},
                             {"location", "Brno"}});
    EXPECT_EQ(week(), (json::array{json::object{{"id", id},
                                                {"title", "Schůzka"},
                                                {"local_start", "2026-03-10T09:00:00+01:00"},
                                                {"local_end", "2026-03-10T10:00:00+01:00"},
                                                {"all_day", false},
                                                {"calendar", "Práce"},
                                                {"location", "Brno"},
                                                {"time_zone", "Europe/Prague"}}}));
    answerOf("mac.calendar.update",
             {{"id", id}, {"start", "2026-03-15T22:00:00Z"}, {"end", "2026-03-15T22:30:00Z"}});
    ASSERT_EQ(week().size(), 1U);
    EXPECT_EQ(week().at(0).at("local_start"), "2026-03-15T23:00:00+01:00");
    EXPECT_EQ(answerOf("mac.calendar.delete", {{"id", id}}),
              (json::object{{"deleted", true}, {"title", "Schůzka"}}));
    EXPECT_TRUE(week().empty());
    EXPECT_NE(call("mac.calendar.delete", {{"id", id}}).code, 0);
}

TEST_F(OrganizerTest, ACalendarThatIsSwitchedOffIsNeitherListedNorChanged) {
    const auto id = created({{"title", "Tajné"},
                             {"start", "2026-03-10T09:00:00+01:00"},
                             {"end", "2026-03-10T10:00:00+01:00"},
                             {"calendar", "Práce"}});
    EXPECT_TRUE(type("kalendare", "work, ").contains("work, Práce, On This Computer, povolený"));
    type("kalendar vyp work", "Nepovoleno: Práce");
    EXPECT_TRUE(week().empty());
    const auto refused = call("mac.calendar.delete", {{"id", id}});
    EXPECT_NE(refused.code, 0);
    EXPECT_TRUE(refused.output.contains("Tento kalendář není v Morvex povolený.")) << refused.output;
    type("kalendar zap work", "Povoleno: Práce");
    EXPECT_EQ(week().size(), 1U);
}

/// The calendars are known before the phone can call.
TEST_F(OrganizerTest, TheFirstCallAfterAStartFindsTheCalendars) {
    type("kalendar vyp work", "Nepovoleno: Práce");
    mac->type("konec");
    EXPECT_EQ(mac->wait(), 0);
    mac = startMac();
    // What was chosen holds.
    const auto calendars = answerOf("mac.calendar.calendars", {}).at("calendars").as_array();
    EXPECT_EQ(calendars.size(), 2U);
    for (const auto& calendar : calendars) EXPECT_NE(calendar.at("id"), "work");
}

TEST_F(OrganizerTest, RemindersAreMadeListedAndCompleted) {
    const auto id =
        answerOf("mac.reminders.create", {{"title", "Koupit"}, {"due", "2026-03-10T18:00:00+01:00"}})
            .at("id");
    EXPECT_TRUE(type("pripominky", "Připomínka: ").contains("Koupit, Personal, 10. 3. 2026 18:00"));
    const auto listed = answerOf("mac.reminders.list", {}).at("reminders").as_array();
    ASSERT_EQ(listed.size(), 1U);
    EXPECT_EQ(listed[0].at("id"), id);
    EXPECT_EQ(listed[0].at("completed"), false);
    EXPECT_EQ(answerOf("mac.reminders.complete", {{"id", id}}),
              (json::object{{"completed", true}, {"id", id}, {"title", "Koupit"}}));
    EXPECT_TRUE(answerOf("mac.reminders.list", {}).at("reminders").as_array().empty());
    type("pripominky", "Žádné nesplněné připomínky.");
}

TEST_F(OrganizerTest, APersonIsFound) {
    EXPECT_TRUE(answerOf("mac.contacts.find", {{"query", "jana nova"}}).at("contacts").as_array().empty());
    desktop.addContact("Nová", "Jana", "jana@b.example", "+420 123");
    type("kontakt nova jana", "Kontakt: Jana Nová");
    mac->waitForNextLine("jana@b.example");
    mac->waitForNextLine("+420 123");
    const auto found = answerOf("mac.contacts.find", {{"query", "NOVA"}}).at("contacts").as_array();
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found[0].at("name"), "Jana Nová");
    EXPECT_EQ(found[0].at("emails"), json::array{"jana@b.example"});
}

/// Nothing else of the program suffers when the session bus goes with all services.
TEST_F(OrganizerTest, TheEndOfTheDesktopIsTold) {
    desktop.end();
    EXPECT_TRUE(type("kalendare", "omezený").contains("Přístup ke kalendáři je systémem omezený"));
    const auto refused = call("mac.calendar.list", {{"from", "2026-03-09"}, {"to", "2026-03-15"}});
    EXPECT_NE(refused.code, 0);
    EXPECT_EQ(phone({"status"}).code, 0);
}

} // namespace
} // namespace morvex
