#pragma once

#include "platform/linux/Descendants.h"
#include "platform/linux/OrphanWatch.h"
#include "platform/ports/ProcessLauncher.h"
#include "platform/posix/base/FileDescriptor.h"

#include <array>
#include <atomic>
#include <mutex>
#include <sys/types.h>
#include <thread>

namespace morvex {

/// A child process that leads its own group, followed by its own thread. The thread only records the child's
/// end; the child is reaped when this object is destroyed, so that its process id and group id are not reused
/// before.
class SpawnedChild final : public ChildProcess {
  public:
    /// Takes over a running child. If this fails, the child is killed and reaped. `watch` may be null.
    static Result<std::unique_ptr<ChildProcess>> create(pid_t pid, FileDescriptor output,
                                                        FileDescriptor errors, ChildListener& listener,
                                                        OrphanWatch* watch);

    ~SpawnedChild() override;

    void signalGroup(ChildSignal signal) override;
    void signalAll(ChildSignal signal) override;
    void abandonOutput() override;

  private:
    using Tell = void (ChildListener::*)(std::string_view);

    SpawnedChild(pid_t pid, FileDescriptor output, FileDescriptor errors, ChildListener& listener,
                 OrphanWatch* watch)
        : pid_(pid),
          output_(std::move(output)),
          errors_(std::move(errors)),
          listener_(listener),
          watch_(watch),
          descendants_(pid) {}

    Result<void> start();
    void follow();
    bool readFrom(const FileDescriptor& pipe, Tell tell);
    /// Reads what a pipe holds now, since the pipe may never end.
    void readWhatIsThere(const FileDescriptor& pipe, Tell tell);
    void noteExit();

    pid_t pid_;
    FileDescriptor output_;
    FileDescriptor errors_;
    ChildListener& listener_;
    OrphanWatch* watch_;
    FileDescriptor exit_;      ///< readable when the child has ended
    FileDescriptor abandoned_; ///< readable when nobody waits for output any more
    std::atomic<bool> exited_ = false;
    std::mutex descendantsLock_;
    Descendants descendants_;
    std::array<char, 256 * 1024> buffer_{};
    std::thread thread_;
};

} // namespace morvex
