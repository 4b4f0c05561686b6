#include "app/mail/protocol/MacMailProtocolError.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace morvex {
namespace {

TEST(MacMailProtocolError, SaysWhatHappened) {
    using E = MacMailProtocolError;
    const std::vector<std::pair<E, std::string>> rows{
        {E::connection(Sentence("kabel")), "Spojení s poštovním serverem selhalo: kabel"},
        {E::protocolError(Sentence("A0002 NO")), "A0002 NO"},
        {E::login(), "Server odmítl přihlášení. Zkontroluj adresu a heslo nebo heslo pro aplikaci."},
        {E::invalidAddress(), "E-mailová adresa není platná."},
    };
    for (const auto& [error, words] : rows) EXPECT_EQ(error.popis().czech(), words);
}

} // namespace
} // namespace morvex
