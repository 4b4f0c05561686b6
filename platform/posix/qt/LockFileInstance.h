#pragma once

#include "platform/posix/base/FileDescriptor.h"
#include "shared/base/Error.h"

#include <QSocketNotifier>

#include <filesystem>
#include <functional>
#include <memory>

namespace morvex {

/// Ensures that only one companion uses a data folder: two with the same identity would keep pushing each
/// other off the relay. Holds a lock on "<data home>/Morvex/lock"; the kernel releases it when the process
/// ends in any way, and the file stays. Other processes call this one through the socket "call" beside the
/// lock, which only this user can reach. Main thread only.
class LockFileInstance {
  public:
    explicit LockFileInstance(const std::filesystem::path& dataHome) : folder_(dataHome / "Morvex") {}

    enum class Claim { made, heldByAnother };

    /// `made` if this process is now the only instance; it stays so until it ends. Fails when the lock cannot
    /// be made, with words that name the folder.
    Result<Claim> claim();

    /// Asks the running instance to show itself. False when it does not listen.
    bool callOther();

    /// Listens for calls of other processes. Call only after `claim` returned `made`.
    void onCall(std::function<void()> called);

  private:
    [[nodiscard]] std::unexpected<Error> unusable(const Error& why) const;

    std::filesystem::path folder_;
    FileDescriptor lock_;
    FileDescriptor socket_;
    std::unique_ptr<QSocketNotifier> calls_;
};

} // namespace morvex
