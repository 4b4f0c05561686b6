#include "tests/servers/NodeServer.h"

#include "shared/base/Require.h"

#include <fstream>

namespace morvex {

NodeServer::NodeServer(const std::string& kind, const TestAuthority& authority, const std::string& name,
                       int port)
    : program_(command(kind, authority.issue("DNS:" + name), port), {}), port_(readPort()) {}

std::vector<std::string> NodeServer::command(const std::string& kind, const TestAuthority::Identity& identity,
                                             int port) const {
    const auto key = folder_.path() / "key.pem";
    std::ofstream(certificate()) << identity.certificate;
    std::ofstream(key) << identity.key;
    return std::vector<std::string>{"node",       MORVEX_SERVERS_DIR "/serve.mjs",
                                    kind,         certificate().string(),
                                    key.string(), std::to_string(port)};
}

int NodeServer::readPort() {
    const std::string before = "listening on ";
    for (auto line = program_.readLine(); !line.empty(); line = program_.readLine())
        if (line.starts_with(before)) return std::stoi(line.substr(before.size()));
    require(false, "a server of node does not start");
    return 0;
}

} // namespace morvex
