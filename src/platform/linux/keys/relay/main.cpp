// The key relay: `nimbletype-keys DISPLAY DEADLINE`, started by the application with its socket as
// descriptor 3.
#include <sys/socket.h>

#include <cstdio>
#include <cstdlib>

#include "platform/linux/keys/relay/key_relay.h"

int main(int argc, char** argv) {
  constexpr int socket = 3;
  int type = 0;
  socklen_t size = sizeof type;
  if (getsockopt(socket, SOL_SOCKET, SO_TYPE, &type, &size) != 0 || type != SOCK_SEQPACKET) {
    std::fputs("nimbletype-keys is started by Nimbletype and does nothing by itself.\n", stderr);
    return 2;
  }
  auto connection = nimbletype::connectToDisplay(argc > 1 ? argv[1] : "");
  if (!connection) return 1;
  const std::chrono::milliseconds deadline(argc > 2 ? std::atoi(argv[2]) : 0);
  nimbletype::KeyRelay relay(std::move(connection), socket, deadline);
  if (!relay.isValid()) return 1;
  relay.run();
  return 0;
}
