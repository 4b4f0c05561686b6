#include "shared/trust/CryptoError.h"

#include <utility>

namespace morvex {

std::string CryptoError::popis() const {
    switch (failure) {
    case CryptoFailure::refusedKey:
        return "Veřejný klíč protějšku není bezpečný.";
    case CryptoFailure::wrongNonce:
        return "Jednorázové číslo zprávy má špatnou délku.";
    case CryptoFailure::wrongTag:
        return "Ověřovací značka zprávy má špatnou délku.";
    case CryptoFailure::unverifiable:
        return "Zpráva neprošla ověřením.";
    case CryptoFailure::tooLong:
        return "Zpráva je na zašifrování moc dlouhá.";
    case CryptoFailure::libraryFailed:
        return "Kryptografická knihovna selhala.";
    }
    std::unreachable();
}

} // namespace morvex
