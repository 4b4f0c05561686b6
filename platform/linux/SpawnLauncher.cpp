#include "platform/linux/SpawnLauncher.h"

#include "platform/linux/SpawnedChild.h"
#include "platform/posix/base/FileDescriptor.h"
#include "shared/base/SystemError.h"
#include "shared/base/Try.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <spawn.h>
#include <unistd.h>

namespace morvex {

namespace {

constexpr int firstUnusual = 3;
constexpr int roomOfAPipe = 1 << 20;

/// The system would cut a text at a NUL byte: the child would get another one than was checked.
bool hasNul(const OutsideProgram& program) {
    auto cut = [](const std::string& text) { return text.contains('\0'); };
    return cut(program.binary) || cut(program.cwd.value_or("")) || std::ranges::any_of(program.args, cut) ||
           std::ranges::any_of(program.env, [cut](const auto& e) { return cut(e.first) || cut(e.second); });
}

/// Moves a descriptor above the standard ones, since the child's ends are copied over those.
Result<FileDescriptor> aboveStandard(FileDescriptor given) {
    if (given.get() >= firstUnusual) return given;
    FileDescriptor moved(::fcntl(given.get(), F_DUPFD_CLOEXEC, firstUnusual));
    if (!moved) return fail(SystemError{errno});
    return moved;
}

struct Pipe {
    FileDescriptor readEnd;
    FileDescriptor writeEnd;

    static Result<Pipe> create() {
        std::array<int, 2> ends{};
        if (::pipe2(ends.data(), O_CLOEXEC) != 0) return fail(SystemError{errno});
        // A larger pipe means fewer switches between writer and reader; if the system refuses, the default
        // size stays.
        ::fcntl(ends[0], F_SETPIPE_SZ, roomOfAPipe);
        FileDescriptor first(ends[0]);
        FileDescriptor second(ends[1]);
        TRY(auto, readEnd, aboveStandard(std::move(first)));
        TRY(auto, writeEnd, aboveStandard(std::move(second)));
        return Pipe{std::move(readEnd), std::move(writeEnd)};
    }
};

/// The attributes and file actions of the spawn; keeps the first failure.
class SpawnSettings {
  public:
    SpawnSettings() {
        note(::posix_spawnattr_init(&attributes));
        note(::posix_spawn_file_actions_init(&actions));
    }

    ~SpawnSettings() {
        ::posix_spawn_file_actions_destroy(&actions);
        ::posix_spawnattr_destroy(&attributes);
    }

    SpawnSettings(const SpawnSettings&) = delete;
    SpawnSettings& operator=(const SpawnSettings&) = delete;

    void note(int code) {
        if (problem == 0) problem = code;
    }

    /// Starts the child in its own session and group. Without a terminal it cannot prompt.
    void separate() {
        sigset_t all;
        sigset_t none;
        sigfillset(&all);
        sigemptyset(&none);
        note(::posix_spawnattr_setsigdefault(&attributes, &all));
        note(::posix_spawnattr_setsigmask(&attributes, &none));
        note(::posix_spawnattr_setflags(&attributes,
                                        POSIX_SPAWN_SETSID | POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETSIGMASK));
    }

    void setFiles(const FileDescriptor& output, const FileDescriptor& errors,
                  const std::optional<std::string>& cwd) {
        note(::posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0));
        note(::posix_spawn_file_actions_adddup2(&actions, output.get(), STDOUT_FILENO));
        note(::posix_spawn_file_actions_adddup2(&actions, errors.get(), STDERR_FILENO));
        note(::posix_spawn_file_actions_addclosefrom_np(&actions, firstUnusual));
        if (cwd) note(::posix_spawn_file_actions_addchdir_np(&actions, cwd->c_str()));
    }

    posix_spawnattr_t attributes{};
    posix_spawn_file_actions_t actions{};
    int problem = 0;
};

/// A null-terminated array, as the system needs it. Valid only as long as the texts.
std::vector<char*> pointers(std::vector<std::string>& texts) {
    std::vector<char*> all;
    for (auto& text : texts) all.push_back(text.data());
    all.push_back(nullptr);
    return all;
}

Result<pid_t> spawn(const OutsideProgram& program, const FileDescriptor& output,
                    const FileDescriptor& errors) {
    SpawnSettings settings;
    settings.separate();
    settings.setFiles(output, errors, program.cwd);
    if (settings.problem != 0) return fail(SystemError{settings.problem});

    std::vector<std::string> words{program.binary};
    words.insert(words.end(), program.args.begin(), program.args.end());
    std::vector<std::string> variables;
    for (const auto& [name, value] : program.env) variables.push_back(name + "=" + value);

    pid_t pid = 0;
    int code = ::posix_spawn(&pid, program.binary.c_str(), &settings.actions, &settings.attributes,
                             pointers(words).data(), pointers(variables).data());
    if (code != 0) return fail(SystemError{code});
    return pid;
}

} // namespace

Result<std::unique_ptr<ChildProcess>> SpawnLauncher::launch(const OutsideProgram& program,
                                                            ChildListener& listener) {
    if (hasNul(program)) return fail(SystemError{EINVAL});
    TRY(auto, output, Pipe::create());
    TRY(auto, errors, Pipe::create());
    TRY(auto, pid, spawn(program, output.writeEnd, errors.writeEnd));
    return SpawnedChild::create(pid, std::move(output.readEnd), std::move(errors.readEnd), listener, watch_);
}

} // namespace morvex
