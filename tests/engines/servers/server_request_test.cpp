#include "engines/servers/server_request.h"

#include <gtest/gtest.h>

#include "engines/servers/server_reply.h"

namespace nimbletype {
namespace {

TEST(ServerRequest, JoinsPathsBehindTheAddress) {
  const std::pair<const char*, const char*> cases[] = {
      {"http://localhost:1234/v1", "http://localhost:1234/v1/models"},
      {"http://localhost:1234/v1/", "http://localhost:1234/v1/models"},
      {"http://localhost:1234", "http://localhost:1234/models"},
      {" \thttp://localhost:1234/ \t ", "http://localhost:1234/models"},
      {"HTTPS://Box.example/a/b//", "HTTPS://Box.example/a/b/models"},
      {"http://box/v1?version=2#top", "http://box/v1/models?version=2"},
      {"http://box?version=2", "http://box/models?version=2"},
      {"http://user:p%40ss@[fe80::1%25eth0]:80/v1", "http://user:p%40ss@[fe80::1%25eth0]:80/v1/models"},
      {"http://bücher.example/v1", "http://bücher.example/v1/models"},
  };
  for (const auto& [address, url] : cases) EXPECT_EQ(server::join(address, "models").value(), url);
}

TEST(ServerRequest, RefusesWhatIsNoWebAddress) {
  for (const auto* address : {"",
                              " ",
                              "localhost",
                              "localhost:1234",
                              "//localhost/v1",
                              "http://",
                              "http:///v1",
                              "http:/box",
                              "ftp://box",
                              "file:///etc",
                              "http://my server",
                              "http://box\n",
                              "http://box:port",
                              "http://box:65536",
                              "http://[::1",
                              "http://evil%2Ecom",
                              "http://a,b",
                              "http://a@b@c",
                              "http://\xFF",
                              "not an address"})
    EXPECT_EQ(server::join(address, "models").error().message, "That address isn't valid") << address;
}

TEST(ServerReply, CutsWhatTheServerSaysToACertainNumberOfCharacters) {
  const std::string family = "👨‍👩‍👧‍👦";
  std::string page, families;
  for (int i = 0; i < 1000; ++i) page += static_cast<char>('a' + i % 26);
  for (int i = 0; i < 161; ++i) families += family;
  const auto said = [](std::string_view body, std::string_view key = "") {
    return server::statusMessage(500, body, key).substr(std::string("The server answered 500. ").size());
  };
  EXPECT_EQ(said(page), page.substr(0, 160) + "…");
  EXPECT_EQ(said(page.substr(0, 160)), page.substr(0, 160));
  EXPECT_EQ(said(families), families.substr(family.size()) + "…");
  EXPECT_EQ(said("caf\xE9"), "caf�");
  EXPECT_EQ(said(std::string(150, '-') + "sk-a-long-secret"), std::string(150, '-') + "sk-a-long-…");
  EXPECT_EQ(said(std::string(150, '-') + "sk-a-long-secret", "sk-a-long-secret"),
            std::string(150, '-') + "***");
  EXPECT_EQ(said(std::string(1 << 22, 'k'), "k"), said(std::string(1 << 20, 'k'), "k"));
}

}  // namespace
}  // namespace nimbletype
