#include "platform/posix/base/LogQueue.h"

#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <csignal>
#include <fcntl.h>
#include <fstream>
#include <string>
#include <string_view>
#include <sys/resource.h>
#include <unistd.h>
#include <vector>

using namespace morvex;

namespace {

using std::chrono::minutes;

/// Both ends stay open: a log that hangs in a write may use its end as long as the program runs.
struct Pipe {
    int ends[2];

    Pipe() { EXPECT_EQ(pipe2(ends, O_CLOEXEC), 0); }

    [[nodiscard]] int in() const { return ends[1]; }

    /// Waits for one.
    [[nodiscard]] std::string line() const {
        std::string line;
        for (char byte = 0; ::read(ends[0], &byte, 1) == 1 && byte != '\n';) line += byte;
        return line;
    }
};

std::vector<std::string> linesOf(const std::filesystem::path& file) {
    std::ifstream stream{file};
    std::vector<std::string> lines;
    for (std::string line; std::getline(stream, line);) lines.push_back(line);
    return lines;
}

using Lines = std::vector<std::string>;

} // namespace

TEST(LogQueue, WritesLinesInOrder) {
    const Pipe pipe;
    LogQueue queue{pipe.in()};
    queue.write("one");
    queue.write(std::string(2000, 'x'));
    queue.write("two");
    EXPECT_EQ(pipe.line(), "one");
    EXPECT_EQ(pipe.line(), std::string(LogQueue::maxLine, 'x'));
    EXPECT_EQ(pipe.line(), "two");
}

TEST(LogQueue, HasItsOwnLengthOfLinesAndWordsOfWhatIsLost) {
    const Pipe pipe;
    LogQueue queue{pipe.in(), {.longest = 200'000, .lost = " řádků chybí"}};
    const std::string longest(200'000, 'x');
    for (int i = 0; i < 30; ++i) queue.write(longest);
    queue.write("last");
    std::size_t whole = 0;
    std::string line;
    for (line = pipe.line(); line == longest; line = pipe.line()) ++whole;
    // The number comes before the next line that is written, so among those that waited.
    EXPECT_LE(whole, LogQueue::maxBytes / longest.size() + 1);
    EXPECT_TRUE(line.ends_with(" řádků chybí")) << line;
}

TEST(LogQueue, AReaderThatStopsHoldsUpNobodyAndHearsHowMuchItMissed) {
    const Pipe pipe;
    LogQueue queue{pipe.in()};
    // More than the pipe and the queue hold together, before anything is read.
    constexpr std::size_t count = 100'000;
    for (std::size_t index = 0; index < count; ++index) queue.write(std::to_string(index));

    constexpr std::string_view notice = " log lines were lost";
    std::size_t lost = 0;
    std::vector<std::size_t> numbers;
    while (numbers.size() + lost < count) {
        const auto line = pipe.line();
        if (line.ends_with(notice))
            lost += std::stoul(line);
        else
            numbers.push_back(std::stoul(line));
    }
    EXPECT_GT(lost, 0U);
    EXPECT_GE(numbers.size(), LogQueue::maxLines);
    EXPECT_TRUE(std::ranges::is_sorted(numbers));
}

TEST(LogQueue, AReaderThatNeverReadsDoesNotHoldUpTheEnd) {
    static const Pipe pipe;
    LogQueue queue{pipe.in()};
    for (int index = 0; index < 10'000; ++index) queue.write(std::string(500, 'x'));
    EXPECT_FALSE(queue.drain(std::chrono::milliseconds{1}));
}

TEST(LogQueue, ComesBackAfterAFullDisk) {
    TemporaryFolder folder;
    const auto file = folder.path() / "log";
    const int descriptor = ::open("/dev/full", O_WRONLY | O_CLOEXEC);
    ASSERT_GE(descriptor, 0);
    {
        LogQueue queue{descriptor};
        queue.write("first");
        queue.write("second");
        ASSERT_TRUE(queue.drain(minutes{1}));
        const int place = ::open(file.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600);
        ASSERT_EQ(::dup2(place, descriptor), descriptor);
        ::close(place);
        queue.write("third");
        queue.write("fourth");
        ASSERT_TRUE(queue.drain(minutes{1}));
    }
    EXPECT_EQ(linesOf(file), (Lines{"2 log lines were lost", "third", "fourth"}));
}

TEST(LogQueue, BeginsALineAnewBehindOneThatWasCutShort) {
    TemporaryFolder folder;
    const auto file = folder.path() / "log";
    const int descriptor = ::open(file.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600);
    ASSERT_GE(descriptor, 0);
    const auto before = ::signal(SIGXFSZ, SIG_IGN);
    rlimit all{};
    ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &all), 0);
    LogQueue queue{descriptor};
    const rlimit four{.rlim_cur = 4, .rlim_max = all.rlim_max};
    ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &four), 0);
    queue.write("first");
    const bool isDrained = queue.drain(minutes{1});
    ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &all), 0);
    ::signal(SIGXFSZ, before);
    ASSERT_TRUE(isDrained);
    queue.write("second");
    ASSERT_TRUE(queue.drain(minutes{1}));
    EXPECT_EQ(linesOf(file), (Lines{"firs", "1 log lines were lost", "second"}));
}

TEST(LogQueue, AReaderThatIsGoneEndsNothing) {
    const Pipe pipe;
    ::close(pipe.ends[0]);
    const auto before = ::signal(SIGPIPE, SIG_IGN);
    LogQueue queue{pipe.in()};
    queue.write("nobody hears this");
    EXPECT_TRUE(queue.drain(minutes{1}));
    ::signal(SIGPIPE, before);
}
