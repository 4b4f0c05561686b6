#pragma once

#include "platform/memory/ManualClock.h"
#include "platform/memory/ScriptedRandom.h"
#include "platform/posix/base/AtomicFile.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>

namespace morvex {

/// A folder in which a store's file can be looked at, put, and kept from being saved.
class PersonalStores : public testing::Test {
  protected:
    [[nodiscard]] static std::string textIn(const std::filesystem::path& file) {
        auto bytes = readWhole(file, 64 * 1024 * 1024);
        return bytes && *bytes ? std::string(asText(**bytes)) : "nothing";
    }

    static void put(const std::filesystem::path& file, const std::string& text) {
        std::filesystem::create_directories(file.parent_path());
        std::ofstream(file) << text;
    }

    /// A file where the folder should be: no save can succeed. Read-only folders do not stop a superuser.
    void breakSaves() {
        std::error_code ignored;
        std::filesystem::rename(folder, away, ignored);
        std::ofstream(folder) << "in the way";
    }

    /// Nobody but a superuser may write there; everybody may come as far.
    void lockSaves() const {
        std::filesystem::permissions(support.path(), std::filesystem::perms{0755});
        std::filesystem::permissions(folder, std::filesystem::perms{0555});
    }

    void mendSaves() {
        std::filesystem::remove(folder);
        if (std::filesystem::exists(away)) std::filesystem::rename(away, folder);
    }

    TemporaryFolder support;
    std::filesystem::path folder = support.path() / "Morvex";
    std::filesystem::path away = support.path() / "away";
    ManualClock clock;
    ScriptedRandom random;
};

} // namespace morvex
