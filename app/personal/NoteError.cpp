#include "app/personal/NoteError.h"

#include <utility>

namespace morvex {

Sentence NoteError::popis() const {
    switch (pripad) {
    case missingData:
        return Sentence("Poznámka musí mít název i obsah.");
    case notFound:
        return Sentence("Poznámku s tímto názvem jsem nenašel.");
    }
    std::unreachable();
}

} // namespace morvex
