#include "platform/posix/qt/LockFileInstance.h"

#include "foundation/ProgramLog.h"
#include "platform/posix/base/AtomicFile.h"
#include "shared/base/SystemError.h"

#include <array>
#include <cerrno>
#include <fcntl.h>
#include <string>
#include <sys/file.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>
#include <utility>

namespace morvex {

namespace {

constexpr const char* socketName = "call";

FileDescriptor openSocket() {
    return FileDescriptor(::socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
}

/// Binds or connects the socket. An address holds 108 bytes and the folder's path may be longer, so the way
/// leads through the descriptor of the folder.
template <class Call>
bool withAddress(const std::filesystem::path& folder, const FileDescriptor& socket, Call call) {
    FileDescriptor held(::open(folder.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
    if (!held || !socket) return false;
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    auto path = "/proc/self/fd/" + std::to_string(held.get()) + "/" + socketName;
    path.copy(address.sun_path, sizeof address.sun_path - 1);
    return call(socket.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
}

} // namespace

Result<LockFileInstance::Claim> LockFileInstance::claim() {
    if (lock_) return Claim::made;
    if (auto made = makePrivateFolders(folder_); !made) return unusable(made.error());
    FileDescriptor file(
        ::open((folder_ / "lock").c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK, 0600));
    if (!file) return unusable(SystemError{errno});
    if (::flock(file.get(), LOCK_EX | LOCK_NB) != 0) {
        if (errno == EWOULDBLOCK) return Claim::heldByAnother;
        return unusable(SystemError{errno});
    }
    lock_ = std::move(file);
    return Claim::made;
}

std::unexpected<Error> LockFileInstance::unusable(const Error& why) const {
    logCause("using the data folder", why);
    return fail(
        TextError{"Složku s daty „{slozka}“ nejde použít: {duvod}"_sentence(folder_.string(), why.popis())});
}

bool LockFileInstance::callOther() {
    auto socket = openSocket();
    return withAddress(folder_, socket, ::connect) && ::send(socket.get(), "", 1, MSG_NOSIGNAL) == 1;
}

void LockFileInstance::onCall(std::function<void()> called) {
    if (!lock_) return;
    // A leftover of a process that has ended; since we hold the lock, nobody else listens on it.
    std::error_code ignored;
    std::filesystem::remove(folder_ / socketName, ignored);
    socket_ = openSocket();
    if (!withAddress(folder_, socket_, ::bind)) return;
    calls_ = std::make_unique<QSocketNotifier>(socket_.get(), QSocketNotifier::Read);
    QObject::connect(calls_.get(), &QSocketNotifier::activated, calls_.get(),
                     [this, called = std::move(called)] {
                         std::array<char, 16> bytes{};
                         while (::recv(socket_.get(), bytes.data(), bytes.size(), 0) >= 0) {
                         }
                         called();
                     });
}

} // namespace morvex
