#include "tests/fault/Orphans.h"

#include "shared/base/Require.h"

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace morvex {

namespace {

enum class Of { living, all };

/// Format of proc(5): state and parent follow the name, which is in brackets.
bool isChild(const std::filesystem::path& process, pid_t parent, Of which) {
    std::ifstream file(process / "stat");
    std::string text;
    std::getline(file, text, '\0');
    if (!text.contains(')')) return false;
    std::istringstream fields(text.substr(text.rfind(')') + 1));
    char state = 0;
    pid_t its = 0;
    fields >> state >> its;
    const bool isDead = state == 'Z' || state == 'X';
    return its == parent && (which == Of::all || !isDead);
}

std::set<pid_t> childrenOf(pid_t parent, Of which) {
    std::set<pid_t> found;
    for (const auto& entry : std::filesystem::directory_iterator("/proc")) {
        auto process = static_cast<pid_t>(std::atoi(entry.path().filename().c_str()));
        if (process > 0 && isChild(entry.path(), parent, which)) found.insert(process);
    }
    return found;
}

[[noreturn]] void runAndEnd(const std::function<bool()>& body) {
    // If the tests are killed, this process must end, too.
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    const bool isDone = body();
    std::exit(isDone ? EXIT_SUCCESS : EXIT_FAILURE); // exit runs the checks of the sanitizers
}

} // namespace

bool succeedsAboveOrphans(const std::function<bool()>& body) {
    require(::prctl(PR_SET_CHILD_SUBREAPER, 1) == 0, "orphans cannot be adopted");
    std::fflush(nullptr);
    const auto child = ::fork();
    require(child >= 0, "no process for the test");
    if (child == 0) runAndEnd(body);
    int status = 0;
    while (::wait(&status) != child) {
    }
    ::prctl(PR_SET_CHILD_SUBREAPER, 0);
    return status == 0;
}

std::set<pid_t> livingOrphans() {
    auto found = childrenOf(::getppid(), Of::living);
    found.erase(::getpid());
    return found;
}

std::set<pid_t> ownChildren() {
    return childrenOf(::getpid(), Of::all);
}

} // namespace morvex
