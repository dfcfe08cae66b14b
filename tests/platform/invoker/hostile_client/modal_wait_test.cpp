// A message box of the host that is shown while a command waits: the client goes on behind it.
#include <windows.h>

#include <future>

#include "case_name.h"
#include "host_thread.h"
#include "hostile_fixture.h"

namespace {

/// What the client does while the box is shown, and what comes of it.
struct BehindTheBox {
  const char* name;
  void (*act)(Conversation& host, const std::string& answer);
  std::wstring answer, reason;
};

void PrintTo(const BehindTheBox& behind, std::ostream* stream) { *stream << behind.name; }

class WaitBehindABox : public HostileClient, public testing::WithParamInterface<BehindTheBox> {
 protected:
  const Apartment m_apartment{COINIT_APARTMENTTHREADED};
  HostWindow m_window;
};

TEST_P(WaitBehindABox, EndsWithTheBoxAndWithWhatTheClientDid) {
  // given a host that shows a box in a message that it gets during the wait, until the client has acted
  std::promise<void> box_is_up, client_has_acted;
  m_boxes.Expect(IDOK);
  m_boxes.WhileUp([&] {
    box_is_up.set_value();
    client_has_acted.get_future().wait();
  });
  m_window.OnSent([] { return MessageBoxW(nullptr, L"the host asks", L"host", MB_OK); });
  std::future<std::optional<LRESULT>> shown;

  // when the client acts meanwhile
  const Outcome outcome = Try([&, answer = AnswerFrame(NextId(), "right")](Conversation& host) {
    host.ReadRequest();
    shown = std::async(std::launch::async, [this] { return m_window.Send(); });
    box_is_up.get_future().wait();
    GetParam().act(host, answer);
    client_has_acted.set_value();
  });

  // then the command ends after the box, and the next one is answered
  EXPECT_EQ(shown.get(), IDOK);
  EXPECT_EQ(outcome.answer, GetParam().answer);
  EXPECT_EQ(outcome.lines, GetParam().reason.empty() ? std::vector<std::wstring>()
                                                     : std::vector{LineFor(GetParam().reason)});
  ExpectRecovery();
}

const BehindTheBox kCases[] = {
    {"AnAnswer", [](auto& host, auto& answer) { host.Write(answer); }, L"right", L""},
    {"AnAnswerAndTheEnd",
     [](auto& host, auto& answer) {
       host.Write(answer);
       host.Close();
     },
     L"right", L""},
    {"TheEnd", [](auto& host, auto&) { host.Close(); }, L"", reasons::kClosed},
    {"HalfAnAnswerAndTheEnd",
     [](auto& host, auto& answer) {
       host.Write(answer.substr(0, answer.size() / 2));
       host.Close();
     },
     L"", reasons::kClosed},
    {"AWrongAnswer", [](auto& host, auto&) { host.Write(FrameOf("{")); }, L"", reasons::kNotJson},
};
INSTANTIATE_TEST_SUITE_P(, WaitBehindABox, testing::ValuesIn(kCases), CaseName<BehindTheBox>);

}  // namespace
