#include "bench/ClientProcess.h"

#include "shared/base/Require.h"

#include <csignal>
#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>

namespace morvex {

std::uint16_t ClientProcess::Line::waitForPort() const {
    std::uint16_t port = 0;
    require(::read(in_, &port, sizeof port) == sizeof port, "the measuring program has gone");
    return port;
}

void ClientProcess::Line::report() const {
    const char done = 1;
    require(::write(out_, &done, 1) == 1, "the measuring program has gone");
}

void ClientProcess::Line::stay() const {
    char end = 0;
    require(::read(in_, &end, 1) == 1, "the measuring program has gone");
}

ClientProcess::ClientProcess(const std::function<void(Line&)>& work) {
    std::array<int, 2> in{};
    std::array<int, 2> out{};
    require(::pipe2(in.data(), O_CLOEXEC) == 0 && ::pipe2(out.data(), O_CLOEXEC) == 0, "no pipes");
    process_ = ::fork();
    require(process_ >= 0, "no process");
    if (process_ == 0) {
        ::prctl(PR_SET_PDEATHSIG, SIGKILL);
        Line line(in[0], out[1]);
        work(line);
        ::_exit(0);
    }
    ::close(in[0]);
    ::close(out[1]);
    in_ = out[0];
    out_ = in[1];
}

ClientProcess::ClientProcess(ClientProcess&& other) noexcept
    : process_(std::exchange(other.process_, -1)),
      in_(std::exchange(other.in_, -1)),
      out_(std::exchange(other.out_, -1)) {}

ClientProcess::~ClientProcess() {
    if (process_ < 0) return;
    // A later child has a copy of this pipe too, so closing it would not be noticed.
    const char end = 1;
    (void)!::write(out_, &end, 1);
    ::close(out_);
    ::close(in_);
    ::waitpid(process_, nullptr, 0);
}

void ClientProcess::begin(std::uint16_t port) const {
    require(::write(out_, &port, sizeof port) == sizeof port, "a client process has gone");
}

void ClientProcess::waitUntilDone() const {
    char done = 0;
    require(::read(in_, &done, 1) == 1, "a client process has failed");
}

} // namespace morvex
