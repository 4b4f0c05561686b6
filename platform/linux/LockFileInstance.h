#pragma once

#include "foundation/FileDescriptor.h"
#include "platform/ports/SingleInstance.h"

#include <QSocketNotifier>

#include <filesystem>
#include <memory>

namespace morvex {

/// Holds a lock on "<data home>/Morvex/lock". The kernel lets it go when the process ends, however it ends;
/// the file stays. Others call it through the socket "call" beside the lock, which only this user can reach.
class LockFileInstance final : public SingleInstance {
  public:
    explicit LockFileInstance(const std::filesystem::path& dataHome) : folder_(dataHome / "Morvex") {}

    bool claim() override;
    bool callOther() override;
    void onCall(std::function<void()> called) override;

  private:
    std::filesystem::path folder_;
    FileDescriptor lock_;
    FileDescriptor socket_;
    std::unique_ptr<QSocketNotifier> calls_;
};

} // namespace morvex
