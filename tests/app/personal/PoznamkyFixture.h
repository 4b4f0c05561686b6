#pragma once

#include "tests/app/personal/PersonalStores.h"
#include "tests/support/AwaitedStores.h"

#include <chrono>
#include <filesystem>
#include <string>
#include <vector>

namespace morvex {

/// A notes store with its file, a phone's notes, and what the store told of.
class PoznamkyFixture : public PersonalStores {
  protected:
    PoznamkyFixture() { watch(); }

    void watch() {
        changed = store.priZmene([this](const MorvexNote& note) { changes.push_back(note); });
        viewChanged = store.onChange([this] { ++viewChanges; });
    }

    MorvexNote create(const std::string& title, const std::string& body = "obsah") {
        clock.advance(std::chrono::seconds(1));
        return store.vytvorit(title, body).value();
    }

    /// A note as the phone sends it.
    MorvexNote fromPhone(const std::string& title, std::uint64_t revision = 1) {
        return {phoneRandom.uuid(), title, "z telefonu", clock.now(), clock.now(), revision, {}};
    }

    [[nodiscard]] AwaitedNotes reloaded() { return {support.path(), clock, random}; }

    static std::vector<std::string> titles(const std::vector<MorvexNote>& notes) {
        std::vector<std::string> titles;
        for (const auto& note : notes) titles.push_back(note.title);
        return titles;
    }

    static std::string sentence(const Result<MorvexNote>& outcome) {
        return outcome ? "no failure" : outcome.error().popis().czech();
    }

    using Titles = std::vector<std::string>;

    std::filesystem::path file = folder / "notes-from-iphone.json";
    AwaitedNotes store = reloaded();
    ScriptedRandom phoneRandom = [] {
        ScriptedRandom random;
        for (int i = 0; i < 1000; ++i) (void)random.uuid();
        return random;
    }();
    std::vector<MorvexNote> changes;
    int viewChanges = 0;
    Connection changed;
    Connection viewChanged;
};

} // namespace morvex
