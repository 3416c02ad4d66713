#include "engines/address/server_address.h"

#include <gtest/gtest.h>

#include <utility>
#include <vector>

namespace nimbletype {
namespace {

using enum ServerPlace;

TEST(ServerAddress, TellsThePlaceByTheHost) {
  const std::pair<ServerPlace, std::vector<std::string>> cases[] = {
      {staysOnThisMachine,
       {"localhost", "LOCALHOST", "api.localhost", "127.0.0.1", "[::1]", "user@localhost"}},
      {mayBeThisMachine,
       {"localhost.", "127.0.0.2", "127.9.8.7", "0.0.0.0", "[::]", "[0:0:0:0:0:0:0:1]",
        "[::ffff:127.0.0.1]"}},
      {localNetwork,
       {"10.1.2.3", "172.16.0.1", "172.31.255.255", "192.168.1.20", "169.254.7.7", "[fe80::1]",
        "[fe80::1%25eth0]", "[fd12:3456::1]", "[::ffff:192.168.0.1]", "studio.local", "Studio.Local.",
        "box.lan", "nas.home.arpa", "gpu.internal", "my-box", "box2"}},
      {elsewhere,
       {"example.com", "localhost.example.com", "8.8.8.8", "172.32.0.1", "172.15.0.1", "192.169.0.1",
        "11.0.0.1", "100.64.0.1", "[2001:db8::1]", "[::ffff:8.8.8.8]", "[::1:0:0]", "127.0.0.1.example.com",
        "notlocal.com",
        // other spellings of 8.8.8.8, and of a name with a dot
        "134744072", "0x8080808", "010.010.010.010", "8.8.2056", "evil。com", "10.0.0.256"}},
  };
  for (const auto& [place, hosts] : cases)
    for (const auto& host : hosts) EXPECT_EQ(serverPlace(" http://" + host + ":8080/v1"), place) << host;
  for (const auto* nothing : {"", "localhost", "http://", "http://a b"})
    EXPECT_EQ(serverPlace(nothing), std::nullopt) << nothing;
}

TEST(ServerAddress, WarnsWhenTextLeavesThisMachine) {
  EXPECT_EQ(serverWarning("http://localhost:11434"), "");
  EXPECT_EQ(serverWarning("nonsense"), "");
  EXPECT_EQ(serverWarning("http://127.0.0.2:11434"),
            "127.0.0.2 isn't known to be this Mac, so the text around your caret may be sent elsewhere.");
  EXPECT_EQ(
      serverWarning("http://me:pw@192.168.1.20:11434"),
      "192.168.1.20 is another device on your network, so the text around your caret will be sent there.");
  EXPECT_EQ(serverWarning("https://api.example.com/v1"),
            "api.example.com isn't this Mac, so the text around your caret will be sent there.");
}

}  // namespace
}  // namespace nimbletype
