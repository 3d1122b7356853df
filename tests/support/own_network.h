#pragma once

#include <arpa/inet.h>
#include <cstdio>
#include <initializer_list>
#include <net/if.h>
#include <sched.h>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <unistd.h>

/// Puts this thread, and all that it starts, into a network of its own: loopback, and these
/// addresses of the machine. False where a process may not do that.
inline bool enterOwnNetwork(std::initializer_list<const char *> addresses)
{
    if (::unshare(CLONE_NEWNET) != 0 && ::unshare(CLONE_NEWUSER | CLONE_NEWNET) != 0)
        return false;
    const int socket = ::socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0);
    ifreq loopback{};
    std::snprintf(loopback.ifr_name, sizeof loopback.ifr_name, "lo");
    loopback.ifr_flags = IFF_UP;
    bool ok = ::ioctl(socket, SIOCSIFFLAGS, &loopback) == 0;
    int number = 0;
    for (const char *address : addresses) {
        ifreq request{};
        std::snprintf(request.ifr_name, sizeof request.ifr_name, "lo:%d", number++);
        auto *name = reinterpret_cast<sockaddr_in *>(&request.ifr_addr);
        name->sin_family = AF_INET;
        ok = ok && ::inet_pton(AF_INET, address, &name->sin_addr) == 1 &&
             ::ioctl(socket, SIOCSIFADDR, &request) == 0;
    }
    ::close(socket);
    return ok;
}
