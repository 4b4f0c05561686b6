#pragma once

#include "app/agents/HistorieAgentu.h"
#include "platform/memory/ImmediateExecutor.h"
#include "platform/memory/ManualClock.h"
#include "platform/memory/ScriptedRandom.h"
#include "platform/memory/ScriptedUrlOpener.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <memory>
#include <sstream>
#include <string>

namespace morvex {

/// A history in a folder of its own, and its file.
class HistoryFixture : public testing::Test {
  protected:
    /// Starts the program anew over the same file.
    void load() {
        historie = HistorieAgentu::create(temporary.path(), {{saving, saving, clock}, random, opener});
    }

    void write(const std::string& text) {
        std::filesystem::create_directories(file().parent_path());
        std::ofstream(file()) << text;
    }

    [[nodiscard]] std::string written() const { return contentOf(file()); }

    static std::string contentOf(const std::filesystem::path& path) {
        std::stringstream content;
        content << std::ifstream(path).rdbuf();
        return content.str();
    }

    [[nodiscard]] std::filesystem::path file() const {
        return temporary.path() / "TalkSpan" / "agent-tasks.json";
    }

    /// A new task, begun a second after the one before.
    UkolAgenta begin(HistorieAgentu::Assignment assignment) {
        clock.advance(std::chrono::seconds(1));
        return historie->zaloz(std::move(assignment));
    }

    UkolAgenta begin(const std::string& nastroj, const std::string& instrukce,
                     const std::string& slozka = "/home/jana/Projekty") {
        return begin({{}, {}, nastroj, {}, instrukce, slozka});
    }

    [[nodiscard]] std::string trouble() const { return historie->potiz().value_or(Sentence("none")).czech(); }

    TemporaryFolder temporary;
    ManualClock clock;
    ImmediateExecutor saving;
    ScriptedRandom random;
    ScriptedUrlOpener opener;
    std::unique_ptr<HistorieAgentu> historie;
};

} // namespace morvex
