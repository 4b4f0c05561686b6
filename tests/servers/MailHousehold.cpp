#include "tests/servers/MailHousehold.h"

#include "shared/base/Base64.h"
#include "shared/wire/Json.h"
#include "tests/servers/TestNetwork.h"

#include <boost/json.hpp>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <future>
#include <iterator>
#include <utility>

namespace morvex {

namespace {

/// The text as it is, and the digits that it always has within something in base64, wherever it begins there.
std::vector<std::string> writingsOf(const std::string& text) {
    std::vector<std::string> writings{text};
    for (std::size_t before = 0; before < 3; ++before) {
        const auto digits = base64Encode(asBytes(std::string(before, 'x') + text));
        // The first and the last group also depend on what stands around the text.
        writings.push_back(digits.substr(4, digits.size() - 8));
    }
    return writings;
}

std::string contentOf(const std::filesystem::path& path) {
    std::ifstream file(path);
    return {std::istreambuf_iterator<char>(file), {}};
}

} // namespace

MailHousehold::MailHousehold(Program::Input input)
    : identity(testNetwork().authority.issue("DNS:imap.example,DNS:smtp.example")),
      imap(std::make_unique<RealImapServer>(identity, 993)),
      smtp(std::make_unique<RealSmtpServer>(identity, 465)),
      mac(startMac("mac", input)) {
    pair(*mac);
}

MailHousehold::~MailHousehold() {
    mac->type("konec");
    EXPECT_EQ(mac->wait(), 0) << mac->output();
}

std::string MailHousehold::type(const std::string& command, const std::string& answer) {
    mac->type(command);
    return mac->waitForNextLine(answer);
}

std::string MailHousehold::add(const TypedAccount& account, const std::string& outcome) {
    type("ucet-pridat", "Název účtu?");
    type(account.name, "E-mailová adresa?");
    type(RealImapServer::username, "Jméno odesílatele?");
    type(account.senderName, "IMAP server?");
    type(account.imapHost, "SMTP server?");
    type(account.smtpHost, "Heslo nebo heslo pro aplikaci?");
    type(account.password, "Přidáno: " + account.name);
    return mac->waitForNextLine(outcome);
}

Ended MailHousehold::send(const boost::json::object& mail, const std::function<void()>& decide,
                          const std::vector<std::string>& phoneOptions) {
    auto sent = std::async(std::launch::async, [&] { return call("mac.mail.send", mail, phoneOptions); });
    mac->waitForNextLine("Čeká na potvrzení: Odeslat mail");
    mac->waitForNextLine("Odpověz „potvrdit“ nebo „zamitnout“.");
    decide();
    return sent.get();
}

std::vector<std::string> MailHousehold::foldersWith(const std::string& text) const {
    const auto writings = writingsOf(text);
    std::vector<std::string> found;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(temporary.path())) {
        if (!entry.is_regular_file()) continue;
        const auto content = contentOf(entry.path());
        const auto isIn = [&content](const std::string& writing) { return content.contains(writing); };
        if (std::ranges::any_of(writings, isIn))
            found.push_back(entry.path().parent_path().filename().string());
    }
    return found;
}

} // namespace morvex
