#include "app/execution/WideFolder.h"

#include "foundation/Paths.h"

#include <utility>

namespace morvex {

Sentence WideFolder::popis() const {
    switch (reach) {
    case Reach::disk:
        return "To je celý disk: telefon se pak dostane ke všemu, k čemu se tu dostaneš ty."_sentence;
    case Reach::homeFolder:
        return "To je tvoje domovská složka: telefon se pak dostane ke všem tvým souborům."_sentence;
    case Reach::aboveHome:
        return "V téhle složce leží tvoje domovská: telefon se pak dostane ke všem tvým souborům."_sentence;
    }
    std::unreachable();
}

std::optional<WideFolder> WideFolder::judge(const std::string& slozka,
                                            const StandardFolders& standardFolders) {
    const auto canonical = paths::resolved(slozka);
    if (!canonical) return std::nullopt;
    if (*canonical == "/") return WideFolder{slozka, Reach::disk};
    // The environment may name a home folder other than the account's.
    for (const auto& home : {standardFolders.home(), standardFolders.accountHome()}) {
        const auto homeFolder = paths::resolved(home);
        if (homeFolder == canonical) return WideFolder{slozka, Reach::homeFolder};
        if (homeFolder && homeFolder->starts_with(*canonical + "/"))
            return WideFolder{slozka, Reach::aboveHome};
    }
    return std::nullopt;
}

} // namespace morvex
