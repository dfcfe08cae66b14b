#include "service_meter.h"

#include <gtest/gtest.h>

#include <wrl/client.h>

#include <algorithm>
#include <cstdint>

using Microsoft::WRL::ComPtr;

namespace {

constexpr DWORD kInterval =
    1;  // milliseconds between two calls, so that they leave the processor to the others

}  // namespace

void ServiceMeter::Service::Start() {
  last = Clock::now();
  longest = {};
  count = 0;
}

void ServiceMeter::Service::Served() {
  const Clock::time_point now = Clock::now();
  longest = std::max(longest, now - last);
  last = now;
  ++count;
}

ServiceMeter::ServiceMeter() {
  m_object.action = [this] { m_calls.Served(); };
  m_window.OnPaint([this] { m_paints.Served(); });
  IStream* marshalled = nullptr;
  EXPECT_EQ(S_OK, CoMarshalInterThreadInterfaceInStream(__uuidof(IDispatch), &m_object, &marshalled));
  m_caller =
      std::jthread([this, marshalled](const std::stop_token& stop) { CallAgainAndAgain(stop, marshalled); });
  m_painter = std::jthread([this](const std::stop_token& stop) { PaintAgainAndAgain(stop); });
  while (m_calls.count == 0 && !m_callerEnded) ServeOtherwise();
}

ServiceMeter::~ServiceMeter() {
  m_caller.request_stop();
  m_painter.request_stop();
  while (!m_callerEnded) ServeOtherwise();  // its last call waits for this thread
}

void ServiceMeter::ServeOtherwise() {
  DrainMessages();
  Sleep(1);
}

void ServiceMeter::Start() {
  DrainMessages();
  m_calls.Start();
  m_paints.Start();
}

Absence ServiceMeter::Stop() {
  m_calls.Served();
  m_paints.Served();
  const auto milliseconds = [](Clock::duration time) {
    return std::chrono::duration<double, std::milli>(time).count();
  };
  return {milliseconds(m_calls.longest), milliseconds(m_paints.longest)};
}

void ServiceMeter::CallAgainAndAgain(const std::stop_token& stop, IStream* marshalled) {
  {
    const Apartment own{COINIT_MULTITHREADED};
    ComPtr<IDispatch> proxy;
    UINT ignored = 0;
    EXPECT_EQ(S_OK, CoGetInterfaceAndReleaseStream(marshalled, __uuidof(IDispatch), &proxy));
    while (proxy && !stop.stop_requested() && SUCCEEDED(proxy->GetTypeInfoCount(&ignored))) Sleep(kInterval);
  }
  m_callerEnded = true;
}

void ServiceMeter::PaintAgainAndAgain(const std::stop_token& stop) const {
  while (!stop.stop_requested()) {
    InvalidateRect(m_window.Handle(), nullptr, TRUE);
    Sleep(kInterval);
  }
}

double ProcessorTime() {
  FILETIME created, ended, kernel, user;
  GetThreadTimes(GetCurrentThread(), &created, &ended, &kernel, &user);
  const auto milliseconds = [](const FILETIME& time) {
    constexpr double kOfOneMillisecond = 10'000;
    return static_cast<double>(std::uint64_t{time.dwHighDateTime} << 32 | time.dwLowDateTime) /
           kOfOneMillisecond;
  };
  return milliseconds(kernel) + milliseconds(user);
}
