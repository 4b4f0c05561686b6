#include "tests/support/PrivateNetwork.h"

#include "platform/posix/base/FileDescriptor.h"
#include "shared/base/Require.h"

#include <openssl/pem.h>
#include <openssl/x509.h>

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <fstream>
#include <iomanip>
#include <net/if.h>
#include <sched.h>
#include <sstream>
#include <sys/ioctl.h>
#include <sys/mount.h>
#include <sys/socket.h>
#include <unistd.h>

namespace morvex {

namespace {

constexpr const char* systemAuthorities = "/etc/ssl/certs";

/// Writes into a file of the kernel, which takes its text in one piece.
bool tell(const char* file, const std::string& text) {
    FileDescriptor open(::open(file, O_WRONLY | O_CLOEXEC));
    return open.get() >= 0 && ::write(open.get(), text.data(), text.size()) == std::ssize(text);
}

/// Root needs no user namespace, and would get none inside a chroot.
bool unshareNetwork() {
    constexpr int own = CLONE_NEWNS | CLONE_NEWNET;
    const auto same = [](auto id) { return std::to_string(id) + " " + std::to_string(id) + " 1"; };
    const auto user = same(::getuid());
    const auto group = same(::getgid());
    if (::unshare(own) == 0) return true;
    if (errno != EPERM || ::unshare(own | CLONE_NEWUSER) != 0) return false;
    return tell("/proc/self/setgroups", "deny") && tell("/proc/self/uid_map", user) &&
           tell("/proc/self/gid_map", group);
}

bool raiseLoopback() {
    FileDescriptor socket(::socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0));
    ifreq loopback{};
    std::strcpy(loopback.ifr_name, "lo");
    loopback.ifr_flags = IFF_UP | IFF_RUNNING;
    return socket.get() >= 0 && ::ioctl(socket.get(), SIOCSIFFLAGS, &loopback) == 0;
}

bool cover(const char* place, const std::filesystem::path& with) {
    return ::mount(with.c_str(), place, nullptr, MS_BIND, nullptr) == 0;
}

/// The first step that the system refuses, with its reason; nothing if it allows all of them.
std::string refusalOf(const std::filesystem::path& hosts, const std::filesystem::path& authorities) {
    const auto refused = [](const char* step) { return std::string(step) + ": " + std::strerror(errno); };
    if (!unshareNetwork()) return refused("own namespaces");
    if (::mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0) return refused("own mounts");
    if (!cover("/etc/hosts", hosts) || !cover(systemAuthorities, authorities)) return refused("own files");
    if (!raiseLoopback()) return refused("loopback");
    // Programs of an ordinary user have no right of their own to the ports below 1024.
    if (!tell("/proc/sys/net/ipv4/ip_unprivileged_port_start", "0")) return refused("low ports");
    return {};
}

} // namespace

std::expected<std::unique_ptr<PrivateNetwork>, std::string> PrivateNetwork::enter() {
    std::unique_ptr<PrivateNetwork> network(new PrivateNetwork);
    std::ofstream(network->hosts_) << "127.0.0.1 localhost\n";
    std::filesystem::copy(systemAuthorities, network->authorities_,
                          std::filesystem::copy_options::recursive |
                              std::filesystem::copy_options::copy_symlinks);
    if (const auto refusal = refusalOf(network->hosts_, network->authorities_); !refusal.empty())
        return std::unexpected("this system allows no private network (" + refusal +
                               "). Root has one, and so have users where user namespaces are allowed.");
    return network;
}

void PrivateNetwork::addName(const std::string& name, const std::string& address) const {
    std::ofstream(hosts_, std::ios::app) << address << ' ' << name << '\n';
}

void PrivateNetwork::trust(const std::string& certificate) const {
    std::unique_ptr<BIO, decltype(&BIO_free)> text(
        BIO_new_mem_buf(certificate.data(), static_cast<int>(certificate.size())), &BIO_free);
    std::unique_ptr<X509, decltype(&X509_free)> parsed(
        PEM_read_bio_X509(text.get(), nullptr, nullptr, nullptr), &X509_free);
    require(parsed != nullptr, "an authority is no certificate");
    std::ofstream(authorities_ / "ca-certificates.crt", std::ios::app) << certificate;
    std::ofstream(freePlace(X509_subject_name_hash(parsed.get()))) << certificate;
}

/// OpenSSL looks for an authority in the folder by the hash of its name, and counts those with the same one.
std::filesystem::path PrivateNetwork::freePlace(unsigned long hash) const {
    for (int number = 0;; ++number) {
        std::ostringstream name;
        name << std::hex << std::setw(8) << std::setfill('0') << hash << std::dec << '.' << number;
        if (auto place = authorities_ / name.str(); !std::filesystem::exists(place)) return place;
    }
}

} // namespace morvex
