#include "app/mail/protocol/MailAddress.h"

#include "app/mail/protocol/MacMailProtocolError.h"
#include "app/mail/protocol/MailLogin.h"
#include "tests/app/mail/protocol/MailParts.h"

#include <gtest/gtest.h>

#include <string>

namespace morvex {
namespace {

using namespace std::string_literals;

TEST(MailAddress, TakesPlainAddresses) {
    for (const auto& address : {"a@b.cz"s, "Jana.Nova_1+x%y-z@Mail.Example.CO"s, "..@..cz"s, "-@-.cz"s,
                                "a@b."s + std::string(63, 'z')})
        EXPECT_TRUE(checkMailAddress(address)) << address;
}

TEST(MailAddress, RefusesWhateverElse) {
    for (const auto& address : {""s,         "@"s,
                                "a"s,        "a@"s,
                                "@b.cz"s,    "a@b"s,
                                "a@.cz"s,    "a@b."s,
                                "a@b.c"s,    "a@b.c1"s,
                                "a@b.cz."s,  "a@b.cz "s,
                                " a@b.cz"s,  "a@@b.cz"s,
                                "a@c@b.cz"s, "a b@c.cz"s,
                                "<a@b.cz>"s, "a,b@c.cz"s,
                                "a@b_c.cz"s, "\"a\"@b.cz"s,
                                "č@b.cz"s,   "a@č.cz"s,
                                "a@b.čz"s,   "a\0@b.cz"s,
                                "a@b.cz\0"s, "a@b."s + std::string(64, 'z')}) {
        const auto checked = checkMailAddress(address);
        ASSERT_FALSE(checked) << address;
        EXPECT_EQ(*checked.error().as<MacMailProtocolError>(), MacMailProtocolError::invalidAddress());
    }
}

TEST(MailAddress, RefusesALineBreakAndTheHeaderBehindIt) {
    for (const auto& address : {"a@b.cz\n"s, "a@b.cz\r\n"s, "\na@b.cz"s, "a@b.cz\r\nBcc: x@y.cz"s,
                                "a\n@b.cz"s, "a@b\n.cz"s, "a@b.cz>\r\nDATA"s})
        EXPECT_EQ(told(checkMailAddress(address)), "E-mailová adresa není platná.");
}

TEST(MailLogin, RefusesWhatWouldBreakALine) {
    EXPECT_TRUE((MailLogin{"mail.cz", "a b\"\\č", "p \"\\č"}.check()));
    EXPECT_TRUE((MailLogin{"mail.cz", "", ""}.check()));
    for (const auto& part : {"x\r"s, "\nx"s, "x\0y"s}) {
        EXPECT_EQ(told(MailLogin{"mail.cz" + part, "u", "p"}.check()),
                  "Spojení s poštovním serverem selhalo: Adresa serveru není platná.");
        EXPECT_EQ(told(MailLogin{"mail.cz", part, "p"}.check()), "E-mailová adresa není platná.");
        EXPECT_EQ(told(MailLogin{"mail.cz", "u", part}.check()),
                  "Server odmítl přihlášení. Zkontroluj adresu a heslo nebo heslo pro aplikaci.");
    }
}

} // namespace
} // namespace morvex
