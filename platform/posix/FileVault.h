#pragma once

#include "platform/ports/SecretVault.h"
#include "platform/posix/base/FileDescriptor.h"

#include <filesystem>
#include <sys/types.h>

namespace morvex {

/// Secrets in files that only the user can read: "<data home>/Morvex/vault/<service>/<account>", as raw
/// bytes. For computers without a Secret Service. File modes that have become wider are tightened on access;
/// a symbolic link, a folder or a device in place of an item is refused and left as it is.
class FileVault final : public SecretVault {
  public:
    explicit FileVault(const std::filesystem::path& dataHome) : root_(dataHome / "Morvex" / "vault") {}

    Found find(const std::string& service, const std::string& account) override;
    std::int32_t update(const std::string& service, const std::string& account, ByteView bytes) override;
    std::int32_t add(const std::string& service, const std::string& account, ByteView bytes) override;
    std::int32_t remove(const std::string& service, const std::string& account) override;
    [[nodiscard]] std::optional<Sentence> text(std::int32_t status) const override;

    [[nodiscard]] Place place() override { return Place::privateFiles; }

    /// Reading a file asks nobody.
    void stopAsking() override {}

    void end() override {}

    /// Whether any item of any service exists, or may exist where the folders cannot be read.
    [[nodiscard]] bool hasItems() const;

  private:
    struct Opened {
        std::int32_t status;
        FileDescriptor file; ///< closed unless the status is `ok`
    };

    [[nodiscard]] std::filesystem::path pathOf(const std::string& service, const std::string& account) const;
    /// Does not follow a link in the last component. Checks the kind of file and removes the permissions of
    /// other users.
    static Opened openPrivate(const std::filesystem::path& path, mode_t kind, mode_t mode);
    [[nodiscard]] Opened open(const std::string& service, const std::string& account) const;
    [[nodiscard]] std::int32_t write(const std::string& service, const std::string& account,
                                     ByteView bytes) const;

    std::filesystem::path root_;
};

} // namespace morvex
