#include "tests/support/RelayClient.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <fstream>
#include <optional>
#include <spawn.h>
#include <sstream>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

using namespace morvex;

namespace {

std::string contentOf(const std::filesystem::path& file) {
    std::ostringstream content;
    content << std::ifstream{file}.rdbuf();
    return content.str();
}

/// `morvex-relay` as a process; its error output goes to a file.
class Program {
  public:
    explicit Program(std::vector<std::string> arguments, std::optional<int> errorOutput = std::nullopt) {
        int ends[2];
        EXPECT_EQ(pipe2(ends, O_CLOEXEC), 0);
        posix_spawn_file_actions_t actions;
        posix_spawn_file_actions_init(&actions);
        posix_spawn_file_actions_adddup2(&actions, ends[1], STDOUT_FILENO);
        if (errorOutput)
            posix_spawn_file_actions_adddup2(&actions, *errorOutput, STDERR_FILENO);
        else
            posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, errorFile().c_str(), O_WRONLY | O_CREAT,
                                             0600);
        arguments.insert(arguments.begin(), MORVEX_RELAY_PROGRAM);
        std::vector<char*> pointers;
        for (auto& argument : arguments) pointers.push_back(argument.data());
        pointers.push_back(nullptr);
        EXPECT_EQ(posix_spawn(&process_, MORVEX_RELAY_PROGRAM, &actions, nullptr, pointers.data(), environ),
                  0);
        posix_spawn_file_actions_destroy(&actions);
        close(ends[1]);
        output_ = fdopen(ends[0], "r");
    }

    ~Program() {
        if (process_ > 0) {
            kill(process_, SIGKILL);
            waitpid(process_, nullptr, 0);
        }
        std::fclose(output_);
    }

    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

    /// Without its end; empty at the end of the output.
    std::string line() {
        char text[512] = "";
        if (!std::fgets(text, sizeof text, output_)) return {};
        return std::string{text, std::char_traits<char>::length(text) - 1};
    }

    void signal(int number) const { kill(process_, number); }

    int exitCode() {
        int status = 0;
        waitpid(std::exchange(process_, 0), &status, 0);
        return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
    }

    std::string errors() { return contentOf(errorFile()); }

  private:
    std::filesystem::path errorFile() { return folder_.path() / "errors"; }

    TemporaryFolder folder_;
    pid_t process_ = 0;
    std::FILE* output_ = nullptr;
};

std::uint16_t portIn(const std::string& line) {
    return static_cast<std::uint16_t>(std::stoi(line.substr(line.rfind(':') + 1)));
}

} // namespace

TEST(RelayProgram, ServesUntilItIsTold) {
    for (const int number : {SIGTERM, SIGINT, SIGHUP}) {
        Program program{{"--listen", "127.0.0.1:0", "--db", ":memory:"}};
        const auto line = program.line();
        ASSERT_THAT(line, testing::StartsWith("listening on http://127.0.0.1:"));
        const auto pair = pairAt(portIn(line));
        DeviceSocket socket{portIn(line)};
        socket.logIn(pair, pair.mac, false);
        program.signal(number);
        EXPECT_EQ(socket.read(), std::nullopt);
        EXPECT_EQ(socket.closeCode(), 1001);
        EXPECT_EQ(program.exitCode(), 0);
        EXPECT_THAT(program.errors(),
                    testing::HasSubstr("device " + pair.mac.deviceID().rawValue.substr(0, 6)));
        EXPECT_THAT(program.errors(), testing::Not(testing::HasSubstr(pair.mac.deviceID().rawValue)));
        EXPECT_THAT(program.errors(), testing::Not(testing::HasSubstr(pair.mac.signingKey().text())));
    }
}

TEST(RelayProgram, LivesOnWhenItsTerminalClosesIfThatWasIgnored) {
    const auto before = std::signal(SIGHUP, SIG_IGN);
    Program program{{"--listen", "127.0.0.1:0", "--db", ":memory:"}};
    std::signal(SIGHUP, before);
    const auto port = portIn(program.line());
    program.signal(SIGHUP);
    const auto pair = pairAt(port);
    DeviceSocket socket{port};
    socket.logIn(pair, pair.mac, false);
    program.signal(SIGTERM);
    EXPECT_EQ(socket.read(), std::nullopt);
    EXPECT_EQ(socket.closeCode(), 1001);
    EXPECT_EQ(program.exitCode(), 0);
}

