#include "call_queue.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

using namespace plm_window;

namespace {

class CallQueueTest : public testing::Test {
 protected:
  /// Asks on a thread of its own; the reply's bytes are in m_bytes when the thread has ended.
  std::jthread Ask() {
    return std::jthread([this](const std::stop_token& stop) {
      m_bytes = m_queue.Ask({.command = "A"}, stop, [this] { return m_hostIsThere.load(); }).BytesFor(1);
    });
  }

  std::shared_ptr<Call> WaitForCall() {
    for (int tries = 0; tries < 500; ++tries) {
      if (const auto calls = m_queue.TakeNew(); !calls.empty()) return calls.at(0);
      std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    return nullptr;
  }

  std::atomic<int> m_notifications = 0;
  std::atomic<bool> m_hostIsThere = true;
  std::string m_bytes;
  CallQueue m_queue{[this] { ++m_notifications; }};
};

TEST_F(CallQueueTest, BringsARequestAndItsAnswer) {
  std::jthread host = Ask();
  const auto call = WaitForCall();
  ASSERT_TRUE(call);
  EXPECT_EQ(call->Request().command, "A");
  EXPECT_TRUE(m_queue.TakeNew().empty()) << "it is taken once";
  EXPECT_EQ(m_notifications, 1);
  call->Answer(plm_client::Reply::Text("first"));
  call->Answer(plm_client::Reply::Text("second"));
  host.join();
  EXPECT_NE(m_bytes.find("first"), std::string::npos);
  EXPECT_EQ(m_notifications, 2) << "the end is news, too";
}

TEST_F(CallQueueTest, EndsWithoutAnAnswerWhenTheHostIsGone) {
  std::jthread host = Ask();
  const auto call = WaitForCall();
  ASSERT_TRUE(call);
  EXPECT_FALSE(call->HasEnded());
  m_hostIsThere = false;
  host.join();
  EXPECT_TRUE(call->HasEnded());
  EXPECT_EQ(m_bytes, "");
}

TEST_F(CallQueueTest, EndsWithoutAnAnswerWhenTheClientStops) {
  std::jthread host = Ask();
  const auto call = WaitForCall();
  ASSERT_TRUE(call);
  host.request_stop();
  host.join();
  EXPECT_TRUE(call->HasEnded());
}

}  // namespace
