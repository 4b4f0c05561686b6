#include "foundation/ProgramLog.h"

#include "foundation/Printable.h"
#include "shared/base/Date.h"
#include "shared/base/Require.h"
#include "shared/base/SystemError.h"

#include <chrono>
#include <mutex>
#include <system_error>
#include <utility>

namespace morvex {

namespace {

/// The current log. The mutex also guards the log's members.
struct Present {
    std::mutex mutex;
    ProgramLog* log = nullptr;
};

Present& present() {
    static Present the;
    return the;
}

} // namespace

ProgramLog::ProgramLog(int descriptor, const Clock& clock) : queue_(descriptor), clock_(clock) {
    const std::lock_guard lock(present().mutex);
    require(present().log == nullptr, "a program has two logs");
    present().log = this;
}

ProgramLog::~ProgramLog() {
    const std::lock_guard lock(present().mutex);
    present().log = nullptr;
}

void ProgramLog::write(std::string_view line) {
    const std::lock_guard lock(present().mutex);
    if (present().log) present().log->add(printableLine(line.substr(0, LogQueue::maxLine)));
}

void ProgramLog::add(std::string line) {
    const auto now = clock_.sinceBoot();
    std::erase_if(written_, [&](const auto& old) { return now - old.second >= std::chrono::minutes(1); });
    if (written_.size() == mostLines || !written_.emplace(line, now).second) return;
    queue_.write(formatDate(clock_.now()) + " " + std::move(line));
}

void logCause(std::string_view doing, const Error& error) {
    const int code = systemCode(error);
    if (code != 0) ProgramLog::write(std::string(doing) + ": " + std::generic_category().message(code));
}

} // namespace morvex
