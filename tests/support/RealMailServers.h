#pragma once

#include "platform/net/AsioTlsClient.h"
#include "tests/support/ChildProgram.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/TestAuthority.h"

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace morvex {

/// Leads the ports of mail to those on which the servers of a test listen, and changes nothing else.
class OtherPorts final : public TlsClient {
  public:
    OtherPorts(TlsClient& tls, std::map<std::uint16_t, std::uint16_t> ports)
        : tls_(tls), ports_(std::move(ports)) {}

    Task<Result<std::shared_ptr<TlsConnection>>> connect(std::string host, std::uint16_t port,
                                                         std::stop_token stop) override {
        return tls_.connect(std::move(host), ports_.at(port), std::move(stop));
    }

  private:
    TlsClient& tls_;
    std::map<std::uint16_t, std::uint16_t> ports_;
};

/// A certificate and its key as the files that servers read.
struct IdentityFiles {
    std::filesystem::path certificate;
    std::filesystem::path key;

    IdentityFiles(const std::filesystem::path& folder, const TestAuthority::Identity& identity)
        : certificate(folder / "certificate.pem"), key(folder / "key.pem") {
        std::ofstream(certificate) << identity.certificate;
        std::ofstream(key) << identity.key;
    }
};

/// Dovecot with one account, whose mailbox the test fills. Needs dovecot-imapd.
class RealImapServer {
  public:
    static constexpr auto username = "jana@b.cz";
    static constexpr auto password = R"(tajné"he\slo)";

    /// Without a port it listens on a free one.
    explicit RealImapServer(const TestAuthority::Identity& identity, std::optional<std::uint16_t> port = {});

    [[nodiscard]] std::uint16_t port() const { return port_; }

    /// Puts a message into the inbox. Those whose names come first have the lower UIDs.
    void deliver(const std::string& name, const std::string& message, bool isRead = false) const;

  private:
    [[nodiscard]] std::string settings(const IdentityFiles& identity) const;

    TemporaryFolder folder_;
    std::uint16_t port_;
    std::unique_ptr<ChildProgram> server_;
};

/// A mail server that takes messages, of python3-aiosmtpd.
class RealSmtpServer {
  public:
    static constexpr auto username = "jana@b.cz";
    static constexpr auto password = R"(tajné"he\slo)";

    /// Without a port it listens on a free one.
    explicit RealSmtpServer(const TestAuthority::Identity& identity, std::uint16_t port = 0);

    [[nodiscard]] std::uint16_t port() const { return port_; }

    /// The next message that it took, as JSON.
    std::string nextMessage() { return server_->readLine(); }

    /// Ends the server, and gives the messages that it took and nobody has asked for.
    std::vector<std::string> end();

  private:
    TemporaryFolder folder_;
    std::unique_ptr<ChildProgram> server_;
    std::uint16_t port_ = 0;
};

} // namespace morvex
