#pragma once

#include <atomic>
#include <map>
#include <string>
#include <thread>
#include <vector>

namespace margindesk {

// An http server on the loopback address. A path has a canned answer, or none: then the connection stays open
// and silent.
class THttpTestServer {
 public:
  // path -> the whole answer, head and body
  explicit THttpTestServer(std::map<std::string, std::string> answers);
  ~THttpTestServer();
  THttpTestServer(const THttpTestServer&) = delete;
  THttpTestServer& operator=(const THttpTestServer&) = delete;

  std::string Address(const std::string& path) const;
  int RequestCount() const { return FRequests; }

 private:
  void Serve();
  void Answer(int connection);

  const std::map<std::string, std::string> FAnswers;
  const int FListener;
  int FPort = 0;
  std::atomic<int> FRequests = 0;
  std::vector<int> FSilent;  // connections left without an answer
  std::thread FThread;
};

// An answer with its length stated.
std::string HttpAnswer(const std::string& status, const std::string& body, const std::string& header = "");

}  // namespace margindesk
