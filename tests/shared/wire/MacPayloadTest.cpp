#include "shared/wire/MacPayload.h"

#include "shared/wire/Json.h"

#include <gtest/gtest.h>

#include <limits>
#include <set>

namespace morvex {
namespace {

constexpr auto id = "270BD477-422C-4709-A43C-26E6E9C37AEC";
const auto uuid = *Uuid::parse(id);
const auto moment = dateFromSeconds(1794789956);

struct Form {
    std::string json;
    MacPayload payload;
};

Form recordForm(std::string_view name, const auto& record, MacPayload payload) {
    return {"{\"" + std::string{name} + "\":{\"_0\":" + encode(record) + "}}", std::move(payload)};
}

std::vector<Form> recordForms() {
    MacStatus status;
    status.deviceName = "Studio";
    WorkItem item;
    item.id = uuid;
    MorvexNote note;
    note.id = uuid;
    MorvexSummary summary;
    summary.id = uuid;
    const CompanionPreferences preferences{"cs", "verse", {{{"Doma", "Dlouhá 1"}}}};
    const ApprovalRequest request{"r1", "mac.mail.send", "Odeslat", "Mám to poslat?", "…", moment, "hash"};
    return {
        recordForm("status", status, {MacPayload::Status{status}}),
        recordForm("workItemUpdate", item, {MacPayload::WorkItemUpdate{item}}),
        recordForm("noteUpdate", note, {MacPayload::NoteUpdate{note}}),
        recordForm("summaryUpdate", summary, {MacPayload::SummaryUpdate{summary}}),
        recordForm("companionPreferences", preferences, {MacPayload::Preferences{preferences}}),
        recordForm("approvalRequest", request, {MacPayload::Approval{request}}),
    };
}

std::vector<Form> plainForms() {
    const auto ack = R"({"id":"270BD477-422C-4709-A43C-26E6E9C37AEC","revision":18446744073709551615})";
    constexpr auto revision = std::numeric_limits<std::uint64_t>::max();
    return {
        {R"({"toolCall":{"name":"mac.files.read","argumentsJSON":"{\"path\":\"a.txt\"}"}})",
         {MacPayload::ToolCall{"mac.files.read", R"({"path":"a.txt"})"}}},
        {R"({"toolProgress":{"text":"Čtu…"}})", {MacPayload::ToolProgress{"Čtu…"}}},
        {R"({"toolResult":{"ok":true,"json":"{\"a\":\"řádek\\n\\\"x\\\"\"}\n"}})",
         {MacPayload::ToolResult{true, "{\"a\":\"řádek\\n\\\"x\\\"\"}\n"}}},
        {R"({"workItemAck":)" + std::string{ack} + "}", {MacPayload::WorkItemAck{uuid, revision}}},
        {R"({"noteAck":)" + std::string{ack} + "}", {MacPayload::NoteAck{uuid, revision}}},
        {R"({"summaryAck":)" + std::string{ack} + "}", {MacPayload::SummaryAck{uuid, revision}}},
        {R"({"openAICredential":{"value":"sk"}})", {MacPayload::OpenAICredential{"sk"}}},
        {R"({"customApps":{"_0":[]}})", {MacPayload::CustomApps{}}},
        {R"({"customApps":{"_0":[{"id":"1","name":"n","endpoint":"https://x","token":"t"}]}})",
         {MacPayload::CustomApps{{{"1", "n", "https://x", "t"}}}}},
        {R"({"cancel":{}})", {MacPayload::Cancel{}}},
        {R"({"approvalDecision":{"id":"r1","approved":true}})",
         {MacPayload::ApprovalDecision{"r1", true, {}}}},
        {R"({"approvalDecision":{"id":"r1","approved":false,"reason":""}})",
         {MacPayload::ApprovalDecision{"r1", false, ""}}},
    };
}

TEST(MacPayload, HasOneFormForEachCase) {
    std::set<std::size_t> cases;
    for (const auto& forms : {recordForms(), plainForms()})
        for (const auto& [json, payload] : forms) {
            cases.insert(payload.value.index());
            EXPECT_EQ(encode(payload), json);
            EXPECT_EQ(decode<MacPayload>(json).value(), payload) << json;
        }
    EXPECT_EQ(cases.size(), std::variant_size_v<decltype(MacPayload::value)>);
}

TEST(MacPayload, NeedsExactlyOneKey) {
    for (const auto* json : {"{}", R"({"status":{},"cancel":{}})", R"({"cancel":{},"x":1})"}) {
        const auto read = decode<MacPayload>(json);
        ASSERT_FALSE(read) << json;
        EXPECT_EQ(read.error().popis().czech(), "Invalid number of keys found, expected one.");
    }
}

TEST(MacPayload, CountsARepeatedCaseOnce) {
    EXPECT_EQ(decode<MacPayload>(R"({"toolProgress":{"text":"a"},"toolProgress":{"text":"b"}})").value(),
              MacPayload{MacPayload::ToolProgress{"b"}});
}

