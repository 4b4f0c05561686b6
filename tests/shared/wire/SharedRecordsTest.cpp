#include "shared/wire/Conversation.h"
#include "shared/wire/Json.h"
#include "shared/wire/MorvexNote.h"
#include "shared/wire/MorvexSummary.h"
#include "shared/wire/WorkItem.h"

#include <gtest/gtest.h>

namespace morvex {
namespace {

constexpr auto shortItem =
    R"({"id":"270BD477-422C-4709-A43C-26E6E9C37AEC","title":"Testy","originalRequest":"Oprav testy",)"
    R"("status":"in_progress","source":"iPhone","createdAt":"1970-01-01T00:00:01Z",)"
    R"("updatedAt":"1970-01-01T00:00:02Z","revision":18446744073709551615})";
constexpr auto note =
    R"({"id":"270BD477-422C-4709-A43C-26E6E9C37AEC","title":"Nákup","body":"mléko","createdAt":"1970-01-01T00:00:01Z",)"
    R"("updatedAt":"1970-01-01T00:00:02Z","revision":1,"deletedAt":"1970-01-01T00:00:03Z"})";

std::string replaced(std::string text, std::string_view what, std::string_view with) {
    return text.replace(text.find(what), what.size(), with);
}

TEST(WorkItem, IsValidWithoutItsOptionalFieldsAndWritesNoneOfThem) {
    const auto item = decode<WorkItem>(shortItem).value();
    EXPECT_EQ(item.status, WorkItemStatus::inProgress);
    EXPECT_EQ(item.revision, 18446744073709551615u);
    EXPECT_FALSE(item.conversationID || item.summary || item.nextAction || item.lastError || item.agent);
    EXPECT_EQ(encode(item), shortItem);
}

TEST(WorkItem, HasOneFormWithEveryField) {
    constexpr auto text =
        R"({"id":"270BD477-422C-4709-A43C-26E6E9C37AEC","conversationID":"270BD477-422C-4709-A43C-26E6E9C37AED",)"
        R"("title":"Testy","originalRequest":"Oprav testy","summary":"hotovo","status":"completed",)"
        R"("nextAction":"nic","lastError":"","source":"mac","createdAt":"1970-01-01T00:00:01Z",)"
        R"("updatedAt":"1970-01-01T00:00:02Z","revision":7,)"
        R"("agent":{"tool":"mac.codex.run","sessionID":"S","folderAlias":"Plocha"}})";
    auto item = decode<WorkItem>(shortItem).value();
    item.conversationID = Uuid::parse("270BD477-422C-4709-A43C-26E6E9C37AED");
    item.summary = "hotovo";
    item.status = WorkItemStatus::completed;
    item.nextAction = "nic";
    item.lastError = "";
    item.source = WorkItemSource::mac;
    item.revision = 7;
    item.agent = AgentContinuation{"mac.codex.run", "S", "Plocha"};
    EXPECT_EQ(encode(item), text);
    EXPECT_EQ(decode<WorkItem>(text).value(), item);
}

TEST(AgentContinuation, LeavesOutWhatItDoesNotKnow) {
    EXPECT_EQ(encode(AgentContinuation{"mac.codex.run", {}, {}}), R"({"tool":"mac.codex.run"})");
    EXPECT_FALSE(decode<AgentContinuation>(R"({"sessionID":"S","folderAlias":"Plocha"})"));
}

TEST(WorkItem, RefusesAnUnknownSource) {
    EXPECT_FALSE(decode<WorkItem>(replaced(shortItem, "iPhone", "ipad")));
    EXPECT_FALSE(decode<WorkItem>(replaced(shortItem, "iPhone", "iphone")));
}

TEST(WorkItemStatus, KnowsEightWords) {
    const std::pair<WorkItemStatus::Case, const char*> words[] = {
        {WorkItemStatus::captured, "captured"},
        {WorkItemStatus::inProgress, "in_progress"},
        {WorkItemStatus::waitingForMac, "waiting_for_mac"},
        {WorkItemStatus::waitingForApproval, "waiting_for_approval"},
        {WorkItemStatus::completed, "completed"},
        {WorkItemStatus::failed, "failed"},
        {WorkItemStatus::cancelled, "cancelled"},
        {WorkItemStatus::interrupted, "interrupted"},
    };
    for (const auto& [known, word] : words) {
        EXPECT_EQ(WorkItemStatus{known}.rawValue, word);
        EXPECT_EQ(WorkItemStatus{std::string{word}}.kind(), known);
    }
}

TEST(WorkItemStatus, KeepsTheWordOfANewerPeer) {
    for (const auto* word : {"paused", "", "inProgress", "čeká \\\"na\\\" nic"}) {
        const auto text = replaced(shortItem, "in_progress", word);
        const auto item = decode<WorkItem>(text).value();
        EXPECT_EQ(item.status.kind(), WorkItemStatus::unknown);
        EXPECT_EQ(encode(item), text);
    }
}

TEST(WorkItemStatus, ComparesWords) {
    EXPECT_EQ(WorkItemStatus{std::string{"failed"}}, WorkItemStatus::failed);
    EXPECT_NE(WorkItemStatus{std::string{"paused"}}, WorkItemStatus::failed);
}

TEST(WorkItemStatus, ToleratesOnlyWords) {
    EXPECT_FALSE(decode<WorkItem>(replaced(shortItem, "\"in_progress\"", "3")));
    EXPECT_FALSE(decode<WorkItem>(replaced(shortItem, "\"in_progress\"", "null")));
}

TEST(MorvexNote, KeepsItsTextWhenItWasDeleted) {
    const auto read = decode<MorvexNote>(note).value();
    EXPECT_EQ(read.deletedAt, dateFromSeconds(3));
    EXPECT_EQ(encode(read), note);
    EXPECT_FALSE(decode<MorvexNote>(replaced(note, R"("title":"Nákup",)", "")));
    EXPECT_FALSE(decode<MorvexNote>(replaced(note, R"("body":"mléko",)", "")));
}

TEST(MorvexSummary, HasOneForm) {
    constexpr auto text =
        R"({"id":"270BD477-422C-4709-A43C-26E6E9C37AEC","title":"Týden","body":"…","createdAt":"1970-01-01T00:00:01Z",)"
        R"("periodStart":"1970-01-01T00:00:02Z","periodEnd":"1970-01-01T00:00:03Z","sources":["mail","notes"],)"
        R"("revision":4})";
    EXPECT_EQ(encode(decode<MorvexSummary>(text).value()), text);
}

TEST(Conversation, HasOneFormAndTwoRoles) {
    constexpr auto text =
        R"({"id":"270BD477-422C-4709-A43C-26E6E9C37AEC","title":"Ráno","createdAt":"1970-01-01T00:00:01Z",)"
        R"("updatedAt":"1970-01-01T00:00:02Z","turns":[)"
        R"({"id":"270BD477-422C-4709-A43C-26E6E9C37AEC","role":"user","text":"Ahoj","createdAt":"1970-01-01T00:00:03Z"},)"
        R"({"id":"270BD477-422C-4709-A43C-26E6E9C37AED","role":"assistant","text":"Ahoj","createdAt":"1970-01-01T00:00:04Z"}]})";
    EXPECT_EQ(encode(decode<Conversation>(text).value()), text);
    EXPECT_EQ(decode<Conversation>(replaced(text, "\"user\"", "\"system\"")).error().popis().czech(),
              "Pole „turns[0].role“ má neznámou hodnotu „system“.");
}

TEST(MorvexNote, IsSupersededByAHigherRevisionAndAtEqualOnesByALaterChange) {
    MorvexNote stored;
    stored.revision = 5;
    stored.updatedAt = dateFromSeconds(100);

    struct Row {
        std::uint64_t revision;
        std::int64_t seconds;
        bool wins;
    };

    for (auto [revision, seconds, wins] :
         {Row{6, 1, true}, Row{4, 900, false}, Row{5, 101, true}, Row{5, 100, false}, Row{5, 99, false}}) {
        MorvexNote incoming;
        incoming.revision = revision;
        incoming.updatedAt = dateFromSeconds(seconds);
        EXPECT_EQ(incoming.supersedes(stored), wins) << revision << " " << seconds;
    }
}

TEST(ArchivedList, HasTheRecordsWithNumericDates) {
    ArchivedList<MorvexNote> list{{decode<MorvexNote>(note).value()}};
    list.records[0].updatedAt += std::chrono::milliseconds(250);
    const auto text = encode(list);
    EXPECT_EQ(text, R"([{"id":"270BD477-422C-4709-A43C-26E6E9C37AEC","title":"Nákup","body":"mléko",)"
                    R"("createdAt":-978307199,"updatedAt":-978307197.75,"revision":1,)"
                    R"("deletedAt":-978307197}])");
    EXPECT_EQ(decode<ArchivedList<MorvexNote>>(text).value(), list);
    list.records[0].deletedAt.reset();
    EXPECT_EQ(decode<ArchivedList<MorvexNote>>(encode(list)).value(), list);
}

TEST(ArchivedList, RefusesADateThatIsNoNumberOrCouldNotTravel) {
    const auto text = encode(ArchivedList<MorvexNote>{{decode<MorvexNote>(note).value()}});
    for (const char* bad : {R"("2001-01-01T00:00:00Z")", "1e15", "-1e15", "null", "true", "{}"})
        EXPECT_FALSE(decode<ArchivedList<MorvexNote>>(replaced(text, "-978307199", bad))) << bad;
    const auto failed = decode<ArchivedList<MorvexNote>>(replaced(text, "-978307199", "1e15"));
    EXPECT_EQ(failed.error().as<DecodeError>()->path, "[0].createdAt");
}

} // namespace
} // namespace morvex
