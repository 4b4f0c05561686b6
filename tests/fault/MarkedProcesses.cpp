#include "tests/fault/MarkedProcesses.h"

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sys/wait.h>

namespace morvex {

std::multimap<std::string, pid_t> processesMarked(const std::string& variable) {
    std::multimap<std::string, pid_t> found;
    const auto begin = variable + "=";
    for (const auto& entry : std::filesystem::directory_iterator("/proc")) {
        auto process = static_cast<pid_t>(std::atoi(entry.path().filename().c_str()));
        if (process <= 0) continue;
        // One that has ended has no environment any more.
        std::ifstream environment(entry.path() / "environ", std::ios::binary);
        for (std::string text; std::getline(environment, text, '\0');)
            if (text.starts_with(begin)) found.emplace(text.substr(begin.size()), process);
    }
    return found;
}

bool hasChildren() {
    siginfo_t info{};
    return ::waitid(P_ALL, 0, &info, WEXITED | WSTOPPED | WCONTINUED | WNOHANG | WNOWAIT) == 0 ||
           errno != ECHILD;
}

} // namespace morvex
