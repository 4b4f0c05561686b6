#pragma once

#include "platform/ports/SecretVault.h"
#include "platform/posix/base/FileDescriptor.h"

#include <filesystem>
#include <sys/types.h>

namespace morvex {

/// Secrets in files that only the user can read: "<data home>/Morvex/vault/<service>/<account>", the raw
/// bytes. For computers without a Secret Service. Modes that became wider are tightened on the way; a
/// symbolic link, a folder or a device in place of an item is refused and left as it is.
class FileVault final : public SecretVault {
  public:
    explicit FileVault(const std::filesystem::path& dataHome) : root_(dataHome / "Morvex" / "vault") {}

    Found find(const std::string& service, const std::string& account) override;
    std::int32_t update(const std::string& service, const std::string& account, ByteView bytes) override;
    std::int32_t add(const std::string& service, const std::string& account, ByteView bytes) override;
    std::int32_t remove(const std::string& service, const std::string& account) override;
    [[nodiscard]] std::optional<Sentence> text(std::int32_t status) const override;

    [[nodiscard]] Place place() override { return Place::privateFiles; }

    /// Nobody is asked for a file.
    void stopAsking() override {}

    void end() override {}

    /// Whether any item of any service is stored, or may be in what cannot be read.
    [[nodiscard]] bool hasItems() const;

  private:
    struct Opened {
        std::int32_t status;
        FileDescriptor file; ///< closed unless the status is `ok`
    };

    [[nodiscard]] std::filesystem::path pathOf(const std::string& service, const std::string& account) const;
    /// Without following a link in the last place. Demands the kind of file and closes the mode to others.
    static Opened openPrivate(const std::filesystem::path& path, mode_t kind, mode_t mode);
    [[nodiscard]] Opened open(const std::string& service, const std::string& account) const;
    [[nodiscard]] std::int32_t write(const std::string& service, const std::string& account,
                                     ByteView bytes) const;

    std::filesystem::path root_;
};

} // namespace morvex