TEST(MacPayload, RefusesWhatItCannotReadWhole) {
    for (const auto* json : {
             R"({"newCase":{}})",
             R"({"Cancel":{}})",
             R"({"cancel":null})",
             R"({"cancel":[]})",
             R"({"cancel":true})",
             R"("cancel")",
             R"({"toolCall":{"name":"x"}})",
             R"({"toolCall":{"name":"x","argumentsJSON":{}}})",
             R"({"toolResult":{"ok":1,"json":""}})",
             R"({"customApps":[]})",
             R"({"noteAck":{"id":"not-a-uuid","revision":1}})",
             R"({"noteAck":{"id":"270BD477-422C-4709-A43C-26E6E9C37AEC","revision":-1}})",
             R"({"noteAck":{"id":"270BD477-422C-4709-A43C-26E6E9C37AEC","revision":"1"}})",
         })
        EXPECT_FALSE(decode<MacPayload>(json)) << json;
}

TEST(MacPayload, ReadsAUuidInLowerCaseAndWritesItInUpperCase) {
    const auto read =
        decode<MacPayload>(R"({"noteAck":{"id":"270bd477-422c-4709-a43c-26e6e9c37aec","revision":1}})");
    EXPECT_EQ(encode(read.value()),
              R"({"noteAck":{"id":"270BD477-422C-4709-A43C-26E6E9C37AEC","revision":1}})");
}

TEST(MacPayload, ReadsADecisionWithoutAReasonTwoWays) {
    const auto missing = decode<MacPayload>(R"({"approvalDecision":{"id":"r","approved":false}})").value();
    const auto null =
        decode<MacPayload>(R"({"approvalDecision":{"id":"r","approved":false,"reason":null}})").value();
    EXPECT_EQ(missing, null);
    EXPECT_EQ(encode(null), R"({"approvalDecision":{"id":"r","approved":false}})");
}

TEST(MacPayload, TellsNoPlacesFromAnEmptyList) {
    const auto none = decode<CompanionPreferences>(R"({"language":"cs","voice":"v"})").value();
    const auto empty = decode<CompanionPreferences>(R"({"language":"cs","voice":"v","places":[]})").value();
    EXPECT_FALSE(none.places);
    EXPECT_NE(none, empty);
    EXPECT_EQ(encode(none), R"({"language":"cs","voice":"v"})");
    EXPECT_EQ(encode(empty), R"({"language":"cs","voice":"v","places":[]})");
}

TEST(MacPayload, NamesTheFailingFieldDeepInside) {
    auto status = encode(recordForms()[0].payload);
    status.replace(
        status.find("[]"), 2,
        R"([{"name":"a","summary":"b","risk":"dangerous","parametersJSON":"{}","streamsProgress":true}])");
    const auto read = decode<MacPayload>(status);
    ASSERT_FALSE(read);
    EXPECT_EQ(read.error().popis().czech(),
              "Pole „status._0.tools[0].risk“ má neznámou hodnotu „dangerous“.");
}

constexpr auto approvalRequest =
    R"({"id":"r1","tool":"mac.mail.send","title":"Odeslat","spoken":"Mám to poslat?","detail":"Komu: a@b",)"
    R"("expiresAt":"2026-11-16T00:45:56Z","contentHash":"e3b0c44298fc1c14"})";

TEST(ApprovalRequest, HasOneForm) {
    const ApprovalRequest request{"r1",        "mac.mail.send", "Odeslat",         "Mám to poslat?",
                                  "Komu: a@b", moment,          "e3b0c44298fc1c14"};
    EXPECT_EQ(encode(request), approvalRequest);
    EXPECT_EQ(decode<ApprovalRequest>(approvalRequest).value(), request);
}

TEST(ApprovalRequest, NeedsEveryField) {
    for (const std::string key : {"id", "tool", "title", "spoken", "detail", "expiresAt", "contentHash"}) {
        std::string text = approvalRequest;
        text.insert(text.find('"' + key + '"') + 1, "other ");
        EXPECT_FALSE(decode<ApprovalRequest>(text)) << text;
    }
}

TEST(CompanionPreferences, HasOneFormWithPlaces) {
    EXPECT_EQ(encode(CompanionPreferences{"cs", "verse", {{{"Doma", "Dlouhá 1"}}}}),
              R"({"language":"cs","voice":"verse","places":[{"name":"Doma","address":"Dlouhá 1"}]})");
}

TEST(ApprovalRequest, IsValidStrictlyBeforeItExpires) {
    ApprovalRequest request;
    request.expiresAt = moment;
    EXPECT_TRUE(request.isValid(moment - std::chrono::microseconds{1}));
    EXPECT_FALSE(request.isValid(moment));
    EXPECT_FALSE(request.isValid(moment + std::chrono::microseconds{1}));
}

TEST(MacPayload, TheIdOfADecisionIsAnyText) {
    auto payload = decode<MacPayload>(R"({"approvalDecision":{"id":"no uuid","approved":true}})");
    ASSERT_TRUE(payload) << payload.error().popis().czech();
    EXPECT_EQ(payload->as<MacPayload::ApprovalDecision>()->id, "no uuid");
}

TEST(MacPayload, IgnoresUnknownKeysInsideACase) {
    auto payload = decode<MacPayload>(R"({"cancel":{"x":1}})");
    ASSERT_TRUE(payload) << payload.error().popis().czech();
    EXPECT_TRUE(payload->as<MacPayload::Cancel>());
}

} // namespace
} // namespace morvex
