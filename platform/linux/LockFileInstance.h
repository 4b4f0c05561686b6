#pragma once

#include "foundation/FileDescriptor.h"
#include "platform/ports/SingleInstance.h"

#include <filesystem>

namespace morvex {

/// Holds a lock on "<data home>/Morvex/lock". The kernel lets it go when the process ends, however it ends;
/// the file stays.
class LockFileInstance final : public SingleInstance {
  public:
    explicit LockFileInstance(const std::filesystem::path& dataHome) : path_(dataHome / "Morvex" / "lock") {}

    bool claim() override;

  private:
    std::filesystem::path path_;
    FileDescriptor lock_;
};

} // namespace morvex
