#pragma once

#include "platform/posix/base/FileDescriptor.h"
#include "shared/base/Error.h"

#include <QSocketNotifier>

#include <filesystem>
#include <functional>
#include <memory>

namespace morvex {

/// One companion a data folder: two with one identity would push each other off the relay for ever. Holds a
/// lock on "<data home>/Morvex/lock". The kernel lets it go when the process ends, however it ends; the file
/// stays. Others call it through the socket "call" beside the lock, which only this user can reach. Main
/// thread only.
class LockFileInstance {
  public:
    explicit LockFileInstance(const std::filesystem::path& dataHome) : folder_(dataHome / "Morvex") {}

    enum class Claim { made, heldByAnother };

    /// `made` when this process is the one; it stays the one until it ends. Fails with the trouble of the
    /// folder, in words that name it, when the lock cannot be made.
    Result<Claim> claim();

    /// Asks the process that is the one to show itself. False when it does not listen.
    bool callOther();

    /// Listens for others, after a claim that was made.
    void onCall(std::function<void()> called);

  private:
    [[nodiscard]] std::unexpected<Error> unusable(const Error& why) const;

    std::filesystem::path folder_;
    FileDescriptor lock_;
    FileDescriptor socket_;
    std::unique_ptr<QSocketNotifier> calls_;
};

} // namespace morvex
