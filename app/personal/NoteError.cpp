#include "app/personal/NoteError.h"

#include <utility>

namespace morvex {

std::string NoteError::popis() const {
    switch (pripad) {
    case missingData:
        return "Poznámka musí mít název i obsah.";
    case notFound:
        return "Poznámku s tímto názvem jsem nenašel.";
    }
    std::unreachable();
}

} // namespace morvex
