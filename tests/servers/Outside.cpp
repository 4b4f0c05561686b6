#include "tests/servers/Outside.h"

#include "shared/base/Require.h"

#include <array>
#include <csignal>
#include <fcntl.h>
#include <iterator>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace morvex {

Outside::Outside() {
    std::array<int, 2> in{};
    std::array<int, 2> out{};
    require(::pipe2(in.data(), O_CLOEXEC) == 0 && ::pipe2(out.data(), O_CLOEXEC) == 0, "no pipes");
    shell_ = ::fork();
    require(shell_ >= 0, "a shell cannot be started");
    if (shell_ == 0) {
        ::prctl(PR_SET_PDEATHSIG, SIGKILL);
        ::dup2(in[0], STDIN_FILENO);
        ::dup2(out[1], STDOUT_FILENO);
        ::execl("/bin/sh", "sh", static_cast<char*>(nullptr));
        ::_exit(127);
    }
    ::close(in[0]);
    ::close(out[1]);
    commands_ = in[1];
    results_ = out[0];
}

Outside::~Outside() {
    ::close(commands_);
    ::close(results_);
    ::waitpid(shell_, nullptr, 0);
}

bool Outside::succeeds(const std::string& command) const {
    const auto line = "if (" + command + ") </dev/null >/dev/null 2>&1; then printf y; else printf n; fi\n";
    require(::write(commands_, line.data(), line.size()) == std::ssize(line), "a shell takes no command");
    char answer = 0;
    require(::read(results_, &answer, 1) == 1, "a shell gives no answer");
    return answer == 'y';
}

} // namespace morvex
