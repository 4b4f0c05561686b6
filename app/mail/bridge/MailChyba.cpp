#include "app/mail/bridge/MailChyba.h"

namespace morvex {

namespace {

struct Popis {
    Sentence operator()(const MailChyba::Selhalo& chyba) const { return chyba.text; }

    Sentence operator()(MailChyba::Nepovoleno) const {
        return "macOS nepovolil ovládání aplikace Mail. Otevři Nastavení systému → Soukromí a zabezpečení → "
               "Automatizace a povol tam Morvex přístup k Mailu."_sentence;
    }

    Sentence operator()(MailChyba::Neodpovedel) const {
        return "Mail neodpověděl včas. Zkus menší počet zpráv."_sentence;
    }

    Sentence operator()(MailChyba::AppleMailBezUctu) const {
        return "V Apple Mailu není nastavený žádný účet."_sentence;
    }

    Sentence operator()(MailChyba::NepodporovaneRozhrani) const {
        return "Apple Mail neposkytl podporované automatizační rozhraní."_sentence;
    }

    Sentence operator()(MailChyba::OnlyOnMac) const {
        return "Apple Mail existuje jen v systému macOS."_sentence;
    }
};

} // namespace

Sentence MailChyba::popis() const {
    return std::visit(Popis{}, kind);
}

} // namespace morvex
