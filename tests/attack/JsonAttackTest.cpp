#include "shared/wire/Envelope.h"
#include "shared/wire/Json.h"
#include "shared/wire/RelayMessage.h"
#include "tests/attack/Changes.h"
#include "tests/attack/JsonTable.h"
#include "tests/attack/MemoryMeter.h"
#include "tests/support/Effort.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <optional>
#include <string>

namespace morvex {
namespace {

using Wanted = decltype(JsonRow::wanted);

/// The outcome for a text: the reason of its refusal, or its value written again.
Wanted outcomeOf(std::string_view text) {
    const auto read = parseJson(text);
    if (read) return encode(*read);
    const auto* error = read.error().as<DecodeError>();
    return error ? Wanted{error->reason} : Wanted{"no reason"};
}

std::string shown(const Wanted& outcome) {
    if (const auto* reason = std::get_if<DecodeError::Reason>(&outcome))
        return DecodeError{*reason, {}, {}}.popis().czech();
    return std::get<std::string>(outcome).substr(0, 200);
}

/// The cost of the most expensive row of a table.
class Cost {
  public:
    /// Memory must be bounded by the length of the text, whatever its content.
    void include(const JsonRow& row, const MemoryMeter& memory, std::chrono::nanoseconds time) {
        slowest_ = std::max(slowest_, std::chrono::duration_cast<std::chrono::milliseconds>(time));
        const auto grown = memory.peakGrowthInMebibytes();
        if (!grown) return;
        most_ = std::max(most_, *grown);
        EXPECT_LT(*grown, 8 + 5 * static_cast<double>(row.text.size()) / (1024 * 1024)) << row.what;
    }

    [[nodiscard]] std::string text() const {
        return "at most " + std::to_string(static_cast<int>(std::ceil(most_))) + " MiB and " +
               std::to_string(slowest_.count()) + " ms";
    }

