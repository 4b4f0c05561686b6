#pragma once

#include "shared/wire/MorvexNote.h"

#include <cstddef>
#include <functional>
#include <map>
#include <string>

namespace morvex {

/// The texts of notes as they are compared. Folding takes far longer than comparing, so what was folded once
/// is kept until the note changes or goes: as much memory again as the notes that were looked at, for text
/// that consists of rare letters up to three times as much. Owned by the store, on its thread.
class FoldedNotes {
  public:
    struct Folded {
        std::string name;  ///< the title without case and diacritics
        std::string title; ///< both as `TextPattern::isAmong` takes them
        std::string body;
    };

    /// Stands until the next call.
    const Folded& of(const MorvexNote& note);

    /// Forgets the notes that are not, or no more, to be looked at.
    void keepOnly(const std::function<bool(const Uuid&)>& isLookedAt);

    /// How many notes it keeps.
    [[nodiscard]] std::size_t size() const { return kept_.size(); }

  private:
    /// What a note was like when it was folded. Its body does not change without its revision or date.
    struct Version {
        std::uint64_t revision = 0;
        Date updatedAt;
        std::string title;

        bool operator==(const Version&) const = default;
    };

    struct Kept {
        Version version;
        Folded folded;
    };

    std::map<Uuid, Kept> kept_;
};

} // namespace morvex
