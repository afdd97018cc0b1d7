#pragma once

#include <array>
#include <atomic>
#include <map>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

namespace margindesk {

// An http server on the loopback address. A path has a canned answer, head and body, or none: then the
// connection stays open and silent.
class THttpTestServer {
 public:
  explicit THttpTestServer(std::map<std::string, std::string> answers) : FAnswers(std::move(answers)) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address;
    auto* const generic = reinterpret_cast<sockaddr*>(&address);
    bind(FListener, generic, size);
    listen(FListener, 16);
    getsockname(FListener, generic, &size);
    FPort = ntohs(address.sin_port);
    FThread = std::thread([this] {
      for (int connection = 0; (connection = accept(FListener, nullptr, nullptr)) >= 0;) Answer(connection);
    });
  }
  ~THttpTestServer() {
    shutdown(FListener, SHUT_RDWR);
    FThread.join();
    for (const int connection : FSilent) close(connection);
    close(FListener);
  }

  std::string Address(const std::string& path) const {
    return "http://127.0.0.1:" + std::to_string(FPort) + path;
  }
  int RequestCount() const { return FRequests; }

 private:
  void Answer(int connection) {
    std::array<char, 4096> part{};  // a request of curl's comes whole
    const ssize_t count = recv(connection, part.data(), part.size(), 0);
    const std::string request(part.data(), count > 0 ? static_cast<std::size_t>(count) : 0);
    ++FRequests;
    const std::size_t begin = request.find(' ') + 1;
    const auto answer = FAnswers.find(request.substr(begin, request.find(' ', begin) - begin));
    if (answer == FAnswers.end()) return FSilent.push_back(connection);
    send(connection, answer->second.data(), answer->second.size(), MSG_NOSIGNAL);
    shutdown(connection, SHUT_WR);
    close(connection);
  }

  const std::map<std::string, std::string> FAnswers;
  const int FListener = socket(AF_INET, SOCK_STREAM, 0);
  int FPort = 0;
  std::atomic<int> FRequests = 0;
  std::vector<int> FSilent;  // connections left without an answer
  std::thread FThread;
};

// An answer with its length stated.
inline std::string HttpAnswer(const std::string& status, const std::string& body,
                              const std::string& header = "") {
  return "HTTP/1.1 " + status + "\r\nContent-Length: " + std::to_string(body.size()) + "\r\n" + header +
         "Connection: close\r\n\r\n" + body;
}

}  // namespace margindesk
