#pragma once
#include <sys/types.h>

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "tools/stage/temporary_folder.h"

namespace nimbletype {

// nginx over HTTPS on 127.0.0.1, serving one folder, with a certificate for "127.0.0.1" and "localhost" that
// only `authority()` vouches for: the code under test finds it through the environment variable
// SSL_CERT_FILE. The same paths are there over plain HTTP as well. Throws where nginx or openssl is missing.
//
//   /ranges/NAME      the file, in parts when asked for
//   /whole/NAME       the file; asking for a part is ignored
//   /slow/RATE/NAME   as /ranges, RATE ("200k") bytes a second for each connection
//   /moved/NAME       redirects to https .../ranges/NAME
//   /plain/NAME       redirects to http .../ranges/NAME
//   /circle/NAME      redirects to itself, over https
//   /unavailable/...  503
//   a missing file    404
class HttpsFileServer {
 public:
  // Of the folder's files, which may change while it runs.
  explicit HttpsFileServer(const std::filesystem::path& folder);
  ~HttpsFileServer();
  HttpsFileServer(const HttpsFileServer&) = delete;
  HttpsFileServer& operator=(const HttpsFileServer&) = delete;

  // "https://127.0.0.1:PORT" and the path.
  std::string url(const std::string& path) const;
  std::string plainUrl(const std::string& path) const;
  // The certificate to trust, a PEM file.
  std::filesystem::path authority() const { return private_.path / "authority.pem"; }

  // Drops every connection at once. Until `start` nobody listens at the address, which stays the same.
  void stop();
  void start();

  // One line for each request that has ended: "STATUS BYTES PATH RANGE", as in "206 400 /ranges/a
  // bytes=100-".
  std::vector<std::string> log() const;

 private:
  void writeConfiguration(const std::filesystem::path& folder) const;

  TemporaryFolder private_;  // certificates, configuration, logs
  std::uint16_t port_ = 0, plainPort_ = 0;
  pid_t server_ = -1;
};

}  // namespace nimbletype
