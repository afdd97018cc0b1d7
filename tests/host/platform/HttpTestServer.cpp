#include "tests/host/platform/HttpTestServer.h"

#include <array>
#include <stdexcept>
#include <utility>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

namespace margindesk {

THttpTestServer::THttpTestServer(std::map<std::string, std::string> answers)
    : FAnswers(std::move(answers)), FListener(socket(AF_INET, SOCK_STREAM, 0)) {
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  socklen_t size = sizeof address;
  auto* const generic = reinterpret_cast<sockaddr*>(&address);
  if (bind(FListener, generic, size) != 0 || listen(FListener, 16) != 0 ||
      getsockname(FListener, generic, &size) != 0) {
    throw std::runtime_error("no loopback server");
  }
  FPort = ntohs(address.sin_port);
  FThread = std::thread([this] { Serve(); });
}

THttpTestServer::~THttpTestServer() {
  shutdown(FListener, SHUT_RDWR);
  FThread.join();
  for (const int connection : FSilent) close(connection);
  close(FListener);
}

std::string THttpTestServer::Address(const std::string& path) const {
  return "http://127.0.0.1:" + std::to_string(FPort) + path;
}

void THttpTestServer::Serve() {
  for (int connection = 0; (connection = accept(FListener, nullptr, nullptr)) >= 0;) Answer(connection);
}

void THttpTestServer::Answer(int connection) {
  std::string request;
  std::array<char, 1024> part;
  while (request.find("\r\n\r\n") == std::string::npos) {
    const ssize_t count = recv(connection, part.data(), part.size(), 0);
    if (count <= 0) break;
    request.append(part.data(), static_cast<std::size_t>(count));
  }
  ++FRequests;
  const std::size_t begin = request.find(' ') + 1;
  const auto answer = FAnswers.find(request.substr(begin, request.find(' ', begin) - begin));
  if (answer == FAnswers.end()) {
    FSilent.push_back(connection);
    return;
  }
  for (std::size_t sent = 0; sent < answer->second.size();) {
    const ssize_t count =
        send(connection, answer->second.data() + sent, answer->second.size() - sent, MSG_NOSIGNAL);
    if (count <= 0) break;
    sent += static_cast<std::size_t>(count);
  }
  shutdown(connection, SHUT_WR);
  close(connection);
}

std::string HttpAnswer(const std::string& status, const std::string& body, const std::string& header) {
  return "HTTP/1.1 " + status + "\r\nContent-Length: " + std::to_string(body.size()) + "\r\n" + header +
         "Connection: close\r\n\r\n" + body;
}

}  // namespace margindesk
