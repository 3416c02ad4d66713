#include "tools/stage/servers/https_file_server.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <spawn.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <thread>

namespace nimbletype {
namespace {

// $1 is the private folder.
constexpr const char* makeCertificates = R"(cd "$1" && exec 2>openssl.log
key="-newkey ec -pkeyopt ec_paramgen_curve:prime256v1 -nodes -days 2"
openssl req -x509 $key -keyout authority.key -out authority.pem -subj "/CN=Test authority" &&
openssl req $key -keyout server.key -out server.csr -subj "/CN=localhost" &&
echo "subjectAltName=DNS:localhost,IP:127.0.0.1" >names &&
openssl x509 -req -days 2 -in server.csr -CA authority.pem -CAkey authority.key -CAcreateserial \
  -extfile names -out server.pem)";

// The words in capitals are filled in.
constexpr const char* configuration = R"(daemon off;
master_process off;
pid PRIVATE/pid;
error_log PRIVATE/error.log;
events {}
http {
  log_format line '$status $body_bytes_sent $request_uri $http_range';
  access_log PRIVATE/access.log line;
  client_body_temp_path PRIVATE/body;
  proxy_temp_path PRIVATE/proxy;
  fastcgi_temp_path PRIVATE/fastcgi;
  scgi_temp_path PRIVATE/scgi;
  uwsgi_temp_path PRIVATE/uwsgi;
  server {
    listen 127.0.0.1:SECURE_PORT ssl;
    listen 127.0.0.1:PLAIN_PORT;
    ssl_certificate PRIVATE/server.pem;
    ssl_certificate_key PRIVATE/server.key;
    location /ranges/ { alias FOLDER/; }
    location /whole/ { alias FOLDER/; max_ranges 0; }
    location ~ ^/slow/(?<rate>[^/]+)/(?<name>.*)$ { limit_rate $rate; alias FOLDER/$name; }
    location ~ ^/moved/(?<name>.*)$ { return 302 https://$host:SECURE_PORT/ranges/$name; }
    location ~ ^/plain/(?<name>.*)$ { return 302 http://$host:PLAIN_PORT/ranges/$name; }
    location ~ ^/circle/(?<name>.*)$ { return 302 https://$host:SECURE_PORT/circle/$name; }
    location /unavailable/ { return 503; }
  }
}
)";

pid_t spawn(std::vector<const char*> arguments) {
  arguments.push_back(nullptr);
  pid_t child = -1;
  if (::posix_spawnp(&child, arguments[0], nullptr, nullptr, const_cast<char**>(arguments.data()), environ) !=
      0)
    throw std::runtime_error(std::string("cannot start ") + arguments[0]);
  return child;
}

bool succeeds(const std::vector<const char*>& arguments) {
  int status = -1;
  ::waitpid(spawn(arguments), &status, 0);
  return status == 0;
}

sockaddr_in loopback(std::uint16_t port) {
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_port = htons(port);
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  return address;
}

// Somebody else may take it before nginx does, which has not been seen to happen.
std::uint16_t freePort() {
  const int socket = ::socket(AF_INET, SOCK_STREAM, 0);
  auto address = loopback(0);
  socklen_t size = sizeof address;
  const bool isBound = ::bind(socket, reinterpret_cast<const sockaddr*>(&address), size) == 0;
  ::getsockname(socket, reinterpret_cast<sockaddr*>(&address), &size);
  ::close(socket);
  if (!isBound) throw std::runtime_error("found no free port");
  return ntohs(address.sin_port);
}

bool listens(std::uint16_t port) {
  const int socket = ::socket(AF_INET, SOCK_STREAM, 0);
  const auto address = loopback(port);
  const bool connected = ::connect(socket, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
  ::close(socket);
  return connected;
}

void fillIn(std::string& text, const std::string& word, const std::string& value) {
  for (std::size_t at = 0; (at = text.find(word, at)) != text.npos; at += value.size())
    text.replace(at, word.size(), value);
}

}  // namespace

HttpsFileServer::HttpsFileServer(const std::filesystem::path& folder)
    : port_(freePort()), plainPort_(freePort()) {
  if (!succeeds({"sh", "-c", makeCertificates, "sh", private_.path.c_str()}))
    throw std::runtime_error("openssl made no certificate");
  writeConfiguration(folder);
  start();
}

HttpsFileServer::~HttpsFileServer() {
  stop();
}

void HttpsFileServer::writeConfiguration(const std::filesystem::path& folder) const {
  std::string text = configuration;
  fillIn(text, "PRIVATE", private_.path.string());
  fillIn(text, "FOLDER", folder.string());
  fillIn(text, "SECURE_PORT", std::to_string(port_));
  fillIn(text, "PLAIN_PORT", std::to_string(plainPort_));
  std::ofstream(private_.path / "nginx.conf") << text;
}

std::string HttpsFileServer::url(const std::string& path) const {
  return "https://127.0.0.1:" + std::to_string(port_) + path;
}

std::string HttpsFileServer::plainUrl(const std::string& path) const {
  return "http://127.0.0.1:" + std::to_string(plainPort_) + path;
}

void HttpsFileServer::start() {
  const auto file = private_.path / "nginx.conf", errors = private_.path / "error.log";
  // It must not outlive a test that crashed.
  server_ = spawn({"setpriv", "--pdeathsig", "KILL", "nginx", "-p", private_.path.c_str(), "-e",
                   errors.c_str(), "-c", file.c_str()});
  for (int tries = 0; tries < 2000; ++tries) {
    if (listens(port_)) return;
    if (::waitpid(server_, nullptr, WNOHANG) != 0) break;
    std::this_thread::sleep_for(std::chrono::milliseconds(5));
  }
  throw std::runtime_error("nginx does not listen");
}

void HttpsFileServer::stop() {
  if (server_ <= 0) return;
  ::kill(server_, SIGKILL);
  ::waitpid(server_, nullptr, 0);
  server_ = -1;
}

std::vector<std::string> HttpsFileServer::log() const {
  std::vector<std::string> lines;
  std::ifstream file(private_.path / "access.log");
  for (std::string line; std::getline(file, line);) lines.push_back(line);
  return lines;
}

}  // namespace nimbletype
