#pragma once

#include "tests/support/ChildProgram.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/TestAuthority.h"

#include <filesystem>
#include <string>
#include <vector>

namespace morvex {

/// A real MCP server, from the packages of npm, on 127.0.0.1 behind TLS. It answers at every path and ends
/// with this object.
class NodeServer {
  public:
    /// `kind` is one of those in kinds.mjs; the certificate is for this host name. Port 0 takes a free one.
    NodeServer(const std::string& kind, const TestAuthority& authority, const std::string& name,
               int port = 0);

    [[nodiscard]] int port() const { return port_; }

    /// The file with the certificate, in PEM.
    [[nodiscard]] std::filesystem::path certificate() const { return folder_.path() / "certificate.pem"; }

  private:
    [[nodiscard]] std::vector<std::string> command(const std::string& kind,
                                                   const TestAuthority::Identity& identity, int port) const;
    int readPort();

    TemporaryFolder folder_;
    ChildProgram program_;
    int port_;
};

} // namespace morvex
