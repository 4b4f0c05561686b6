#include "shared/trust/CryptoError.h"

#include <utility>

namespace morvex {

Sentence CryptoError::popis() const {
    switch (failure) {
    case CryptoFailure::refusedKey:
        return "Veřejný klíč protějšku není bezpečný."_sentence;
    case CryptoFailure::wrongNonce:
        return "Jednorázové číslo zprávy má špatnou délku."_sentence;
    case CryptoFailure::wrongTag:
        return "Ověřovací značka zprávy má špatnou délku."_sentence;
    case CryptoFailure::unverifiable:
        return "Zpráva neprošla ověřením."_sentence;
    case CryptoFailure::tooLong:
        return "Zpráva je na zašifrování moc dlouhá."_sentence;
    case CryptoFailure::libraryFailed:
        return "Kryptografická knihovna selhala."_sentence;
    }
    std::unreachable();
}

} // namespace morvex
