#include "tests/fault/TracedChild.h"

#include "shared/base/Require.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <sched.h>
#include <string>
#include <sys/ptrace.h>
#include <sys/syscall.h>
#include <sys/user.h>
#include <sys/wait.h>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace morvex {

namespace {

using Kind = SystemFault::Kind;

constexpr int callStop = SIGTRAP | 0x80;
constexpr std::uint64_t noCall = ~std::uint64_t{0};

/// Calls made by the C library and the sanitizers.
constexpr auto callsOfTheRuntime =
    std::to_array<long>({SYS_brk, SYS_mmap, SYS_munmap, SYS_mprotect, SYS_mremap, SYS_madvise, SYS_futex,
                         SYS_rt_sigprocmask, SYS_sigaltstack, SYS_sched_yield, SYS_getpid, SYS_gettid,
                         SYS_tgkill, SYS_getrandom, SYS_pipe, SYS_pipe2});
constexpr auto callsForRoom = std::to_array<long>(
    {SYS_write, SYS_pwrite64, SYS_writev, SYS_pwritev, SYS_openat, SYS_mkdir, SYS_mkdirat, SYS_fsync,
     SYS_fdatasync, SYS_ftruncate, SYS_fallocate, SYS_rename, SYS_renameat, SYS_renameat2, SYS_link,
     SYS_linkat, SYS_symlink, SYS_symlinkat, SYS_copy_file_range});

bool contains(const auto& calls, std::uint64_t call) {
    return std::ranges::find(calls, static_cast<long>(call)) != calls.end();
}

/// Exit statuses that no library uses.
constexpr int exitOfYes = 91;
constexpr int exitOfNo = 90;

/// noexcept, so that an exception ends the child: the code after this call is the rest of the parent's tests.
[[noreturn]] void runChild(const std::function<std::function<bool()>()>& prepare, FaultTime time) noexcept {
    if (::ptrace(PTRACE_TRACEME, 0, nullptr, nullptr) != 0) ::_exit(100);
    if (time == FaultTime::preparation) ::raise(SIGSTOP);
    auto work = prepare();
    // Stops to tell the parent to begin.
    ::raise(SIGSTOP);
    ::_exit(work() ? exitOfYes : exitOfNo);
}

/// Traces one run, in the parent.
class Tracer {
  public:
    Tracer(pid_t child, SystemFault fault) : child_(child), fault_(fault) {}

    TracedEnd run() {
        int status = wait();
        require(WIFSTOPPED(status) && WSTOPSIG(status) == SIGSTOP, "the child cannot be traced");
        ask(PTRACE_SETOPTIONS, PTRACE_O_TRACESYSGOOD | PTRACE_O_EXITKILL);
        for (long signal = 0;;) {
            // A child that was killed while stopped cannot be continued. After its only fault a child runs
            // faster untraced.
            ::ptrace(isOver_ ? PTRACE_CONT : PTRACE_SYSCALL, child_, nullptr, signal);
            status = wait();
            if (WIFSIGNALED(status)) return end_;
            if (WIFEXITED(status)) {
                const int exit = WEXITSTATUS(status);
                if (exit == exitOfYes || exit == exitOfNo) end_.answer = exit == exitOfYes;
                return end_;
            }
            signal = WSTOPSIG(status) == callStop ? 0 : WSTOPSIG(status);
            if (signal == 0) std::exchange(isInside_, !isInside_) ? leave() : enter();
            if (signal == SIGSTOP) {
                isOver_ = true;
                signal = 0;
            }
        }
    }

  private:
    int wait() const {
        int status = 0;
        require(::waitpid(child_, &status, 0) == child_, "the child is lost");
        return status;
    }

    void ask(__ptrace_request request, long data) const {
        require(::ptrace(request, child_, nullptr, data) == 0, "the child cannot be traced");
    }

    [[nodiscard]] std::uint64_t get(std::size_t offset) const {
        return static_cast<std::uint64_t>(::ptrace(PTRACE_PEEKUSER, child_, offset, nullptr));
    }

