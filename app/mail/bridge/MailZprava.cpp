#include "app/mail/bridge/MailZprava.h"

#include "shared/wire/Describe.h"

namespace morvex {

namespace {

constexpr const char* withoutSubject = "(bez předmětu)";

} // namespace

void describe(auto& io, Is<MailZprava> auto& zprava) {
    io.assumed("id", zprava.id, "");
    io.assumed("ucet", zprava.ucet, "");
    io.assumed("slozka", zprava.slozka, "");
    io.assumed("od", zprava.od, "");
    io.assumed("predmet", zprava.predmet, withoutSubject);
    io.assumed("datum", zprava.datum, "");
    io.assumed("precteno", zprava.precteno, true);
    io.assumed("ukazka", zprava.ukazka, "");
    if constexpr (requires { zprava.predmet = withoutSubject; })
        if (zprava.predmet.empty()) zprava.predmet = withoutSubject;
}

template struct Codec<MailZprava>;

} // namespace morvex
