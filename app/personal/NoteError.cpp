#include "app/personal/NoteError.h"

#include "shared/base/InCzechAlone.h"

#include <utility>

namespace morvex {

Sentence NoteError::popis() const {
    switch (kind) {
    case missingData:
        return inCzechAlone("Poznámka musí mít název i obsah.");
    case notFound:
        return inCzechAlone("Poznámku s tímto názvem jsem nenašel.");
    }
    std::unreachable();
}

} // namespace morvex
