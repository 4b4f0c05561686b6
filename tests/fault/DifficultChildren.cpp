#include "tests/fault/DifficultChildren.h"

#include <csignal>
#include <fstream>

namespace morvex {

namespace {

namespace fs = std::filesystem;
using Ends = DifficultChild::Ends;
using Leaves = DifficultChild::Leaves;
using Inherits = DifficultChild::Inherits;

OutsideProgram shell(const std::string& script) {
    return {.binary = "/bin/bash", .args = {"-c", script}, .cwd = {}, .env = {{"PATH", "/usr/bin:/bin"}}};
}

OutsideProgram program(const fs::path& path, std::vector<std::string> args = {}) {
    return {.binary = path.string(), .args = std::move(args), .cwd = {}, .env = {{"PATH", "/usr/bin:/bin"}}};
}

fs::path script(const fs::path& path, const std::string& text) {
    std::ofstream(path) << text;
    fs::permissions(path, fs::perms::owner_all);
    return path;
}

std::vector<DifficultChild> quick() {
    return {
        {"ends at once", shell("exit 0"), Ends::byItself, 0},
        {"ends with the highest status", shell("exit 255"), Ends::byItself, 255},
        {"ends as if it were not found", shell("exit 127"), Ends::byItself, 127},
        {"ends without having read or written", program("/bin/true"), Ends::byItself, 0},
        {"closes its outputs and ends", shell("exec >&- 2>&-; exit 4"), Ends::byItself, 4},
        {"closes its input", shell("exec <&-; cat; echo $?"), Ends::byItself, 0},
        {"reads its input to the end", shell("cat; echo end"), Ends::byItself, 0},
        {"asks the terminal", shell("read x </dev/tty; exit 5"), Ends::byItself, 5},
        {"becomes another program", shell("echo first; exec /bin/echo second"), Ends::byItself, 0},
        {"writes half characters", shell(R"(printf '\303'; printf '\251\n\342\202'; printf '\254\n\360')"),
         Ends::byItself, 0},
        {"writes bytes that are no text", shell(R"(printf '\377\376\0\n\300\257')"), Ends::byItself, 0},
        {"writes byte by byte", shell("for i in {1..200}; do printf x; printf y >&2; done"), Ends::byItself,
         0},
        {"writes a megabyte without a line break", shell("head -c 1000000 /dev/zero"), Ends::byItself, 0},
        {"writes many lines to both outputs", shell("for i in {1..3000}; do echo $i; echo $i >&2; done"),
         Ends::byItself, 0},
        {"leaves the reaping of its children to others", shell("for i in {1..20}; do true & done; exit 6"),
         Ends::byItself, 6},
        {"starts a line of children, each of which starts the next and ends",
         shell("f() { [ $1 = 0 ] || { f $(($1 - 1)) & }; }; f 20"), Ends::byItself, 0},
    };
}

std::vector<DifficultChild> endless() {
    return {
        {"sleeps", shell("echo ready; exec sleep 1000"), Ends::whenStopped},
        {"ignores SIGTERM", shell("trap '' TERM; echo ready; while :; do sleep 0.2; done"),
         Ends::whenStopped},
        {"ignores every signal that can be ignored",
         shell("trap '' {1..8} {10..18} {20..31}; echo ready; while :; do sleep 0.2; done"),
         Ends::whenStopped},
        {"takes its time after SIGTERM",
         shell("trap 'sleep 0.05; echo late; exit 7' TERM; while :; do sleep 0.01; done"), Ends::whenStopped},
        {"starts another child when it is asked to end",
         shell("trap 'sleep 1000 & exit 8' TERM; while :; do sleep 0.01; done"),
         Ends::whenStopped,
         {},
         Leaves::unlessStopped},
        {"stops itself", shell("echo ready; kill -STOP $$; sleep 1000"), Ends::whenStopped},
        {"has a stopped child",
         shell("sleep 1000 & kill -STOP $!; wait"),
         Ends::whenStopped,
         {},
         Leaves::unlessStopped},
        {"closes its outputs and lives on", shell("exec >&- 2>&-; while :; do sleep 0.2; done"),
         Ends::whenStopped},
        {"floods standard output", shell("exec yes"), Ends::whenStopped},
        {"floods standard error", shell("exec yes >&2"), Ends::whenStopped},
        {"floods both without a line break", shell("cat /dev/zero >&2 & cat /dev/zero"), Ends::whenStopped},
        {"turns in a circle", shell("while :; do :; done"), Ends::whenStopped},
        {"forks a tree", shell("f() { [ $1 = 0 ] && exec sleep 1000; f $(($1 - 1)) & f $(($1 - 1)); }; f 4"),
         Ends::whenStopped},
        {"starts children without end", shell("while :; do /bin/true & wait; done"), Ends::whenStopped},
        {"has a child in a session of its own",
         shell("setsid bash -c 'echo ready; exec sleep 1000' & wait"),
         Ends::whenStopped,
         {},
         Leaves::unlessStopped},
        {"has a child in a session of its own that ignores SIGTERM",
         shell("setsid bash -c \"trap '' TERM; echo ready; while :; do sleep 0.2; done\" & wait"),
         Ends::whenStopped,
         {},
         Leaves::unlessStopped},
        {"has children in groups of their own",
         shell("set -m; sleep 1000 & sleep 1001 & echo ready; wait"),
         Ends::whenStopped,
         {},
         Leaves::unlessStopped},
        {"has a child in a session within a session",
         shell("setsid bash -c 'setsid bash -c \"echo ready; exec sleep 1000\" & wait' & wait"),
         Ends::whenStopped,
         {},
         Leaves::unlessStopped},
        {"starts sessions without end",
         shell("while :; do setsid sleep 1000 & done"),
         Ends::whenStopped,
         {},
         Leaves::unlessStopped},
        {"has a child that ignores SIGTERM and holds the outputs",
         shell("(trap '' TERM; exec sleep 1000) & echo ready; wait"),
         Ends::whenStopped,
         {},
         Leaves::unlessStopped},
        {"clears its environment",
         shell("exec env -i bash -c 'env -i sleep 1000 & echo ready; exec sleep 1001'"), Ends::whenStopped},
        {"has a child without its environment in a session of its own",
         shell("env -i setsid bash -c 'echo ready; exec sleep 1000' & wait"),
         Ends::whenStopped,
         {},
         Leaves::unlessStopped,
         Inherits::nothing},
        {"starts a daemon and stays",
         shell("(setsid bash -c 'echo ready; exec sleep 1000 >/dev/null 2>&1' &); exec sleep 1001"),
         Ends::whenStopped,
         {},
         Leaves::daemons},
    };
}

std::vector<DifficultChild> leaving() {
    return {
        {"leaves a child that holds the outputs", shell("sleep 1000 & exit 9"), Ends::byItself, 9,
         Leaves::unlessStopped},
        {"leaves a child without the outputs", shell("sleep 1000 >/dev/null 2>&1 & exit 9"), Ends::byItself,
         9, Leaves::unlessStopped},
        {"leaves a child in a session of its own that holds the outputs", shell("setsid sleep 1000 & exit 9"),
         Ends::byItself, 9, Leaves::daemons},
        {"leaves a child that floods", shell("yes & exit 9"), Ends::byItself, 9, Leaves::unlessStopped},
        {"leaves a daemon", shell("(setsid sleep 1000 >/dev/null 2>&1 &); exit 9"), Ends::byItself, 9,
         Leaves::daemons},
        {"leaves a daemon without its environment",
         shell("(env -i setsid sleep 1000 >/dev/null 2>&1 &); exit 9"), Ends::byItself, 9, Leaves::daemons,
         Inherits::nothing},
        {"leaves a child that writes later", shell("(sleep 0.02; echo later) & exit 9"), Ends::byItself, 9},
    };
}

std::vector<DifficultChild> dying() {
    std::vector<DifficultChild> all;
    for (int signal = 1; signal < SIGRTMIN - 2; ++signal)
        if (signal != SIGSTOP && signal != SIGTSTP && signal != SIGTTIN && signal != SIGTTOU &&
            signal != SIGCHLD && signal != SIGCONT && signal != SIGURG && signal != SIGWINCH)
            all.push_back({"dies of signal " + std::to_string(signal),
                           program("/usr/bin/env", {"--default-signal", "sh", "-c",
                                                    "ulimit -c 0; kill -" + std::to_string(signal) + " $$"}),
                           Ends::byItself, signal});
    return all;
}

std::vector<DifficultChild> missing(const fs::path& folder) {
    auto plain = folder / "plain";
    std::ofstream(plain) << "text";
    auto nul = shell("exit 0");
    nul.args.emplace_back("a\0b", 3);
    auto lost = shell("exit 0");
    lost.cwd = (folder / "gone").string();
    fs::create_symlink("loop", folder / "loop");
    return {
        {"is not there", program(folder / "gone"), Ends::neverBegins},
        {"may not be executed", program(plain), Ends::neverBegins},
        {"is a folder", program(folder), Ends::neverBegins},
        {"lies below a file", program(plain / "below"), Ends::neverBegins},
        {"is a link to itself", program(folder / "loop"), Ends::neverBegins},
        {"is a script without an interpreter", program(script(folder / "none", "exit 0")), Ends::neverBegins},
        {"is a script of a lost interpreter", program(script(folder / "lost", "#!/gone\n")),
         Ends::neverBegins},
        {"is empty", program(script(folder / "empty", "")), Ends::neverBegins},
        {"has too long an argument", program("/bin/true", {std::string(4 << 20, 'x')}), Ends::neverBegins},
        {"has an argument with a NUL byte", nul, Ends::neverBegins},
        {"is to run in a folder that is not there", lost, Ends::neverBegins},
    };
}

/// Children that change the folder they run in; each run creates it anew.
std::vector<DifficultChild> vanishing(const fs::path& folder) {
    auto inLost = shell("d=$(mktemp -d) && cd $d && rmdir $d && pwd && ls && exit 3");
    return {
        {"is deleted while it runs",
         shell("t=" + (folder / "tool-").string() +
               "$$; cp /bin/sleep $t; $t 1000 & until [ /proc/$!/exe -ef $t ]; do :; done; rm $t; wait"),
         Ends::whenStopped},
        {"deletes its own script",
         shell("t=" + (folder / "script-").string() + "$$; printf 'rm $0; exit 3' >$t; exec bash $t"),
         Ends::byItself, 3},
        {"loses its working folder", inLost, Ends::byItself, 3},
    };
}

} // namespace

std::vector<DifficultChild> difficultChildren(const fs::path& folder) {
    std::vector<DifficultChild> all;
    for (auto part : {quick(), endless(), leaving(), dying(), missing(folder), vanishing(folder)})
        all.insert(all.end(), part.begin(), part.end());
    return all;
}

} // namespace morvex
