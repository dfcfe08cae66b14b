// The client program that the invoker starts in the tests. It takes no arguments. It reads a verb and a pipe
// from behaviour.txt in the current folder, and writes how it was started to a file of this process there.
#include <windows.h>
// After windows.h, which it needs.
#include <ole2.h>

#include <chrono>
#include <cstdlib>
#include <fstream>
#include <future>
#include <iterator>
#include <memory>
#include <sstream>
#include <stdexcept>
#include <string>
#include <thread>

#include "CStringHelper.h"
#include "plm_client/client.h"

namespace {

constexpr std::chrono::seconds kPatience{5};
constexpr DWORD kLongest = 30'000;  // milliseconds; ends a client that a failed test has left running
constexpr int kEndsAtOnce = 3, kPipeIsTaken = 4;

std::string ReadAll(const char* path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

void WriteStart() {
  std::wstring folder(MAX_PATH, L'\0');
  folder.resize(GetCurrentDirectoryW(MAX_PATH, folder.data()));
  const DWORD process = GetCurrentProcessId();
  std::ofstream("started-" + std::to_string(process) + ".txt", std::ios::binary)
      << process << "\n"
      << CStringHelper::UnicodeToUTF8(GetCommandLineW()) << "\n"
      << CStringHelper::UnicodeToUTF8(folder) << "\n";
}

/// Answers everything with "served".
plm_client::Reply Served(const plm_client::Request&, std::stop_token) {
  return plm_client::Reply::Text("served");
}

/// Calls an object of the host, marshalled into object.bin. @return what the object returned.
std::string CallObject() {
  const std::string marshalled = ReadAll("object.bin");
  IStream* stream = nullptr;
  IDispatch* object = nullptr;
  UINT count = 0;
  CoInitializeEx(nullptr, COINIT_MULTITHREADED);
  CreateStreamOnHGlobal(nullptr, TRUE, &stream);
  stream->Write(marshalled.data(), static_cast<ULONG>(marshalled.size()), nullptr);
  stream->Seek({}, STREAM_SEEK_SET, nullptr);
  HRESULT result = CoUnmarshalInterface(stream, __uuidof(IDispatch), reinterpret_cast<void**>(&object));
  stream->Release();
  if (SUCCEEDED(result)) {
    result = object->GetTypeInfoCount(&count);
    object->Release();
  }
  CoUninitialize();
  return SUCCEEDED(result) ? "served " + std::to_string(count) : "failed";
}

/// Calls an object of the host and answers with the result.
plm_client::Reply CallHost(const plm_client::Request&, std::stop_token) {
  const auto called = std::make_shared<std::promise<std::string>>();
  std::future<std::string> result = called->get_future();
  // Detached: a host that does not serve the call makes it wait forever.
  std::thread([called] { called->set_value(CallObject()); }).detach();
  if (result.wait_for(kPatience) != std::future_status::ready) return plm_client::Reply::Text("not served");
  return plm_client::Reply::Text(result.get());
}

[[noreturn]] void EndProcess() {
  TerminateProcess(GetCurrentProcess(), 1);
  std::abort();  // not reached
}

/// Ends the whole process at the first request.
plm_client::Reply Die(const plm_client::Request&, std::stop_token) {
  Sleep(300);
  EndProcess();
}

/// Ends the whole process in the middle of the first answer.
plm_client::Reply DieInTheAnswer(const plm_client::Request&, std::stop_token) {
  std::thread([] {
    Sleep(300);
    EndProcess();
  }).detach();
  return plm_client::Reply::Bytes("Content-Length: 1000\r\n\r\n{\"jsonrpc\"");
}

plm_client::Client::Handler HandlerFor(const std::string& verb) {
  if (verb == "call") return CallHost;
  if (verb == "die") return Die;
  if (verb == "die-in-the-answer") return DieInTheAnswer;
  return Served;
}

/// Serves the pipe, or ends if another process serves it.
int Serve(const std::string& verb, const std::string& pipe) {
  Sleep(300);  // so that the invoker has to wait
  try {
    const plm_client::Client client(
        {.pipe = CStringHelper::UTF8ToUnicode(pipe), .instances = verb == "serve-one" ? 1u : 4u},
        HandlerFor(verb));
    Sleep(kLongest);
  } catch (const std::runtime_error&) {
    return kPipeIsTaken;
  }
  return 0;
}

}  // namespace

int main() {
  WriteStart();
  std::istringstream behaviour(ReadAll("behaviour.txt"));
  std::string verb, pipe;
  behaviour >> verb >> pipe;
  if (verb == "end") return kEndsAtOnce;
  if (verb != "hang") return Serve(verb, pipe);
  Sleep(kLongest);
  return 0;
}
