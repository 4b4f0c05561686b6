#include "foundation/OneShot.h"
#include "platform/linux/evolution/EvolutionDesktop.h"

#include <gtest/gtest.h>

namespace morvex {
namespace {

using Answer = Result<int>;

const Answer right = 1;
const Answer gone = fail(EvolutionTrouble{SystemTrouble::notFound});
const Answer silent = fail(EvolutionTrouble{SystemTrouble::serviceSilent});
const Answer other = fail(TextError("První."));
const Answer cancelled = fail(Abandoned{});

struct Row {
    const char* name;
    std::vector<Answer> answers;
    std::string failure;
};

class AnswersTogetherTest : public testing::TestWithParam<Row> {};

TEST_P(AnswersTogetherTest, FailsOnlyIfNobodyAnswers) {
    AnswersTogether together;
    for (const auto& answer : GetParam().answers)
        EXPECT_EQ(together.add(answer), answer || !answer.error().as<Abandoned>());
    const auto outcome = together.outcome();
    EXPECT_EQ(outcome ? "" : outcome.error().popis().czech(), GetParam().failure);
}

INSTANTIATE_TEST_SUITE_P(All, AnswersTogetherTest,
                         testing::Values(Row{"NoSource", {}, ""}, Row{"Right", {right}, ""},
                                         Row{"FailedBeforeRight", {other, right}, ""},
                                         Row{"FailedBehindRight", {right, other}, ""},
                                         Row{"Gone", {gone}, ""}, Row{"GoneAndFailed", {gone, other}, ""},
                                         Row{"Failed", {other}, "První."},
                                         Row{"FirstFailure", {other, silent}, "První."},
                                         Row{"Cancelled", {right, cancelled}, Abandoned{}.popis().czech()}),
                         [](const auto& row) { return std::string(row.param.name); });

} // namespace
} // namespace morvex
