#include "app/mail/protocol/ImapAnswers.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace morvex {
namespace {

TEST(ImapAnswers, TellHowManyMessagesThereAre) {
    for (const auto& [lines, count] : std::vector<std::pair<std::string, std::int64_t>>{
             {"* FLAGS (\\Seen)\n* 172 EXISTS\n* 1 RECENT\n", 172},
             {"* 0 EXISTS\n", 0},
             {"", 0},
             {"* EXISTS\n", 0},
             {"172 EXISTS\n", 0},
             {"* -1 EXISTS\n* OK it EXISTS\n* 5 EXISTS\n* 6 EXISTS\n", 5},
             {"* 99999999999999999999 EXISTS\n", 0},
         })
        EXPECT_EQ(existingMessages(lines), count) << lines;
}

TEST(ImapAnswers, GiveTheFoundUidsInReverseAndDoNotSortThem) {
    using Uids = std::vector<std::uint32_t>;
    for (const auto& [lines, uids] : std::vector<std::pair<std::string, Uids>>{
             {"* 3 EXISTS\n* SEARCH 2 84 882\n", {882, 84, 2}},
             {"* SEARCH 5 1 9 1\n", {1, 9, 1, 5}},
             {"* SEARCH\n", {}},
             {"", {}},
             {" * SEARCH 1\n* search 1\nSEARCH 1\n", {}},
             {"* SEARCH  1   2 \n", {2, 1}},
             {"* SEARCH 1 x 2x -3 +4 0 4294967295 4294967296 (MODSEQ 9) 6\n", {6, 4'294'967'295, 1}},
             {"* SEARCH 1\n* SEARCH 2\n", {1}},
         })
        EXPECT_EQ(foundUids(lines), uids) << lines;
}

TEST(ImapAnswers, ReadAMillionUids) {
    std::string line = "* SEARCH";
    for (int uid = 1; uid <= 1'000'000; ++uid) line += " " + std::to_string(uid);
    const auto uids = foundUids(line + "\n");
    ASSERT_EQ(uids.size(), 1'000'000U);
    EXPECT_EQ(uids.front(), 1'000'000U);
    EXPECT_EQ(uids.back(), 1U);
}

} // namespace
} // namespace morvex
