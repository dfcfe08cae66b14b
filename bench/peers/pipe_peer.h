/// @file A bare pipe: a server that answers in the client's stead, and exchanges without any protocol.
#pragma once

#include <windows.h>

#include <span>
#include <string>
#include <string_view>
#include <thread>

#include "base/unique_handle.h"

/// Answers each request on a pipe with the same answer, from a thread of its own. A request must come in one
/// piece.
class PipeServer {
 public:
  /// @param answer what stands in "answer", as JSON text within its quotes.
  PipeServer(std::wstring name, std::string answer);
  PipeServer(const PipeServer&) = delete;
  PipeServer& operator=(const PipeServer&) = delete;
  ~PipeServer();

  const std::wstring& Path() const { return m_path; }

  /// The bytes of the answer to the request with this id.
  std::string FrameOf(std::string_view id) const;

 private:
  void Serve(HANDLE pipe) const;

  std::wstring m_path;
  std::string m_answer;
  std::string m_frame;  // the answer to the id 1, made before anybody measures
  UniqueHandle m_pipe;
  std::jthread m_thread;
};

/// A blocking write and read.
class BlockingExchange {
 public:
  explicit BlockingExchange(const std::wstring& path);

  /// Sends `request` and reads until `answer` is full.
  void Run(std::string_view request, std::span<char> answer);

 private:
  UniqueHandle m_pipe;
};

/// An overlapped write and read, each with an event, waited for with CoWaitForMultipleHandles.
class OverlappedExchange {
 public:
  explicit OverlappedExchange(const std::wstring& path);
  void Run(std::string_view request, std::span<char> answer);

 private:
  void Wait(OVERLAPPED& operation, DWORD& moved);

  UniqueHandle m_pipe;
  UniqueHandle m_written;
  UniqueHandle m_read;
};
