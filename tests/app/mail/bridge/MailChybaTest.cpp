#include "app/mail/bridge/MailChyba.h"

#include "app/mail/bridge/MailAccountsError.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace morvex {
namespace {

TEST(MailChyba, EachCaseHasItsSentence) {
    using C = MailChyba;
    const std::vector<std::pair<C, std::string>> rows{
        {{C::Selhalo{Sentence("Error: cizí slova")}}, "Error: cizí slova"},
        {{C::Nepovoleno{}},
         "macOS nepovolil ovládání aplikace Mail. Otevři Nastavení systému → Soukromí a zabezpečení → "
         "Automatizace a povol tam Morvex přístup k Mailu."},
        {{C::Neodpovedel{}}, "Mail neodpověděl včas. Zkus menší počet zpráv."},
        {{C::AppleMailBezUctu{}}, "V Apple Mailu není nastavený žádný účet."},
        {{C::NepodporovaneRozhrani{}}, "Apple Mail neposkytl podporované automatizační rozhraní."},
        {{C::OnlyOnMac{}}, "Apple Mail existuje jen v systému macOS."},
    };
    for (const auto& [chyba, sentence] : rows) EXPECT_EQ(chyba.popis().czech(), sentence);
}

TEST(MailAccountsError, EachCaseHasItsSentence) {
    using E = MailAccountsError;
    const std::vector<std::pair<E, std::string>> rows{
        {{E::NoAccountEnabled{}}, "V Morvex není povolený žádný poštovní účet."},
        {{E::ChooseDefault{}}, "Vyber v nastavení Morvex výchozí účet pro odesílání."},
        {{E::AccountNotEnabled{"Domov"}}, "Poštovní účet „Domov“ není v Morvex povolený."},
    };
    for (const auto& [error, sentence] : rows) EXPECT_EQ(error.popis().czech(), sentence);
}

} // namespace
} // namespace morvex
