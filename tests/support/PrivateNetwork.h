#pragma once

#include "tests/support/TemporaryFolder.h"

#include <expected>
#include <filesystem>
#include <memory>
#include <string>

namespace morvex {

/// A network that only this process and the programs it starts can see: loopback alone, no way out, names and
/// authorities of its own, and every port free, also those below 1024. Names and authorities are added where
/// the system looks for them, so that programs need no switch. A test program enters it in its `main` and
/// stays in it until its end.
class PrivateNetwork {
  public:
    /// Takes this process, which may have one thread only, out of the system's network. Needs root or user
    /// namespaces; without them it gives a sentence that says so, and the process should end. Users keep
    /// their id, and programs started later have no more rights than before.
    static std::expected<std::unique_ptr<PrivateNetwork>, std::string> enter();

    /// Lets the system find this name at an IPv4 address of 127.0.0.0/8.
    void addName(const std::string& name, const std::string& address = "127.0.0.1") const;

    /// Adds a certificate authority (PEM) to those of the system, in the file of all and in the folder.
    void trust(const std::string& certificate) const;

  private:
    PrivateNetwork() = default;
    [[nodiscard]] std::filesystem::path freePlace(unsigned long hash) const;

    TemporaryFolder folder_;
    std::filesystem::path hosts_ = folder_.path() / "hosts";
    std::filesystem::path authorities_ = folder_.path() / "certs";
};

} // namespace morvex
