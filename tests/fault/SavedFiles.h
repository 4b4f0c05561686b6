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
    /// Creates the user's earlier data, with `text` in them.
    std::function<void(const std::filesystem::path& home, const std::string& text)> lay;
    /// Starts the owner of the file; the returned function saves `text` and tells whether it counts as saved.
    std::function<std::function<bool()>(const std::filesystem::path& home, const std::string& text)> change;
    /// The data that the user finds at the next start, and every trouble reported then.
    std::function<std::vector<std::string>(const std::filesystem::path& home)> look;
    /// Files that may be in the file's folder after another save has succeeded.
    std::vector<std::string> names;
    /// The largest text that the file accepts, in bytes.
    std::size_t largest = 10'000'000;
    /// Whether interrupted calls are repeated.
    bool isPatient = true;
};

/// The files of all programs and system adapters.
std::vector<SavedFile> savedFiles();

std::vector<SavedFile> filesOfStores();
std::vector<SavedFile> filesOverDamagedOnes();
std::vector<SavedFile> filesOfSettings();
std::vector<SavedFile> filesOfSecrets();
std::vector<SavedFile> filesOfPhoneAndRelay();

inline void layNothing(const std::filesystem::path&, const std::string&) {}

/// Creates the data by an undisturbed change.
template <auto change> void layByChange(const std::filesystem::path& home, const std::string& text) {
    require(change(home, text)(), "nothing could be laid");
}

/// What the stores of records need in addition to their file. They save before their calls return.
struct StoreServices {
    HistorieAgentu::Services services() { return {{executor, executor, clock}, random, opener}; }

    ManualClock clock;
    ImmediateExecutor executor;
    ScriptedRandom random;
    ScriptedUrlOpener opener;
};

} // namespace morvex
