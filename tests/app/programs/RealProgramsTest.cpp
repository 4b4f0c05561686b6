#include "platform/posix/OwnEnvironment.h"
#include "shared/base/SystemError.h"
#include "shared/wire/TalkSpanError.h"
#include "tests/app/programs/RealProgramsFixture.h"

#include <csignal>
#include <fcntl.h>
#include <fstream>

namespace morvex {
namespace {

using namespace std::chrono_literals;

std::string failed(const std::string& tool, int code) {
    return TalkSpanError{TalkSpanError::ToolFailed{
                             tool, Sentence("Nepodařilo se spustit: " + SystemError{code}.popis().czech())}}
        .popis()
        .czech();
}

TEST_F(RealProgramsTest, ArgumentsPassAsTheyAreWithoutAShell) {
    auto result = programs.run(
        {.binary = "/usr/bin/printf", .args = {"%s|", "$HOME", "a b", "*", ";ls", "", "`id`", "žluť", "-n"}});
    EXPECT_EQ(result.value().vystup, "$HOME|a b|*|;ls||`id`|žluť|-n|");
}

TEST_F(RealProgramsTest, TheEnvironmentIsTheGivenOneAlone) {
    auto result = programs.run({.binary = "/usr/bin/env", .env = {{"A", "1"}, {"B", "x=y"}}});
    EXPECT_EQ(result.value().vystup, "A=1\nB=x=y\n");
}

TEST_F(RealProgramsTest, TheWorkingFolderIsTheGivenOneOrTheInheritedOne) {
    OutsideProgram program{.binary = "/bin/pwd", .cwd = folder.path().string()};
    EXPECT_EQ(programs.run(program).value().vystup, folder.path().string() + "\n");
    program.cwd.reset();
    EXPECT_EQ(programs.run(program).value().vystup, std::filesystem::current_path().string() + "\n");
}

TEST_F(RealProgramsTest, AToolThatAsksFindsStandardInputAtItsEnd) {
    auto result = shell("read answer; echo \"$? <$answer>\"");
    EXPECT_EQ(result.vystup, "1 <>\n");
}

TEST_F(RealProgramsTest, TheStatusIsThatOfTheProgramOrTheNumberOfItsSignal) {
    EXPECT_EQ(shell("exit 0").navratovyKod, 0);
    EXPECT_EQ(shell("exit 3").navratovyKod, 3);
    EXPECT_EQ(shell("exit 255").navratovyKod, 255);
    EXPECT_EQ(shell("kill -KILL $$").navratovyKod, SIGKILL);
    EXPECT_EQ(shell("kill -SEGV $$").navratovyKod, SIGSEGV);
}

TEST_F(RealProgramsTest, BothStreamsComeApartAndWhole) {
    auto result = shell("echo out; echo err >&2; printf last");
    EXPECT_EQ(result.vystup, "out\nlast");
    EXPECT_EQ(result.chyby, "err\n");
}

TEST_F(RealProgramsTest, NoOutputIsEmptyText) {
    auto result = shell("exec >&- 2>&-; exit 4");
    EXPECT_EQ(result.vystup + result.chyby, "");
    EXPECT_EQ(result.navratovyKod, 4);
}

TEST_F(RealProgramsTest, ALaunchThatFailsSaysWhy) {
    auto plain = (folder.path() / "plain").string();
    std::ofstream(plain) << "text";
    auto noProgram = (folder.path() / "no-program").string();
    std::ofstream(noProgram) << "text";
    std::filesystem::permissions(noProgram, std::filesystem::perms::owner_all);
    auto lost = (folder.path() / "lost").string();
    std::ofstream(lost) << "#!/nonexistent/interpreter\n";
    std::filesystem::permissions(lost, std::filesystem::perms::owner_all);

    struct Row {
        std::string binary;
        int code;
    };

    const Row rows[] = {{"/nonexistent/tool", ENOENT}, {plain, EACCES}, {folder.path().string(), EACCES},
                        {noProgram, ENOEXEC},          {lost, ENOENT},  {"", ENOENT},
                        {plain + "/below", ENOTDIR}};
    for (const auto& row : rows) {
        auto name = row.binary.substr(row.binary.find_last_of('/') + 1);
        EXPECT_EQ(launchProblem({.binary = row.binary}), failed(name, row.code)) << row.binary;
    }
    EXPECT_EQ(launchProblem({.binary = "/bin/true", .cwd = "/nonexistent"}), failed("true", ENOENT));
    EXPECT_EQ(launchProblem({.binary = "/bin/true", .args = {std::string(4 << 20, 'x')}}),
              failed("true", E2BIG));
    EXPECT_FALSE(hasChildren());
}

TEST_F(RealProgramsTest, LinesComeWhileTheProgramRuns) {
    auto gate = fifo();
    auto run = programs.begin("echo first; read x <" + gate + "; echo second");
    run.lines->waitFor("first");
    EXPECT_EQ(run.lines->all(), std::vector<std::string>{"first"});
    std::ofstream(gate) << "go\n";
    EXPECT_EQ(run.end().vystup, "first\nsecond\n");
    EXPECT_EQ(run.lines->all(), (std::vector<std::string>{"first", "second"}));
}

TEST_F(RealProgramsTest, ABinaryThatVanishedSinceItWasFoundFailsTheLaunch) {
    auto tool = folder.path() / "tool";
    std::filesystem::copy_file("/bin/true", tool);
    EXPECT_EQ(launchProblem({.binary = tool.string()}), "");
    std::filesystem::remove(tool);
    EXPECT_EQ(launchProblem({.binary = tool.string()}), failed("tool", ENOENT));
}

TEST_F(RealProgramsTest, ATextWithANulByteIsNeverCutForTheChild) {
    const std::string cut("-delete\0x", 9);
    for (const OutsideProgram& program : {OutsideProgram{.binary = "/bin/echo", .args = {cut}},
                                          OutsideProgram{.binary = "/bin/echo", .cwd = "/tmp" + cut},
                                          OutsideProgram{.binary = "/bin/echo", .env = {{"A", cut}}}})
        EXPECT_EQ(launchProblem(program), failed("echo", EINVAL));
}

TEST_F(RealProgramsTest, TheChildGetsNoOpenFileAndNoSignalSetting) {
    FileDescriptor leaking(::open("/dev/null", O_RDONLY)); // NOLINT: without O_CLOEXEC on purpose
    sigset_t blocked;
    sigset_t before;
    sigemptyset(&blocked);
    sigaddset(&blocked, SIGTERM);
    ::pthread_sigmask(SIG_BLOCK, &blocked, &before);
    auto* handler = std::signal(SIGPIPE, SIG_IGN);
    RealPrograms withThisMask;
    auto result =
        withThisMask
            .run(RealPrograms::shell("for n in $(seq 3 99); do [ -e /proc/self/fd/$n ] && echo $n; done; "
                                     "grep -E 'Sig(Blk|Ign)' /proc/self/status"))
            .value();
    std::signal(SIGPIPE, handler);
    ::pthread_sigmask(SIG_SETMASK, &before, nullptr);
    // The C library keeps two high signals for itself, whose setting it does not let anybody touch.
    EXPECT_TRUE(result.vystup.starts_with("SigBlk:\t0000000000000000\nSigIgn:\t")) << result.vystup;
    EXPECT_TRUE(result.vystup.ends_with("0000000\n")) << result.vystup;
}

TEST_F(RealProgramsTest, TheChildLeadsASessionOfItsOwnWithoutATerminal) {
    std::istringstream stat(programs.run({.binary = "/bin/cat", .args = {"/proc/self/stat"}}).value().vystup);
    int pid = 0;
    int parent = 0;
    int group = 0;
    int session = 0;
    int terminal = -1;
    std::string skipped;
    stat >> pid >> skipped >> skipped >> parent >> group >> session >> terminal;
    EXPECT_EQ(parent, ::getpid());
    EXPECT_EQ(group, pid);
    EXPECT_EQ(session, pid);
    EXPECT_EQ(terminal, 0);
    EXPECT_EQ(shell("echo x >/dev/tty || echo none").vystup, "none\n");
}

TEST_F(RealProgramsTest, AProgramThatHeedsSigtermEndsAtTheLimit) {
    auto run = programs.begin("trap 'echo asked; exit 7' TERM; echo ready; while :; do sleep 1; done");
    run.lines->waitFor("ready");
    programs.passLimit();
    auto result = run.end();
    EXPECT_TRUE(result.vyprselCas);
    EXPECT_EQ(result.navratovyKod, 7);
    EXPECT_EQ(result.vystup, "ready\nasked\n");
}

TEST_F(RealProgramsTest, AProgramThatIgnoresSigtermIsKilledFourSecondsAfterTheLimit) {
    auto run = programs.begin("trap 'echo asked' TERM; echo ready; while :; do sleep 1; done");
    run.lines->waitFor("ready");
    programs.passLimit();
    run.lines->waitFor("asked");
    programs.clock.advance(4s);
    auto result = run.end();
    EXPECT_TRUE(result.vyprselCas);
    EXPECT_FALSE(result.zruseno);
    EXPECT_EQ(result.navratovyKod, SIGKILL);
}

TEST_F(RealProgramsTest, AStoppedProgramIsKilledByTheSecondStage) {
    auto run = programs.begin("echo ready; kill -STOP $$; echo never");
    run.lines->waitFor("ready");
    EXPECT_TRUE(run.runner->zrusit());
    programs.clock.advance(4s);
    auto result = run.end();
    EXPECT_TRUE(result.zruseno);
    EXPECT_TRUE(result.navratovyKod == SIGKILL || result.navratovyKod == SIGTERM);
    EXPECT_EQ(result.vystup, "ready\n");
}

TEST_F(RealProgramsTest, ACancelEndsAProgramAndItsGroupAndOnlyOnce) {
    auto run = programs.begin("sleep 1000 & echo ready; wait");
    run.lines->waitFor("ready");
    EXPECT_TRUE(run.runner->zrusit());
    // The sleeping grandchild holds the pipe: only because it is gone does the run end while time stands
    // still.
    auto result = run.end();
    EXPECT_TRUE(result.zruseno);
    EXPECT_EQ(result.navratovyKod, SIGTERM);
    EXPECT_FALSE(run.runner->zrusit());
}

/// The most memory that this process has held since it was last forgotten, in KiB.
long mostMemory() {
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);)
        if (line.starts_with("VmHWM:")) return std::stol(line.substr(line.find_first_of("0123456789")));
    return -1;
}

