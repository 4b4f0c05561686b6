#include "tests/support/CompanionHarness.h"
#include "tests/support/Effort.h"

#include <filesystem>
#include <vector>

namespace morvex {
namespace {

/// The relay forwards the hellos and then withholds the first messages.
class DeletedMessages : public CompanionHarness {
  protected:
    static constexpr std::size_t messages = 6;

    static std::string nameOf(std::size_t deleted, std::size_t message) {
        return std::to_string(deleted) + "-" + std::to_string(message) + ".txt";
    }

    std::vector<Envelope> sealWrites(std::size_t deleted) {
        std::vector<Envelope> sealed;
        for (std::size_t i = 0; i < messages; ++i)
            sealed.push_back(
                phone.seal({MacPayload::ToolCall{"mac.files.write", R"({"path":")" + nameOf(deleted, i) +
                                                                        R"(","content":"x"})"}},
                           "req-" + std::to_string(i)));
        return sealed;
    }

    std::vector<std::string> answeredRequests() {
        std::vector<std::string> requests;
        for (const auto& received : phone.take())
            if (received.payload.as<MacPayload::ToolResult>()) requests.push_back(received.requestID);
        return requests;
    }
};

TEST_F(DeletedMessages, WereNotDoneAreNotAnsweredAndCannotBeBroughtLater) {
    for (std::size_t deleted = 1; deleted <= messages; ++deleted) {
        startSecured();
        auto folder = allowFolder("Složka " + std::to_string(deleted));
        auto sealed = sealWrites(deleted);
        std::vector<std::string> expected;
        for (std::size_t i = deleted; i < messages; ++i) {
            phone.deliver({RelayMessage::Forward{sealed[i]}});
            expected.push_back("req-" + std::to_string(i));
        }
        executor.runUntilIdle();
        EXPECT_EQ(answeredRequests(), expected) << "the phone notices what has no answer";
        if (deleted < messages)
            for (std::size_t i = 0; i < deleted; ++i) phone.deliver({RelayMessage::Forward{sealed[i]}});
        executor.runUntilIdle();
        EXPECT_EQ(answeredRequests(), std::vector<std::string>{});
        for (std::size_t i = 0; i < messages; ++i)
            EXPECT_EQ(std::filesystem::exists(folder + "/" + nameOf(deleted, i)), i >= deleted) << i;
        EXPECT_EQ(trouble(), "none");
        EXPECT_TRUE(call("mac.status", "{}").ok);
        end();
        defaults = {};
    }
    tell("deletions after a handshake, from the phone", messages,
         "nothing deleted was done or answered, late ones refused");
}

} // namespace
} // namespace morvex
