#include "platform/linux/Descendants.h"

#include "platform/posix/base/AtomicFile.h"
#include "platform/posix/base/FileDescriptor.h"

#include <csignal>
#include <filesystem>
#include <map>
#include <sstream>
#include <string>
#include <sys/syscall.h>
#include <system_error>
#include <unistd.h>
#include <vector>

namespace morvex {

namespace {

using Process = Descendants::Process;

/// A process stops only when the system next schedules it, so several rounds are needed. The limit is for
/// processes that others continue again and again.
constexpr int mostRounds = 100;

struct Status {
    char state = 0;
    pid_t parent = 0;
    pid_t group = 0;
    pid_t session = 0;
    unsigned long long start = 0;

    /// False if it is stopped, dead, or waiting for a vforked child to start another program.
    [[nodiscard]] bool runs() const { return state == 'R' || state == 'S'; }
};

/// Parses the fields of proc(5) after the name; the name is in brackets and may itself contain brackets.
Status statusOf(pid_t process) {
    constexpr std::size_t longest = 4096;
    constexpr int fieldsBeforeStart = 15;
    Status status;
    auto file = readWhole("/proc/" + std::to_string(process) + "/stat", longest);
    if (!file || !*file) return status;
    std::string text(asText(**file));
    std::istringstream fields(text.substr(text.rfind(')') + 1));
    fields >> status.state >> status.parent >> status.group >> status.session;
    std::string passed;
    for (int i = 0; i < fieldsBeforeStart; ++i) fields >> passed;
    fields >> status.start;
    return status;
}

std::map<Process, Status> allProcesses() {
    std::map<Process, Status> all;
    std::error_code error;
    std::filesystem::directory_iterator entry("/proc", error);
    for (; !error && entry != std::filesystem::directory_iterator(); entry.increment(error)) {
        auto number = static_cast<pid_t>(std::atoi(entry->path().filename().c_str()));
        if (number <= 0) continue;
        auto status = statusOf(number);
        all.emplace(Process{number, status.start}, status);
    }
    return all;
}

/// The processes of the session, the known ones, and the descendants of all these.
std::map<Process, Status> family(pid_t session, const std::set<Process>& known) {
    std::multimap<pid_t, std::pair<Process, Status>> byParent;
    std::vector<std::pair<Process, Status>> open;
    for (const auto& [process, status] : allProcesses()) {
        byParent.emplace(status.parent, std::pair(process, status));
        if (status.session == session || known.contains(process)) open.emplace_back(process, status);
    }
    std::map<Process, Status> found;
    while (!open.empty()) {
        auto next = open.back();
        open.pop_back();
        if (!found.insert(next).second) continue;
        auto [first, last] = byParent.equal_range(next.first.number);
        for (auto child = first; child != last; ++child) open.push_back(child->second);
    }
    return found;
}

/// Sends through a pidfd, so that the signal reaches this process or none.
bool sendTo(const Process& process, int number) {
    const FileDescriptor opened(static_cast<int>(::syscall(SYS_pidfd_open, process.number, 0)));
    return opened && statusOf(process.number).start == process.start &&
           ::syscall(SYS_pidfd_send_signal, opened.get(), number, nullptr, 0) == 0;
}

} // namespace

void Descendants::signal(int number) {
    ::kill(-leader_, SIGSTOP);
    // A process started while one round read the process table is found by the next round.
    for (int round = 0, still = 0; round < mostRounds && still < 2; ++round)
        still = stopThoseThatRun() ? 0 : still + 1;
    send(number);
    send(SIGCONT);
}

bool Descendants::stopThoseThatRun() {
    bool didAnyRun = false;
    for (const auto& [process, status] : family(leader_, strayed_)) {
        if (status.group != leader_) strayed_.insert(process);
        if (status.runs() && sendTo(process, SIGSTOP)) didAnyRun = true;
    }
    return didAnyRun;
}

void Descendants::send(int number) const {
    ::kill(-leader_, number);
    for (const auto& process : strayed_) sendTo(process, number);
}

} // namespace morvex
