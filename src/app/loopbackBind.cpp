// Preloaded when the window is served over VNC: Qt's server listens on every address of the machine and knows
// no password, so every listening socket is put on the loopback address instead.
#include <dlfcn.h>
#include <netinet/in.h>
#include <sys/socket.h>

#include <cstring>

extern "C" int bind(int socket, const sockaddr* address, socklen_t length) {
    using Bind = int (*)(int, const sockaddr*, socklen_t);
    static const auto next = reinterpret_cast<Bind>(dlsym(RTLD_NEXT, "bind"));
    if (address->sa_family == AF_INET && length >= sizeof(sockaddr_in)) {
        sockaddr_in local;
        std::memcpy(&local, address, sizeof local);
        local.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        return next(socket, reinterpret_cast<sockaddr*>(&local), sizeof local);
    }
    if (address->sa_family == AF_INET6 && length >= sizeof(sockaddr_in6)) {
        sockaddr_in6 local;
        std::memcpy(&local, address, sizeof local);
        // The socket serves both families: 127.0.0.1 in IPv6 form.
        static const unsigned char mapped[16] = {0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0xFF, 0xFF, 127, 0, 0, 1};
        std::memcpy(&local.sin6_addr, mapped, sizeof mapped);
        return next(socket, reinterpret_cast<sockaddr*>(&local), sizeof local);
    }
    return next(socket, address, length);
}