  private:
    double most_ = 0;
    std::chrono::milliseconds slowest_{};
};

struct Group {
    const char* name;
    std::vector<JsonRow> (*rows)();
};

void PrintTo(const Group& group, std::ostream* out) {
    *out << group.name;
}

class JsonAttack : public testing::TestWithParam<Group> {};

TEST_P(JsonAttack, EveryRowEndsAsTheTableSays) {
    const auto rows = GetParam().rows();
    Cost worst;
    for (const auto& row : rows) {
        const MemoryMeter memory;
        const auto start = std::chrono::steady_clock::now();
        const auto outcome = outcomeOf(row.text);
        worst.include(row, memory, std::chrono::steady_clock::now() - start);
        EXPECT_TRUE(outcome == row.wanted) << row.what << ": " << shown(outcome);
        // What was written must read back as the same value.
        if (const auto* written = std::get_if<std::string>(&outcome))
            EXPECT_TRUE(outcomeOf(*written) == outcome) << row.what;
    }
    tell(std::string("JSON ") + GetParam().name, rows.size(), "each as the table says, " + worst.text());
}

INSTANTIATE_TEST_SUITE_P(Table, JsonAttack,
                         testing::Values(Group{"depths", &jsonDepths}, Group{"sizes", &jsonSizes},
                                         Group{"keys", &jsonKeys}, Group{"numbers", &jsonNumbers},
                                         Group{"strings", &jsonStrings},
                                         Group{"structures", &jsonStructures}),
                         [](const auto& group) { return group.param.name; });

TEST(JsonAttack, AChangedBitIsRefusedOrReadAsSomethingThatIsWrittenAndReadAlike) {
    const std::string genuine =
        R"({"a":[1,-2.5e3,true,null,{"b":"žluť\n\ud83d\ude00"}],"c":18446744073709551615,"a":"x"})";
    std::size_t accepted = 0;
    const auto count = withEveryBitChanged(genuine, [&](const std::string& changed, std::size_t) {
        const auto outcome = outcomeOf(changed);
        const auto* written = std::get_if<std::string>(&outcome);
        if (!written) return;
        ++accepted;
        EXPECT_TRUE(outcomeOf(*written) == outcome) << changed;
    });
    tell("bits of a JSON text", count, std::to_string(accepted) + " read, all written and read alike");
}

TEST(JsonAttack, NoTruncationOfAnObjectIsRead) {
    const std::string genuine = R"({"a":[1,-2.5e3,true,null,{"b":"žluť\n\ud83d\ude00"}],"c":1})";
    const auto count = withEveryTruncation(genuine, [](const std::string& shorter) {
        EXPECT_TRUE(outcomeOf(shorter) == Wanted{DecodeError::Reason::notJson}) << shorter;
    });
    tell("truncations of a JSON text", count, "none is read");
}

/// The value of a number in a field of an unsigned 64-bit integer.
struct CounterRow {
    const char* text;
    std::optional<std::uint64_t> counter;
};

constexpr CounterRow counters[] = {
    {"0", 0},
    {"1", 1},
    {"-0", 0},
    {"-1", {}},
    {"1.0", 1},
    {"1.5", {}},
    {"1e3", 1000},
    {"1e-3", {}},
    {"9007199254740992", 9007199254740992},
    {"9007199254740993", 9007199254740993},
    {"9223372036854775807", 9223372036854775807},
    {"9223372036854775808", 9223372036854775808U},
    {"18446744073709551615", 18446744073709551615U},
    {"18446744073709551616", {}},
    {"-9223372036854775808", {}},
    {"1e19", {}},
    {"1e400", {}},
    {"9007199254740993e0", {}},
    {"\"1\"", {}},
    {"true", {}},
    {"null", {}},
    {"[1]", {}},
    {"{\"a\":1}", {}},
    {"NaN", {}},
};

TEST(JsonAttack, TheCounterOfAnEnvelopeIsExactOrTheWholeEnvelopeIsRefused) {
    const auto genuine = encode(keyExchange({"PAIR"}, {"PHONE"}, {"MAC"}, "session", toBytes("x"), {}, {}));
    const std::string field = "\"counter\":0";
    for (const auto& row : counters) {
        auto text = genuine;
        text.replace(text.find(field), field.size(), std::string("\"counter\":") + row.text);
        const auto read = decode<Envelope>(text);
        EXPECT_EQ(read ? std::optional{read->counter} : std::nullopt, row.counter) << row.text;
    }
    tell("numbers as an envelope's counter", std::size(counters), "exact or refused");
}

/// A text in place of a frame of the relay.
struct FrameRow {
    const char* text;
    const char* readAs; ///< null if it is refused
};

constexpr FrameRow frames[] = {
    {R"({"peerOnline":{"_0":true}})", R"({"peerOnline":{"_0":true}})"},
    {R"({"peerOnline":{"_0":true,"_0":false}})", R"({"peerOnline":{"_0":false}})"},
    {R"({"peerOnline":{"_0":true},"peerOnline":{"_0":false}})", R"({"peerOnline":{"_0":false}})"},
    {R"({"peerOnline":{"_0":true},"peerOnline":true})", nullptr},
    {R"({"peerOnline":{"_0":true,"future":[1]}})", R"({"peerOnline":{"_0":true}})"},
    {R"({"peerOnline":{"_0":1}})", nullptr},
    {R"({"peerOnline":{"_0":"true"}})", nullptr},
    {R"({"peerOnline":{"_0":null}})", nullptr},
    {R"({"peerOnline":{}})", nullptr},
    {R"({"peerOnline":true})", nullptr},
    {R"({"peerOnline":[true]})", nullptr},
    {R"({"peerOnline":null})", nullptr},
    {R"({"PeerOnline":{"_0":true}})", nullptr},
    {R"({"peerOnline":{"_0":true},"failure":{"code":"revoked","detail":""}})", nullptr},
    {R"({"failure":{"code":"revoked","detail":""}})", R"({"failure":{"code":"revoked","detail":""}})"},
    {R"({"failure":{"code":"Revoked","detail":""}})", nullptr},
    {R"({"failure":{"code":3,"detail":""}})", nullptr},
    {R"({"failure":{"code":"revoked","detail":7}})", nullptr},
    {R"({"challenge":{"nonce":"AAAA","v":"1.4"}})", R"({"challenge":{"nonce":"AAAA","v":"1.4"}})"},
    {R"({"challenge":{"nonce":"AAA","v":"1.4"}})", nullptr},
    {R"({"challenge":{"nonce":"AAAA","v":"99999999999999999999.4"}})", nullptr},
    {R"({"challenge":{"nonce":"AAAA","v":1.4}})", nullptr},
    {R"({})", nullptr},
    {R"([])", nullptr},
    {R"("peerOnline")", nullptr},
    {R"(null)", nullptr},
};

TEST(JsonAttack, AFrameHasExactlyOneKnownCaseWithFieldsOfTheirTypes) {
    for (const auto& row : frames) {
        const auto read = decode<RelayMessage>(row.text);
        EXPECT_EQ(read.has_value(), row.readAs != nullptr) << row.text;
        if (read && row.readAs) EXPECT_EQ(encode(*read), row.readAs) << row.text;
    }
    tell("shapes of a relay's frame", std::size(frames), "each as the table says");
}

} // namespace
} // namespace morvex
