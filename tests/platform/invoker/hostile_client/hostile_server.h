/// @file A server of the pipe that does, command by command, what a test says.
#pragma once

#include <windows.h>

#include <atomic>
#include <condition_variable>
#include <cstddef>
#include <functional>
#include <memory>
#include <mutex>
#include <queue>
#include <string>
#include <string_view>
#include <thread>

/// The server's end of the connection.
class Conversation {
 public:
  /// @param pipe the pipe's name, without `\\.\pipe\`.
  /// @throws std::runtime_error if the pipe cannot be made.
  explicit Conversation(const std::wstring& pipe);
  Conversation(const Conversation&) = delete;
  Conversation& operator=(const Conversation&) = delete;
  ~Conversation();

  static constexpr std::size_t kWhole = static_cast<std::size_t>(-1);

  /// Waits for a request, over the connection that is open or over a new one if the host has closed that.
  /// Reads at most `limit` bytes of it, or nothing at all.
  /// @return what was read.
  std::string ReadRequest(std::size_t limit = kWhole);

  /// Sends `bytes` in writes of at most `piece_size`. @return whether all are sent.
  bool Write(std::string_view bytes, std::size_t piece_size = kWhole);

  /// Sends `bytes` like Write, and after each write waits until the host has read it: it cannot read two
  /// pieces as one.
  bool WriteThrough(std::string_view bytes, std::size_t piece_size = kWhole);

  /// Closes the connection like a program that ends: the host can still read what was sent.
  void Close();

  /// Closes the connection and takes back what the host has not read.
  void Disconnect();

  /// Waits until the host has closed the connection.
  void AwaitHostsEnd();

  /// How many connections hosts have made so far. May be called on any thread.
  int Connections() const { return m_connections; }

  /// Ends the current wait and every later one. May be called on any thread.
  void Interrupt();

 private:
  struct Instance;

  std::shared_ptr<Instance> NewInstance(bool first) const;
  void Accept();
  bool AwaitBytes();
  bool Read(std::string& bytes, std::size_t limit);
  bool IsInterrupted();

  const std::wstring m_path;
  std::mutex m_mutex;
  bool m_isInterrupted = false;
  bool m_isConnected = false;
  std::atomic<int> m_connections = 0;
  // The next instance exists before the current one is closed: a host never finds the pipe missing or busy.
  std::shared_ptr<Instance> m_current, m_next;
};

/// Serves a pipe on a thread of its own during the lifetime of the object.
class HostileServer {
 public:
  /// What the server does for one command.
  using Act = std::function<void(Conversation&)>;

  /// @param pipe the pipe's name, without `\\.\pipe\`.
  explicit HostileServer(const std::wstring& pipe);
  HostileServer(const HostileServer&) = delete;
  HostileServer& operator=(const HostileServer&) = delete;
  ~HostileServer();

  /// Does `act` on the server's thread when the acts before are over.
  void Add(Act act);

  /// Waits until all acts are over. @return whether they are within ten seconds.
  bool AwaitEnd();

  /// How many connections hosts have made so far.
  int Connections() const { return m_conversation.Connections(); }

 private:
  void Run();

  Conversation m_conversation;
  std::mutex m_mutex;
  // No stop_token ends the wait: the compiler's library may then wait for ever for the end of its callback.
  std::condition_variable m_changed;
  bool m_isEnding = false;
  std::queue<Act> m_acts;  // of which the first is going on
  std::jthread m_thread;
};
