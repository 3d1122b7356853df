#pragma once

#include <QString>

namespace zelkam {

/// Whether an interface of the machine is up, running, no loopback, and has an address that
/// reaches further than its own cable (an IPv6 link-local address is always there).
bool hasUsableNetworkInterface();

/// Whether a URL's host is the machine itself: "localhost" and names below it, 127.0.0.0/8, ::1.
bool isLoopbackHost(const QString &host);

/// Replaces the question that transfers ask; null puts hasUsableNetworkInterface() back. For
/// tests: a machine cannot be unplugged from within. From any thread.
using ConnectivityCheck = bool (*)();
void setConnectivityCheck(ConnectivityCheck check);

/// What the question that is in force answers.
bool isConnected();

} // namespace zelkam
