#pragma once

#include "fuzz/MemoryFolder.h"
#include "platform/posix/base/AtomicFile.h"
#include "shared/base/Bytes.h"
#include "shared/base/Require.h"

#include <filesystem>
#include <string>
#include <string_view>

namespace morvex {

/// The file of a store, which contains the input at the start of each turn. Removed when the program ends.
class StoreFile {
  public:
    /// `name` is the way from the folder that is given to the store.
    explicit StoreFile(const char* name) : name_(name), aside_(folder_.path() / (name_ + ".damaged")) {
        std::filesystem::create_directories((folder_.path() / name_).parent_path());
    }

    [[nodiscard]] const std::filesystem::path& folder() const { return folder_.path(); }

    void lay(std::string_view input) const {
        std::error_code ignored;
        std::filesystem::remove(aside_, ignored);
        folder_.write(name_.c_str(), input);
    }

    /// How much of the input a store could read.
    enum class Read { nothing, all };

    /// Call after the store has saved: exactly an input that it could not read must have been set aside,
    /// unchanged.
    void expectAside(std::string_view input, Read read) const {
        const auto kept = readWhole(aside_, input.size()).value();
        require(kept.has_value() == (read == Read::nothing),
                "a file is lost, or set aside although it was read");
        require(!kept || asText(*kept) == input, "a file is not kept as it was");
    }

  private:
    MemoryFolder folder_;
    std::string name_;
    std::filesystem::path aside_;
};

} // namespace morvex
