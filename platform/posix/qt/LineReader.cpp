#include "platform/posix/qt/LineReader.h"

#include <array>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace morvex {

namespace {

constexpr std::size_t longestLine = 64 * 1024;

bool isNullDevice(const struct stat& status) {
    struct stat null{};
    return ::stat("/dev/null", &null) == 0 && S_ISCHR(status.st_mode) && status.st_rdev == null.st_rdev;
}

} // namespace

LineReader::LineReader(int descriptor, std::function<void(std::string)> onLine)
    : descriptor_(descriptor), onLine_(std::move(onLine)), notifier_(descriptor, QSocketNotifier::Read) {
    QObject::connect(&notifier_, &QSocketNotifier::activated, &notifier_, [this] { readSome(); });
}

bool LineReader::hasInput(int descriptor) {
    struct stat status{};
    if (::fstat(descriptor, &status) != 0 || isNullDevice(status)) return false;
    return ::isatty(descriptor) == 0 || ::tcgetpgrp(descriptor) == ::getpgrp();
}

void LineReader::readSome() {
    std::array<char, 4096> chunk{};
    auto got = ::read(descriptor_, chunk.data(), chunk.size());
    if (got < 0) return;
    pending_.append(chunk.data(), static_cast<std::size_t>(got));
    takeLines();
    if (got == 0 || pending_.size() > longestLine) notifier_.setEnabled(false);
}

void LineReader::takeLines() {
    std::size_t start = 0;
    for (auto end = pending_.find('\n'); end != std::string::npos; end = pending_.find('\n', start)) {
        onLine_(pending_.substr(start, end - start));
        start = end + 1;
    }
    pending_.erase(0, start);
}

} // namespace morvex
