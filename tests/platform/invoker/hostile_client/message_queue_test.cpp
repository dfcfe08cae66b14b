// What is posted to the host's thread in a long wait: the system keeps 10,000 messages of a thread by default
// (USERPostMessageLimit), and the wait must not lose one of them.
#include <windows.h>

#include "host_thread.h"
#include "hostile_fixture.h"
#include "service_meter.h"

namespace {

constexpr UINT kNumbered = WM_APP + 2;
constexpr int kMessages = 9'000;

class MessageQueue : public HostileClient {
 protected:
  const Apartment m_apartment{COINIT_APARTMENTTHREADED};
};

TEST_F(MessageQueue, KeepsNineThousandMessagesInOrderDuringAWait) {
  // given a client that lets other threads post so many messages, and input between them, before it answers
  const HostWindow window;
  ServiceMeter meter;
  const DWORD host_thread = GetCurrentThreadId();
  int refused = 0;
  const auto act = [&, answer = AnswerFrame(NextId(), "right")](Conversation& host) {
    host.ReadRequest();
    for (int number = 0; number < kMessages; ++number) {
      refused += !(number % 2 ? PostThreadMessageW(host_thread, kNumbered, number, 0)
                              : PostMessageW(window.Handle(), kNumbered, number, 0));
      if (number % 100 == 0) PostMessageW(window.Handle(), WM_KEYDOWN, 'A', 0);
    }
    Sleep(300);
    host.Write(answer);
  };

  // when a command waits meanwhile
  meter.Start();
  ExpectAnswer(act, L"right");
  meter.Stop();

  // then calls and paints were served beside them, the input is gone, and all others are there in their order
  EXPECT_EQ(refused, 0);
  EXPECT_GT(meter.Calls(), 1);
  EXPECT_GT(meter.Paints(), 1);
  MSG message;
  EXPECT_FALSE(PeekMessageW(&message, nullptr, WM_KEYFIRST, WM_KEYLAST, PM_REMOVE));
  for (int number = 0; number < kMessages; ++number) {
    ASSERT_TRUE(PeekMessageW(&message, nullptr, kNumbered, kNumbered, PM_REMOVE)) << number;
    ASSERT_EQ(message.wParam, static_cast<WPARAM>(number));
  }
  constexpr UINT kFirstRegistered = 0xC000, kLastRegistered = 0xFFFF;
  EXPECT_FALSE(PeekMessageW(&message, nullptr, kFirstRegistered, kLastRegistered, PM_REMOVE)) << "its own";
  ExpectRecovery();
}

TEST_F(MessageQueue, KeepsTheThreadAsleepWhileItHasMessagesThatTheWaitLeaves) {
  constexpr DWORD kWait = 1'000;  // milliseconds
  constexpr double kAwake = 200;  // of a thread that looks again and again it would be all of them
  const HostWindow window;
  for (int number = 0; number < 100; ++number) PostMessageW(window.Handle(), kNumbered, number, 0);
  const double before = ProcessorTime();
  ExpectAnswer(
      [answer = AnswerFrame(NextId(), "right")](Conversation& host) {
        host.ReadRequest();
        Sleep(kWait);
        host.Write(answer);
      },
      L"right");
  EXPECT_LT(ProcessorTime() - before, kAwake);
}

}  // namespace