TEST(RelayProgram, ServesAndEndsWhenNobodyReadsItsLog) {
    int ends[2];
    ASSERT_EQ(pipe2(ends, O_CLOEXEC), 0);
    const int space = fcntl(ends[1], F_GETPIPE_SZ);
    const std::string full(static_cast<std::size_t>(space), 'x');
    ASSERT_EQ(write(ends[1], full.data(), full.size()), space);

    Program program{{"--listen", "127.0.0.1:0", "--db", ":memory:"}, ends[1]};
    const auto port = portIn(program.line());
    const auto pair = pairAt(port);
    DeviceSocket mac{port};
    mac.logIn(pair, pair.mac, false);
    DeviceSocket phone{port};
    phone.logIn(pair, pair.phone, true);
    phone.write(pair.fromPhone());
    while (mac.read() != pair.fromPhone()) {
    }
    program.signal(SIGTERM);
    EXPECT_EQ(program.exitCode(), 0);
    close(ends[0]);
    close(ends[1]);
}

TEST(RelayProgram, ServesOverTls) {
    TemporaryFolder folder;
    const auto certificate = (folder.path() / "certificate.pem").string();
    const auto key = (folder.path() / "key.pem").string();
    const auto command = "openssl req -x509 -newkey ed25519 -nodes -days 1 -subj /CN=localhost -keyout " +
                         key + " -out " + certificate + " 2>/dev/null";
    ASSERT_EQ(std::system(command.c_str()), 0);
    Program program{{"--listen", "127.0.0.1:0", "--db", ":memory:", "--cert", certificate, "--key", key}};
    const auto line = program.line();
    ASSERT_THAT(line, testing::StartsWith("listening on https://127.0.0.1:"));

    TestPair pair;
    const auto created = post(portIn(line), "/v1/pair/create", TestPair::create(pair.mac), true);
    ASSERT_EQ(created.status, 200U);
    pair.id = decode<ZalozitOdpoved>(created.body).value().pairID;
    DeviceSocket socket{portIn(line), true};
    socket.logIn(pair, pair.mac, false);
    EXPECT_EQ(post(portIn(line), "/v1/pair/create", "{}").status, 0U) << "plain HTTP gets no answer";
    program.signal(SIGTERM);
    EXPECT_EQ(socket.read(), std::nullopt);
    EXPECT_EQ(socket.closeCode(), 1001);
    EXPECT_EQ(program.exitCode(), 0);
}

TEST(RelayProgram, TakesAsManyConnectionsAsItIsTold) {
    Program program{{"--listen", "127.0.0.1:0", "--db", ":memory:", "--connections", "1"}};
    const auto port = portIn(program.line());
    {
        const auto pair = pairAt(port);
        DeviceSocket socket{port};
        socket.logIn(pair, pair.mac, false);
        EXPECT_EQ(post(port, "/v1/pair/create", "{}").status, 0U) << "closed at once";
    }
    program.signal(SIGTERM);
    EXPECT_EQ(program.exitCode(), 0);
}

TEST(RelayProgram, SaysThatTheSystemAllowsFewerOpenFilesThanItNeeds) {
    TemporaryFolder folder;
    const auto errors = folder.path() / "errors";
    const auto command = "ulimit -n 500; " MORVEX_RELAY_PROGRAM
                         " --listen 127.0.0.1:0 --db :memory: --connections 1000 2>" +
                         errors.string();
    const int status = std::system(command.c_str());
    EXPECT_EQ(WEXITSTATUS(status), 1);
    EXPECT_EQ(contentOf(errors), "morvex-relay: --connections 1000 needs 1064 open files, and this system "
                                 "allows 500 (ulimit -Hn)\n");
}

TEST(RelayProgram, ExplainsItself) {
    Program help{{"--help"}};
    EXPECT_EQ(help.line(), "Usage: morvex-relay [OPTION]...");
    EXPECT_EQ(help.exitCode(), 0);
    Program version{{"--version"}};
    EXPECT_THAT(version.line(), testing::MatchesRegex("morvex-relay [0-9.]+"));
    EXPECT_EQ(version.exitCode(), 0);
}

TEST(RelayProgram, EndsWithTwoForAWrongCommandLine) {
    Program program{{"--verbose"}};
    EXPECT_EQ(program.exitCode(), 2);
    EXPECT_EQ(program.errors(), "morvex-relay: unknown option '--verbose'\n");
}

TEST(RelayProgram, EndsWithOneForAPortInUse) {
    Program first{{"--listen", "127.0.0.1:0", "--db", ":memory:"}};
    const auto port = std::to_string(portIn(first.line()));
    Program second{{"--listen", "127.0.0.1:" + port, "--db", ":memory:"}};
    EXPECT_EQ(second.exitCode(), 1);
    EXPECT_EQ(second.errors(),
              "morvex-relay: cannot listen on 127.0.0.1 port " + port + ": Address already in use\n");
}

TEST(RelayProgram, EndsWithOneForADamagedDatabase) {
    TemporaryFolder folder;
    const auto file = (folder.path() / "relay.db").string();
    std::ofstream{file} << std::string(1000, 'x');
    Program program{{"--listen", "127.0.0.1:0", "--db", file}};
    EXPECT_EQ(program.exitCode(), 1);
    EXPECT_EQ(program.errors(),
              "morvex-relay: cannot use the database " + file + ": file is not a database\n");
}