void forgetMostMemory() {
    std::ofstream("/proc/self/clear_refs") << "5";
}

TEST_F(RealProgramsTest, AGigabyteOfOutputPassesInBoundedMemory) {
    forgetMostMemory();
    auto before = mostMemory();
    auto result =
        programs.run(RealPrograms::shell("head -c 1073741824 /dev/zero; echo done >&2"), {}, {.vystup = 10});
    EXPECT_EQ(result.value().vystup, std::string(10, '\0'));
    EXPECT_EQ(result.value().chyby, "done\n");
    EXPECT_GT(before, 0);
    EXPECT_LT(mostMemory() - before, 64L * 1024);
}

TEST_F(RealProgramsTest, AnEndlessWriterIsStoppedAtTheLimit) {
    auto run = programs.begin("yes");
    run.lines->waitFor("y");
    programs.passLimit();
    EXPECT_EQ(run.end().navratovyKod, SIGTERM);
}

TEST_F(RealProgramsTest, TheOwnEnvironmentIsThatOfThisProcess) {
    ::setenv("MORVEX_TEST_VARIABLE", "a=b", 1);
    EXPECT_EQ(ownEnvironment().at("MORVEX_TEST_VARIABLE"), "a=b");
    ::unsetenv("MORVEX_TEST_VARIABLE");
    EXPECT_FALSE(ownEnvironment().contains("MORVEX_TEST_VARIABLE"));
}

} // namespace
} // namespace morvex
