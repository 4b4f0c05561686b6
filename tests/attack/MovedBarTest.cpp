#include "tests/attack/CraftedSender.h"
#include "tests/support/Effort.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace morvex {
namespace {

const Date now = dateFromSeconds(1'795'000'000);

/// Every pair of identities whose joint text in the associated data is this one.
std::vector<std::pair<std::string, std::string>> splitsOf(const std::string& joint) {
    std::vector<std::pair<std::string, std::string>> splits;
    for (auto bar = joint.find('|'); bar != std::string::npos; bar = joint.find('|', bar + 1))
        splits.emplace_back(joint.substr(0, bar), joint.substr(bar + 1));
    return splits;
}

/// A phone uses bars in its identities, and a relay moves the bar that separates them.
TEST(MovedBar, OpensUnderNoOtherRequest) {
    const CraftedSender sender;
    std::uint64_t counter = 0;
    std::size_t tried = 0;
    for (std::size_t length = 2; length <= cases(6, 11); ++length)
        for (std::size_t bars = 1; bars < std::size_t{1} << length; ++bars) {
            std::string joint;
            for (std::size_t at = 0; at < length; ++at) joint += bars >> at & 1 ? '|' : 'a';
            const auto splits = splitsOf(joint);
            for (const auto& [msgID, requestID] : splits) {
                auto receiver = sender.receiver();
                const auto sealed = sender.seal(++counter, msgID, now, requestID);
                for (const auto& [movedID, movedRequest] : splits) {
                    auto moved = sealed;
                    moved.msgID = movedID;
                    moved.requestID = movedRequest;
                    const bool isOpened = receiver.open(moved, now).has_value();
                    EXPECT_EQ(isOpened, splits.size() == 1) << joint << " as " << movedID;
                    ++tried;
                }
            }
        }
    tell("a bar moved between the identities of an envelope", tried, "none opened where there is a choice");
}

TEST(MovedBar, ARefusedOneChangesNothingInTheSession) {
    const CraftedSender sender;
    auto receiver = sender.receiver();
    const auto refused = receiver.open(sender.seal(2, "M", now, "a|b"), now);
    ASSERT_FALSE(refused);
    EXPECT_TRUE(refused.error().as<AmbiguousIdentity>());
    EXPECT_TRUE(receiver.open(sender.seal(1, "M", now, "ab"), now));
}

} // namespace
} // namespace morvex