    void set(std::size_t offset, std::uint64_t value) const {
        require(::ptrace(PTRACE_POKEUSER, child_, offset, value) == 0, "a register cannot be set");
    }

    void enter() {
        auto call = get(offsetof(user_regs_struct, orig_rax));
        if (call == SYS_exit_group) return;
        isStruck_ = strikes(call);
        if (!isStruck_) return;
        end_.struck = true;
        switch (fault_.kind) {
        case Kind::fails:
        case Kind::diskFull:
        case Kind::diskBroken:
            set(offsetof(user_regs_struct, orig_rax), noCall);
            break;
        case Kind::writesHalf:
        case Kind::killedHalfway:
            set(offsetof(user_regs_struct, rdx), get(offsetof(user_regs_struct, rdx)) / 2);
            break;
        case Kind::killed:
        case Kind::none:
            break;
        }
    }

    void leave() {
        if (!std::exchange(isStruck_, false)) return;
        isOver_ = !isForGood();
        if (fault_.kind == Kind::killed || fault_.kind == Kind::killedHalfway)
            ::kill(child_, SIGKILL);
        else if (fault_.kind != Kind::writesHalf)
            set(offsetof(user_regs_struct, rax), static_cast<std::uint64_t>(-fault_.code));
    }

    [[nodiscard]] bool strikes(std::uint64_t call) {
        if (isOver_ || !isOfSort(call) || isWriteToPipe(call)) return false;
        const auto number = seen_++;
        return isForGood() ? number >= fault_.at : number == fault_.at;
    }

    /// Sanitizers write to a pipe to learn whether memory is readable.
    [[nodiscard]] bool isWriteToPipe(std::uint64_t call) const {
        if (call != SYS_write) return false;
        const auto file = std::to_string(get(offsetof(user_regs_struct, rdi)));
        std::error_code error;
        const auto target =
            std::filesystem::read_symlink("/proc/" + std::to_string(child_) + "/fd/" + file, error);
        return target.string().starts_with("pipe:");
    }

    [[nodiscard]] bool isForGood() const {
        return fault_.kind == Kind::diskFull || fault_.kind == Kind::diskBroken;
    }

    /// Whether the fault applies to this kind of call.
    [[nodiscard]] bool isOfSort(std::uint64_t call) const {
        switch (fault_.kind) {
        case Kind::none:
            return false;
        case Kind::killed:
        case Kind::fails:
        case Kind::diskBroken:
            return !contains(callsOfTheRuntime, call);
        case Kind::diskFull:
            return contains(callsForRoom, call);
        case Kind::writesHalf:
        case Kind::killedHalfway:
            return call == SYS_write || call == SYS_pwrite64;
        }
        return false;
    }

    pid_t child_;
    SystemFault fault_;
    TracedEnd end_;
    std::size_t seen_ = 0; ///< calls of the fault's kind
    bool isInside_ = false;
    bool isStruck_ = false;
    bool isOver_ = false; ///< no later call is faulted
};

/// While it lives, keeps this thread and its new children on one processor: switching between two processors
/// at each system call would take longer than everything else.
class OneProcessor {
  public:
    OneProcessor() {
        cpu_set_t one;
        CPU_ZERO(&one);
        CPU_SET(::sched_getcpu(), &one);
        require(::sched_getaffinity(0, sizeof all_, &all_) == 0, "the processors are unknown");
        require(::sched_setaffinity(0, sizeof one, &one) == 0, "the processor cannot be kept");
    }

    ~OneProcessor() { ::sched_setaffinity(0, sizeof all_, &all_); }

    OneProcessor(const OneProcessor&) = delete;
    OneProcessor& operator=(const OneProcessor&) = delete;

  private:
    cpu_set_t all_{};
};

} // namespace

TracedEnd runTraced(const std::function<std::function<bool()>()>& prepare, SystemFault fault,
                    FaultTime time) {
    OneProcessor processor;
    auto child = ::fork();
    require(child >= 0, "no child");
    if (child == 0) runChild(prepare, time);
    return Tracer(child, fault).run();
}

} // namespace morvex
