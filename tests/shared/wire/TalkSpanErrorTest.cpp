#include "shared/wire/TalkSpanError.h"

#include "shared/wire/Json.h"

#include <gtest/gtest.h>

#include <limits>
#include <set>

namespace morvex {
namespace {

using E = TalkSpanError;

struct Form {
    const char* json;
    TalkSpanError error;
    const char* words;
};

const Form forms[] = {
    {R"({"protocolMismatch":{"mine":"1.4","theirs":"2.0"}})",
     {E::ProtocolMismatch{"1.4", "2.0"}},
     "Telefon a Mac mluví jinou verzí protokolu (1.4 proti 2.0). Aktualizuj tu starší aplikaci."},
    {R"({"notPaired":{"_0":"Naskenuj kód."}})",
     {E::NotPaired{Sentence("Naskenuj kód.")}},
     "Zařízení není spárované. Naskenuj kód."},
    {R"({"badSignature":{}})", {E::BadSignature{}}, "Podpis zprávy nesedí. Spojení jsem zahodil."},
    {R"({"expired":{"age":61.9}})",
     {E::Expired{61.9}},
     "Zpráva dorazila pozdě, po 61 vteřinách. Neprovedl jsem ji."},
    {R"({"replay":{}})", {E::Replay{}}, "Tuhle zprávu jsem už jednou zpracoval. Podruhé ji neprovádím."},
    {R"({"macOffline":{}})", {E::MacOffline{}}, "Mac není dostupný."},
    {R"({"macBusy":{"_0":"Codex"}})", {E::MacBusy{"Codex"}}, "Mac právě pracuje: Codex."},
    {R"({"toolUnavailable":{"tool":"t","reason":"r"}})",
     {E::ToolUnavailable{"t", "r"}},
     "Nástroj t není na Macu k dispozici: r"},
    {R"({"notAllowed":{"tool":"t","reason":"r"}})", {E::NotAllowed{"t", "r"}}, "Nástroj t není povolený: r"},
    {R"({"approvalRequired":{"_0":"mail"}})",
     {E::ApprovalRequired{"mail"}},
     "Tohle potřebuje potvrzení: mail"},
    {R"({"rejected":{}})", {E::Rejected{}}, "Zamítnuto."},
    {R"({"rejected":{"reason":""}})", {E::Rejected{""}}, "Zamítnuto: "},
    {R"({"rejected":{"reason":"ne"}})", {E::Rejected{"ne"}}, "Zamítnuto: ne"},
    {R"({"timedOut":{"seconds":60}})",
     {E::TimedOut{60}},
     "Operace překročila limit 60 vteřin a byla zastavena."},
    {R"({"cancelled":{}})", {E::Cancelled{}}, "Zrušeno."},
    {R"({"outsideAllowedFolders":{"path":"/etc"}})",
     {E::OutsideAllowedFolders{"/etc"}},
     "Cesta /etc leží mimo povolené složky. Nesahám na ni."},
    {R"({"toolFailed":{"tool":"git","message":"1"}})",
     {E::ToolFailed{"git", Sentence("1")}},
     "git skončil chybou: 1"},
};

TEST(TalkSpanError, HasOneFormAndOneSentenceForEachCase) {
    std::set<std::size_t> cases;
    for (const auto& form : forms) {
        cases.insert(form.error.value.index());
        EXPECT_EQ(encode(form.error), form.json);
        EXPECT_EQ(decode<TalkSpanError>(form.json).value(), form.error);
        EXPECT_EQ(form.error.popis().czech(), form.words);
    }
    EXPECT_EQ(cases.size(), std::variant_size_v<decltype(TalkSpanError::value)>);
}

TEST(TalkSpanError, ReadsARejectionWithNullAsOneWithoutAReason) {
    EXPECT_EQ(decode<TalkSpanError>(R"({"rejected":{"reason":null}})").value(), E{E::Rejected{}});
}

TEST(TalkSpanError, NeverReadsAnAgeThatItCouldNotSay) {
    EXPECT_FALSE(decode<TalkSpanError>(R"({"expired":{"age":1e300}})"));
    EXPECT_FALSE(decode<TalkSpanError>(R"({"expired":{"age":9223372036854775808}})"));
    EXPECT_FALSE(decode<TalkSpanError>(R"({"expired":{"age":1e999}})"));
    EXPECT_EQ(decode<TalkSpanError>(R"({"expired":{"age":-9e18}})").value().popis().czech(),
              "Zpráva dorazila pozdě, po -9000000000000000000 vteřinách. Neprovedl jsem ji.");
}

TEST(TalkSpanErrorDeathTest, EndsTheProcessForAnAgeThatCannotBeSaid) {
    for (const double age :
         {std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity(), 1e300})
        EXPECT_DEATH(static_cast<void>(E{E::Expired{age}}.popis().czech()), "age");
}

TEST(TalkSpanError, NeedsExactlyOneKey) {
    const auto read = decode<TalkSpanError>(R"({"replay":{},"cancelled":{}})");
    ASSERT_FALSE(read);
    EXPECT_EQ(read.error().popis().czech(), "Invalid number of keys found, expected one.");
}

TEST(TalkSpanError, AnEmptyReasonKeepsTheColon) {
    EXPECT_EQ((TalkSpanError{TalkSpanError::Rejected{""}}.popis().czech()), "Zamítnuto: ");
    EXPECT_EQ((TalkSpanError{TalkSpanError::Rejected{}}.popis().czech()), "Zamítnuto.");
}

} // namespace
} // namespace morvex
