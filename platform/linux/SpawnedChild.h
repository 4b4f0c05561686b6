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

/// A child of this process that leads its own group, followed by a thread of its own. Its end is only noted
/// there; it is reaped with this object, so that its number and its group's cannot mean another process
/// before.
class SpawnedChild final : public ChildProcess {
  public:
    /// Takes over a child that runs. On failure the child is killed and gone. `watch` may be null.
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
    /// Of a pipe that may never end.
    void readWhatIsThere(const FileDescriptor& pipe, Tell tell);
    void noteExit();

    pid_t pid_;
    FileDescriptor output_;
    FileDescriptor errors_;
    ChildListener& listener_;
    OrphanWatch* watch_;
    FileDescriptor exit_;      ///< readable once the child has ended
    FileDescriptor abandoned_; ///< readable once nobody waits for output
    std::atomic<bool> exited_ = false;
    std::mutex descendantsLock_;
    Descendants descendants_;
    std::array<char, 256 * 1024> buffer_{};
    std::thread thread_;
};

} // namespace morvex
