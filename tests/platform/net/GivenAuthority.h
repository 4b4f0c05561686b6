#pragma once

#include "tests/support/EnvironmentValue.h"
#include "tests/support/TemporaryFolder.h"

#include <fstream>
#include <string>

namespace morvex {

/// As long as it lives the TLS library is told that the authorities to trust stand in a file, which holds
/// this one.
class GivenAuthority {
  public:
    explicit GivenAuthority(const std::string& certificate) { std::ofstream(file()) << certificate; }

  private:
    [[nodiscard]] std::filesystem::path file() const { return folder_.path() / "authorities.pem"; }

    TemporaryFolder folder_;
    EnvironmentValue variable_{"SSL_CERT_FILE", file().c_str()};
};

} // namespace morvex
