#include "app/mail/protocol/SmtpReply.h"

#include "tests/app/mail/protocol/MailParts.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace morvex {
namespace {

TEST(SmtpReply, GoesOnUnlessItsFourthByteIsABlank) {
    for (const auto* line : {"250-A", "250-", "250.A", "250\tA", "2501 A", "xyz-", "\u0159\u0159"})
        EXPECT_TRUE(continuesSmtpReply(line)) << line;
    for (const auto* line : {"250 A", "250 ", "250", "25", "", "xyz", "x z y"})
        EXPECT_FALSE(continuesSmtpReply(line)) << line;
}

TEST(SmtpReply, HasTheWantedCodeOrFails) {
    constexpr auto unintelligible = "Nesrozumitelná odpověď SMTP serveru.";
    constexpr auto refused = "Server odmítl přihlášení. Zkontroluj adresu a heslo nebo heslo pro aplikaci.";
    for (const auto& [line, words] : std::vector<std::pair<std::string, std::string>>{
             {"250", "ok"},
             {"250 Ok", "ok"},
             {"251 Ok", "SMTP server odpověděl: 251 Ok"},
             {"550 5.1.1 Nikdo", "SMTP server odpověděl: 550 5.1.1 Nikdo"},
             {"000", "SMTP server odpověděl: 000"},
             {"534 x", refused},
             {"535", refused},
             {"533 x", "SMTP server odpověděl: 533 x"},
             {"xyz", unintelligible},
             {"", unintelligible},
             {"25", unintelligible},
             {"25x", unintelligible},
             {"-25", unintelligible},
             {"+25", unintelligible},
             {" 25", unintelligible},
             {"2 50", unintelligible},
         })
        EXPECT_EQ(told(checkSmtpReply(line, 250)), words) << line;
    EXPECT_EQ(told(checkSmtpReply("535 x", 535)), refused) << "whatever is wanted";
}

} // namespace
} // namespace morvex
