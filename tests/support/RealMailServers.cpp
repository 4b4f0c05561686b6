#include "tests/support/RealMailServers.h"

#include "shared/base/Require.h"
#include "tests/support/LoopbackPort.h"

#include <array>
#include <chrono>
#include <grp.h>
#include <pwd.h>
#include <thread>
#include <unistd.h>

namespace morvex {

namespace {

using namespace std::chrono_literals;

struct User {
    std::string name;
    std::string group;
    uid_t uid;
    gid_t gid;
};

User userOf(const passwd* entry) {
    require(entry != nullptr, "a user of a server is missing");
    const auto* group = ::getgrgid(entry->pw_gid);
    require(group != nullptr, "the group of a user has no name");
    return {entry->pw_name, group->gr_name, entry->pw_uid, entry->pw_gid};
}

User userNamed(const char* name) {
    return userOf(::getpwnam(name));
}

User thisUser() {
    return userOf(::getpwuid(::getuid()));
}

} // namespace

RealImapServer::RealImapServer(const TestAuthority::Identity& identity, std::optional<std::uint16_t> port)
    : port_(port ? *port : freePort()) {
    const auto inbox = folder_.path() / "mail";
    for (const auto* part : {"new", "cur", "tmp"}) std::filesystem::create_directories(inbox / part);
    std::ofstream(folder_.path() / "dovecot.conf") << settings(IdentityFiles(folder_.path(), identity));
    server_ = std::make_unique<ChildProgram>(
        std::vector<std::string>{"/usr/sbin/dovecot", "-F", "-c", (folder_.path() / "dovecot.conf").string()},
        ChildProgram::Environment{});
    waitForListener(port_, "dovecot does not start");
}

void RealImapServer::deliver(const std::string& name, const std::string& message, bool isRead) const {
    const auto file = folder_.path() / "mail" / (isRead ? "cur" : "new") / (isRead ? name + ":2,S" : name);
    std::ofstream(file) << message;
    if (::getuid() == 0) {
        const auto owner = userNamed("nobody");
        require(::chown(file.c_str(), owner.uid, owner.gid) == 0, "a message cannot be given away");
    }
}

/// Of a server that a superuser starts the parts that read mail run as others, as they insist.
std::string RealImapServer::settings(const IdentityFiles& identity) const {
    const bool isRoot = ::getuid() == 0;
    const auto reader = isRoot ? userNamed("nobody") : thisUser();
    const auto folder = folder_.path().string();
    if (isRoot) {
        std::filesystem::permissions(folder_.path(), std::filesystem::perms(0755));
        for (const auto* part : {"mail", "mail/new", "mail/cur", "mail/tmp"})
            require(::chown((folder_.path() / part).c_str(), reader.uid, reader.gid) == 0,
                    "a mailbox cannot be given away");
    }
    const auto ids = "uid=" + std::to_string(reader.uid) + " gid=" + std::to_string(reader.gid);
    return "base_dir = " + folder + "/run\nstate_dir = " + folder + "/run\nlog_path = " + folder +
           "/log\nprotocols = imap\nlisten = 127.0.0.1\nfirst_valid_uid = 1\nauth_failure_delay = 0\n" +
           (isRoot ? std::string()
                   : "default_internal_user = " + reader.name + "\ndefault_login_user = " + reader.name +
                         "\ndefault_internal_group = " + reader.group + "\n") +
           "ssl = required\nssl_cert = <" + identity.certificate.string() + "\nssl_key = <" +
           identity.key.string() + "\nauth_mechanisms = plain login\nmail_location = maildir:" + folder +
           "/mail\npassdb {\n  driver = static\n  args = password=" + password +
           "\n}\nuserdb {\n  driver = static\n  args = " + ids + " home=" + folder +
           "\n}\nnamespace inbox {\n  inbox = yes\n}\nservice anvil {\n  chroot =\n"
           "  unix_listener anvil-auth-penalty {\n    mode = 0\n  }\n}\nservice stats {\n  "
           "chroot =\n}\n"
           "service imap-login {\n  chroot =\n  inet_listener imap {\n    port = 0\n  }\n"
           "  inet_listener imaps {\n    address = 127.0.0.1\n    port = " +
           std::to_string(port_) + "\n    ssl = yes\n  }\n}\n";
}

RealSmtpServer::RealSmtpServer(const TestAuthority::Identity& identity, std::uint16_t port) {
    const IdentityFiles files(folder_.path(), identity);
    server_ = std::make_unique<ChildProgram>(
        std::vector<std::string>{"/usr/bin/python3", MORVEX_SOURCE_DIR "/tests/support/smtp_server.py",
                                 files.certificate.string(), files.key.string(), username, password,
                                 std::to_string(port)},
        ChildProgram::Environment{});
    const auto told = server_->readLine();
    require(!told.empty(), "python3-aiosmtpd does not start");
    port_ = static_cast<std::uint16_t>(std::stoi(told));
}

std::vector<std::string> RealSmtpServer::end() {
    server_->end();
    std::vector<std::string> left;
    for (auto line = server_->readLine(); !line.empty(); line = server_->readLine()) left.push_back(line);
    return left;
}

} // namespace morvex
