#include "platform/linux/Descendants.h"

#include "foundation/AtomicFile.h"

#include <filesystem>
#include <map>
#include <sstream>
#include <string>
#include <sys/syscall.h>
#include <system_error>
#include <unistd.h>

namespace morvex {

namespace {

struct Kinship {
    pid_t parent = 0;
    pid_t group = 0;
    bool operator==(const Kinship&) const = default;
};

/// As proc(5) has it: state, parent and group follow the name, which stands in brackets and may hold any.
Kinship kinshipOf(pid_t process) {
    constexpr std::size_t longest = 4096;
    Kinship kinship;
    auto status = readWhole("/proc/" + std::to_string(process) + "/stat", longest);
    if (!status || !*status) return kinship;
    std::string text(asText(**status));
    std::istringstream fields(text.substr(text.rfind(')') + 1));
    char state = 0;
    fields >> state >> kinship.parent >> kinship.group;
    return kinship;
}

struct Process {
    pid_t number = 0;
    Kinship kinship;
};

std::multimap<pid_t, Process> processesByParent() {
    std::multimap<pid_t, Process> all;
    std::error_code error;
    std::filesystem::directory_iterator entry("/proc", error);
    for (; !error && entry != std::filesystem::directory_iterator(); entry.increment(error)) {
        auto number = static_cast<pid_t>(std::atoi(entry->path().filename().c_str()));
        if (number <= 0) continue;
        auto kinship = kinshipOf(number);
        all.emplace(kinship.parent, Process{number, kinship});
    }
    return all;
}

} // namespace

std::vector<FileDescriptor> descendantsOutsideGroup(pid_t leader) {
    auto processes = processesByParent();
    std::vector<FileDescriptor> found;
    std::vector<pid_t> parents{leader};
    for (std::size_t i = 0; i < parents.size(); ++i) {
        auto [first, last] = processes.equal_range(parents[i]);
        for (auto child = first; child != last; ++child) {
            const auto& [number, kinship] = child->second;
            parents.push_back(number);
            if (kinship.group == leader) continue;
            FileDescriptor opened(static_cast<int>(::syscall(SYS_pidfd_open, number, 0)));
            // The number may have passed to another process since it was read.
            if (opened && kinshipOf(number) == kinship) found.push_back(std::move(opened));
        }
        processes.erase(first, last);
    }
    return found;
}

} // namespace morvex
