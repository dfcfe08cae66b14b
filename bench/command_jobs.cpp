#include "command_jobs.h"

#include <memory>
#include <stdexcept>

#include "CZALCmdInvoker.h"
#include "base/utf8.h"
#include "peers/pipe_peer.h"

namespace {

constexpr char kAnswer[] = R"({\"__InvokeResult__\":true})";

// What the invoker sends for this command.
std::string Request() {
  const std::string content =
      R"({"jsonrpc":"2.0","id":1,"method":"invoke","params":{"command":"QD_PLMGetcode","request":""}})";
  return "Content-Length: " + std::to_string(content.size()) + "\r\n\r\n" + content;
}

template <class Exchange>
std::function<void()> Bare(std::shared_ptr<PipeServer> server) {
  const auto exchange = std::make_shared<Exchange>(server->Path());
  return [server, exchange, request = Request(), answer = server->FrameOf("1")]() mutable {
    exchange->Run(request, answer);
  };
}

}  // namespace

std::function<void()> MakeCommandJob(const std::string& kind, const BenchHome& home) {
  const std::string name = "tavo-bench-" + kind;
  const auto server = std::make_shared<PipeServer>(utf8::Decode<wchar_t>(name), kAnswer);
  if (kind == "overlapped") return Bare<OverlappedExchange>(server);
  if (kind == "blocking") return Bare<BlockingExchange>(server);
  home.Configure(L"PlmClient.json", "{\"pipe\":\"" + name + "\"}");
  const auto invoker = std::make_shared<CZALCmdInvoker>(L"New TAVO SolidWorks AddOn", L"");
  return [server, invoker] {
    if (invoker->Invoke(L"QD_PLMGetcode", L"").empty()) throw std::runtime_error("no answer");
  };
}
