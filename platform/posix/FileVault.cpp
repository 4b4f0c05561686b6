#include "platform/posix/FileVault.h"

#include "foundation/ProgramLog.h"
#include "platform/posix/VaultRules.h"
#include "platform/posix/base/AtomicFile.h"
#include "platform/posix/base/Uninterrupted.h"
#include "shared/base/Ascii.h"
#include "shared/base/Hex.h"
#include "shared/base/SystemError.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace morvex {

namespace {

constexpr mode_t folderMode = 0700;
constexpr mode_t itemMode = 0600;

bool isPlain(char letter) {
    return isAsciiLetterOrDigit(letter) || std::string_view("._-").contains(letter);
}

/// Encodes any name except the empty one as a file name.
std::string fileName(const std::string& name) {
    bool special = name == "." || name == "..";
    std::string encoded;
    for (char letter : name) {
        if (isPlain(letter) && !special) {
            encoded += letter;
            continue;
        }
        auto byte = static_cast<unsigned char>(letter);
        encoded.append({'%', upperHexDigits[byte >> 4], upperHexDigits[byte & 15]});
    }
    return encoded;
}

std::int32_t refused(const Error& error) {
    logCause("keeping a secret", error);
    return vaultRules::statusOf(error);
}

std::int32_t statusOf(int code) {
    return code == ENOENT ? vaultStatus::itemNotFound : refused(SystemError{code});
}

} // namespace

SecretVault::Found FileVault::find(const std::string& service, const std::string& account) {
    auto opened = open(service, account);
    if (opened.status != vaultStatus::ok) return {opened.status, {}};
    auto bytes = readUpTo(opened.file.get(), vaultRules::itemLimit);
    if (!bytes) return {refused(bytes.error()), {}};
    return {vaultStatus::ok, *std::move(bytes)};
}

std::int32_t FileVault::update(const std::string& service, const std::string& account, ByteView bytes) {
    auto status = open(service, account).status;
    return status == vaultStatus::ok ? write(service, account, bytes) : status;
}

std::int32_t FileVault::add(const std::string& service, const std::string& account, ByteView bytes) {
    auto status = open(service, account).status;
    if (status == vaultStatus::itemNotFound) return write(service, account, bytes);
    return status == vaultStatus::ok ? vaultStatus::duplicateItem : status;
}

std::int32_t FileVault::remove(const std::string& service, const std::string& account) {
    auto status = open(service, account).status;
    // The draft of a save that crashed may contain all or part of the secret.
    if (status == vaultStatus::ok || status == vaultStatus::itemNotFound)
        removeDrafts(pathOf(service, account));
    if (status != vaultStatus::ok) return status;
    const auto path = pathOf(service, account);
    return uninterrupted([&] { return ::unlink(path.c_str()); }) == 0 ? vaultStatus::ok : statusOf(errno);
}

std::optional<Sentence> FileVault::text(std::int32_t status) const {
    return vaultRules::text(status);
}

bool FileVault::hasItems() const {
    std::error_code error;
    std::filesystem::recursive_directory_iterator entry(root_, error);
    for (; !error && entry != std::filesystem::recursive_directory_iterator(); entry.increment(error))
        if (entry.depth() == 1 && entry->is_regular_file(error)) return true;
    return error && error != std::errc::no_such_file_or_directory;
}

std::filesystem::path FileVault::pathOf(const std::string& service, const std::string& account) const {
    return root_ / fileName(service) / fileName(account);
}

FileVault::Opened FileVault::openPrivate(const std::filesystem::path& path, mode_t kind, mode_t mode) {
    FileDescriptor file(uninterrupted(
        [&] { return ::open(path.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC); }));
    if (!file) return {statusOf(errno), {}};
    struct stat status{};
    if (uninterrupted([&] { return ::fstat(file.get(), &status); }) != 0 || (status.st_mode & S_IFMT) != kind)
        return {vaultStatus::io, {}};
    if ((status.st_mode & 07777) != mode && ::fchmod(file.get(), mode) != 0) return {vaultStatus::io, {}};
    return {vaultStatus::ok, std::move(file)};
}

FileVault::Opened FileVault::open(const std::string& service, const std::string& account) const {
    if (service.empty() || account.empty()) return {vaultStatus::io, {}};
    auto path = pathOf(service, account);
    for (const auto& folder : {root_, path.parent_path()}) {
        auto opened = openPrivate(folder, S_IFDIR, folderMode);
        if (opened.status != vaultStatus::ok) return opened;
    }
    return openPrivate(path, S_IFREG, itemMode);
}

std::int32_t FileVault::write(const std::string& service, const std::string& account, ByteView bytes) const {
    if (bytes.size() > vaultRules::itemLimit) return vaultStatus::io;
    const auto written = writeAtomically(pathOf(service, account), bytes);
    return written ? vaultStatus::ok : refused(written.error());
}

} // namespace morvex
