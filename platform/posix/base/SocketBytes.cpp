#include "platform/posix/base/SocketBytes.h"

#include <sys/socket.h>

namespace morvex {

std::ptrdiff_t sendNow(int socket, const char* bytes, std::size_t size) {
    return ::send(socket, bytes, size, MSG_NOSIGNAL | MSG_DONTWAIT);
}

std::ptrdiff_t receiveNow(int socket, char* bytes, std::size_t size) {
    return ::recv(socket, bytes, size, MSG_DONTWAIT);
}

} // namespace morvex
