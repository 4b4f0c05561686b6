#include "platform/net/NetworkConnection.h"

namespace morvex {

NetworkConnection::NetworkConnection(NetworkThread& network)
    : network_(network), resolver_(network.context()), timer_(network.context()) {}

void NetworkConnection::drop() {
    if (std::exchange(dropped_, true)) return;
    timer_.cancel();
    resolver_.cancel();
    tcp().close();
    retire();
}

void NetworkConnection::letGo() {
    released_ = true;
    retire();
}

void NetworkConnection::retire() {
    if (dropped_ && released_) network_.forget(*this);
}

} // namespace morvex
