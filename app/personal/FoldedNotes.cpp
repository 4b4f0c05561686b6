#include "app/personal/FoldedNotes.h"

#include "foundation/Text.h"
#include "foundation/TextPattern.h"

#include <utility>

namespace morvex {

const FoldedNotes::Folded& FoldedNotes::of(const MorvexNote& note) {
    Version version{note.revision, note.updatedAt, note.title};
    const auto [kept, isNew] = kept_.try_emplace(note.id);
    if (isNew || kept->second.version != version)
        kept->second = {
            std::move(version),
            {fold(note.title), TextPattern::searchable(note.title), TextPattern::searchable(note.body)}};
    return kept->second.folded;
}

void FoldedNotes::keepOnly(const std::function<bool(const Uuid&)>& isLookedAt) {
    std::erase_if(kept_, [&isLookedAt](const auto& each) { return !isLookedAt(each.first); });
}

} // namespace morvex
