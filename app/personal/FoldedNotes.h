#pragma once

#include "shared/wire/MorvexNote.h"

#include <cstddef>
#include <functional>
#include <map>
#include <string>

namespace morvex {

/// The texts of notes in the form in which they are compared. Folding takes far longer than comparing, so a
/// folded note is kept until it changes or is deleted. That takes as much memory as the notes that were
/// searched, and up to three times as much for text of rare letters. Owned by the store, used on its thread.
class FoldedNotes {
  public:
    struct Folded {
        std::string name;  ///< the title without case and diacritics
        std::string title; ///< title and body as `TextPattern::isAmong` takes them
        std::string body;
    };

    /// The reference is valid until the next call.
    const Folded& of(const MorvexNote& note);

    /// Forgets all notes that need not be searched any more.
    void keepOnly(const std::function<bool(const Uuid&)>& isLookedAt);

    /// How many folded notes are kept.
    [[nodiscard]] std::size_t size() const { return kept_.size(); }

  private:
    /// The state of a note when it was folded. The body never changes without the revision or the date.
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
