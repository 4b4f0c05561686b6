#pragma once

#include "app/agents/HistorieAgentu.h"
#include "platform/memory/ImmediateExecutor.h"
#include "platform/memory/ManualClock.h"
#include "platform/memory/ScriptedRandom.h"
#include "platform/memory/ScriptedUrlOpener.h"
#include "shared/base/Require.h"

#include <cstddef>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace morvex {

/// A file of these programs that holds what a user would miss.
struct SavedFile {
    std::string what;
    /// What the user has beforehand, `text` in it.
    std::function<void(const std::filesystem::path& home, const std::string& text)> lay;
    /// Starts the owner of the file; what it gives then saves `text` and tells whether it counts as saved.
    std::function<std::function<bool()>(const std::filesystem::path& home, const std::string& text)> change;
    /// What the user finds at the next start, and every trouble that is told then.
    std::function<std::vector<std::string>(const std::filesystem::path& home)> look;
    /// Those that may stand in the file's folder once another save has worked.
    std::vector<std::string> names;
    /// Bytes of the largest text that the file takes.
    std::size_t largest = 10'000'000;
    /// Whether an interrupted call is made again.
    bool isPatient = true;
};

/// Of all programs and of the system adapters.
std::vector<SavedFile> savedFiles();

std::vector<SavedFile> filesOfStores();
std::vector<SavedFile> filesOverDamagedOnes();
std::vector<SavedFile> filesOfSettings();
std::vector<SavedFile> filesOfSecrets();
std::vector<SavedFile> filesOfPhoneAndRelay();

inline void layNothing(const std::filesystem::path&, const std::string&) {}

/// Lays by a change that nothing disturbs.
template <auto change> void layByChange(const std::filesystem::path& home, const std::string& text) {
    vyzaduj(change(home, text)(), "nothing could be laid");
}

/// What the stores of records need besides their file. They save before their calls return.
struct Surroundings {
    HistorieAgentu::Services services() { return {{executor, executor, clock}, random, opener}; }

    ManualClock clock;
    ImmediateExecutor executor;
    ScriptedRandom random;
    ScriptedUrlOpener opener;
};

} // namespace morvex
