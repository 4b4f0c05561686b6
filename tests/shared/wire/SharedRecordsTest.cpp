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

TEST(WorkItem, CarriesEveryField) {
    auto item = decode<WorkItem>(shortItem).value();
    item.conversationID = Uuid{};
    item.summary = "hotovo";
    item.nextAction = "nic";
    item.lastError = "";
    item.source = WorkItemSource::mac;
    item.agent = AgentContinuation{"mac.codex.run", "S", {}};
    const auto text = encode(item);
    EXPECT_EQ(decode<WorkItem>(text).value(), item);
    EXPECT_TRUE(text.ends_with(R"("agent":{"tool":"mac.codex.run","sessionID":"S"}})"));
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
    EXPECT_EQ(decode<Conversation>(replaced(text, "\"user\"", "\"system\"")).error().popis(),
              "Pole „turns[0].role“ má neznámou hodnotu „system“.");
}

} // namespace
} // namespace morvex
