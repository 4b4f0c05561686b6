#include "shared/wire/PublicKeys.h"

#include "shared/base/Base64.h"
#include "shared/base/Overloaded.h"

#include <algorithm>

namespace morvex {

Sentence KryptoChyba::popis() const {
    return std::visit(Overloaded{
                          [](const SpatnaDelkaKlice& e) {
                              return "Klíč má mít {ocekavano} bajtů, má jich {dostal}."_sentence(e.ocekavano,
                                                                                                 e.dostal);
                          },
                          [](const NeplatnyKlic& e) { return e.text; },
                          [](const NesedicOtisk&) -> Sentence { return "Otisk klíče nesedí."_sentence; },
                      },
                      value);
}

template <class Role> Result<PublicKey<Role>> PublicKey<Role>::fromRaw(ByteView bytes) {
    if (bytes.size() != size) return fail(KryptoChyba{KryptoChyba::SpatnaDelkaKlice{size, bytes.size()}});
    PublicKey key;
    std::ranges::copy(bytes, key.raw.begin());
    return key;
}

template <class Role> Result<PublicKey<Role>> PublicKey<Role>::parse(std::string_view base64) {
    const auto bytes = base64Decode(base64);
    if (!bytes) return fail(KryptoChyba{KryptoChyba::NeplatnyKlic{"Nejde to přečíst jako base64."_sentence}});
    return fromRaw(*bytes);
}

template <class Role> std::string PublicKey<Role>::text() const {
    return base64Encode(raw);
}

template struct PublicKey<SigningRole>;
template struct PublicKey<AgreementRole>;

} // namespace morvex
