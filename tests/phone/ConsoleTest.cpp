#include "phone/Console.h"

#include "foundation/ThreadExecutor.h"
#include "platform/memory/ManualClock.h"
#include "tests/support/Await.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <csignal>
#include <fcntl.h>
#include <fstream>
#include <pty.h>
#include <termios.h>
#include <thread>
#include <unistd.h>

namespace morvex {
namespace {

std::string name(const std::optional<Inbox::Event>& event) {
    if (!event) return "nothing";
    if (const auto* line = std::get_if<Inbox::Line>(&*event)) return "line " + line->text;
    return std::holds_alternative<Inbox::EndOfInput>(*event) ? "end" : "other";
}

/// A console over a pipe, running on a thread as it does on the main one.
class ConsoleTest : public testing::Test {
  protected:
    ConsoleTest() {
        std::array<int, 2> ends{};
        EXPECT_EQ(::pipe(ends.data()), 0);
        input = FileDescriptor(ends[0]);
        typing = FileDescriptor(ends[1]);
        console = std::make_unique<Console>(inbox, interruption, TerminalInput::create(input.get()).value());
        running = std::thread([this] { console->run(); });
    }

    ~ConsoleTest() override {
        console->finish();
        running.join();
    }

    void type(std::string_view text) {
        EXPECT_EQ(::write(typing.get(), text.data(), text.size()), static_cast<ssize_t>(text.size()));
    }

    std::string next() { return name(await(executor, inbox.next(std::nullopt))); }

    std::string askAndTake() {
        console->requestLine();
        return next();
    }

    ManualClock clock;
    std::stop_source interruption;
    Inbox inbox{clock, interruption.get_token()};
    FileDescriptor input;
    FileDescriptor typing;
    std::unique_ptr<Console> console;
    std::thread running;
    ThreadExecutor executor{"test"};
};

TEST_F(ConsoleTest, GivesOneLineForEachRequest) {
    type("první\ndru");
    EXPECT_EQ(askAndTake(), "line první");
    type("hý\n\nbez konce");
    EXPECT_EQ(askAndTake(), "line druhý");
    EXPECT_EQ(askAndTake(), "line ");
    typing = FileDescriptor();
    EXPECT_EQ(askAndTake(), "line bez konce");
    EXPECT_EQ(askAndTake(), "end");
    EXPECT_EQ(askAndTake(), "end");
}

TEST_F(ConsoleTest, APipeIsNobodyToAsk) {
    EXPECT_FALSE(console->isInteractive());
}

TEST(ConsoleTerminal, HidesWhatIsTypedUntilItIsShownAgain) {
    int master = -1;
    int terminal = -1;
    ASSERT_EQ(::openpty(&master, &terminal, nullptr, nullptr, nullptr), 0);
    const FileDescriptor keepsMaster(master);
    const FileDescriptor keepsTerminal(terminal);
    const auto echoes = [terminal] {
        termios settings{};
        EXPECT_EQ(::tcgetattr(terminal, &settings), 0);
        return (settings.c_lflag & ECHO) != 0;
    };
    ManualClock clock;
    std::stop_source interruption;
    Inbox inbox(clock, interruption.get_token());
    {
        Console console(inbox, interruption, TerminalInput::create(terminal).value());
        console.hideTyping();
        EXPECT_FALSE(echoes());
        console.showTyping();
        EXPECT_TRUE(echoes());
        console.hideTyping();
    }
    EXPECT_TRUE(echoes()) << "a program that ends leaves the terminal as it was";
}

TEST_F(ConsoleTest, AnEndlessLineEndsTheInput) {
    TemporaryFolder folder;
    const auto file = folder.path() / "long";
    std::ofstream(file) << std::string(1024 * 1024 + 4096, 'x') << "\nanother\n";
    // The console reads whatever its descriptor is; a pipe of that length would need a writer beside it.
    FileDescriptor content(::open(file.c_str(), O_RDONLY | O_CLOEXEC));
    ASSERT_GE(::dup2(content.get(), input.get()), 0);
    EXPECT_EQ(askAndTake(), "end");
}

TEST_F(ConsoleTest, ASignalInterruptsWhatWaits) {
    ::raise(SIGINT);
    EXPECT_EQ(next(), "nothing");
    EXPECT_TRUE(inbox.isInterrupted());
}

} // namespace
} // namespace morvex
