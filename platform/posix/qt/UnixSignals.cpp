#include "platform/posix/qt/UnixSignals.h"

#include "platform/posix/base/Process.h"
#include "shared/base/Require.h"

#include <array>
#include <cerrno>
#include <fcntl.h>
#include <unistd.h>
#include <utility>

namespace morvex {

namespace {

/// Written by the handler, which may do little more than write.
int writeEnd = -1;

void note(int) {
    auto kept = errno;
    const char byte = 0;
    (void)!::write(writeEnd, &byte, 1);
    errno = kept;
}

} // namespace

UnixSignals::UnixSignals(std::function<void()> onSignal) : onSignal_(std::move(onSignal)) {
    std::array<int, 2> ends{};
    require(::pipe2(ends.data(), O_CLOEXEC | O_NONBLOCK) == 0, "no pipe for signals");
    readEnd_ = ends[0];
    writeEnd = ends[1];
    notifier_ = std::make_unique<QSocketNotifier>(readEnd_, QSocketNotifier::Read);
    QObject::connect(notifier_.get(), &QSocketNotifier::activated, notifier_.get(), [this] {
        std::array<char, 16> bytes{};
        while (::read(readEnd_, bytes.data(), bytes.size()) > 0) {
        }
        onSignal_();
    });
    for (const int signal : heededEndSignals()) {
        struct sigaction action{};
        action.sa_handler = note;
        action.sa_flags = SA_RESTART;
        require(::sigaction(signal, &action, nullptr) == 0, "a signal cannot be taken over");
    }
}

UnixSignals::~UnixSignals() {
    notifier_.reset();
    ::close(readEnd_);
}

} // namespace morvex
