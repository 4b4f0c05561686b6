#include "tests/fault/MarkedProcesses.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>

namespace morvex {

std::map<pid_t, std::string> processesMarked(const std::string& variable) {
    std::map<pid_t, std::string> found;
    const auto begin = variable + "=";
    for (const auto& entry : std::filesystem::directory_iterator("/proc")) {
        auto process = static_cast<pid_t>(std::atoi(entry.path().filename().c_str()));
        if (process <= 0) continue;
        // One that has ended has no environment any more.
        std::ifstream environment(entry.path() / "environ", std::ios::binary);
        for (std::string text; std::getline(environment, text, '\0');)
            if (text.starts_with(begin)) found.emplace(process, text.substr(begin.size()));
    }
    return found;
}

} // namespace morvex
