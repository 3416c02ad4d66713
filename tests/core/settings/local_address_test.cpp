#include "core/settings/local_address.h"

#include <gtest/gtest.h>

namespace nimbletype {
namespace {

TEST(LocalAddress, IsOneWhoseHostIsThisMachine) {
  for (const auto* address :
       {"http://localhost:11434", "http://localhost", "HTTPS://LocalHost/v1", "http://api.localhost:1/",
        "http://127.0.0.1:1234/v1", "http://[::1]:8080/v1", "http://[::1]", "http://user:pw@localhost/x",
        "http://localhost?q=1#a@b", "http://localhost:/v1"})
    EXPECT_TRUE(isLocalAddress(address)) << address;
}

TEST(LocalAddress, IsNotWhatLeadsElsewhereOrNowhere) {
  for (const auto* address : {"",
                              "localhost",
                              "localhost:11434",
                              "http://",
                              "http:/localhost",
                              "http:///localhost",
                              "http://example.com/localhost",
                              "http://localhost.example.com",
                              "http://notlocalhost",
                              "http://127.0.0.1.example.com",
                              "http://localhost@example.com/",
                              "http://example.com\\@localhost/",
                              "http://a@example.com@localhost/",
                              "http://example.com#@localhost",
                              "http://localhost:port",
                              "http://[::1",
                              "http://[::1]x",
                              "http://[::2]",
                              "http://192.168.1.2:11434",
                              "http://local host",
                              " http://localhost",
                              "1http://localhost",
                              "not an address"})
    EXPECT_FALSE(isLocalAddress(address)) << address;
}

}  // namespace
}  // namespace nimbletype
