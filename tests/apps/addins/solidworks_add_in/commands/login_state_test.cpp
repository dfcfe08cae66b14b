// The login's result, its lock and the wake-up of those who wait for a logout. No command shows them, so the
// tests look at the members of the class.
#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <functional>
#include <future>
#include <memory>
#include <mutex>
#include <thread>

#include "add_in_fixture.h"
#include "class_under_test.h"

namespace {

/// Defines the function that a tag declares for a private member: only an explicit instantiation may name
/// the member.
template <class Tag, auto Member>
struct PrivateMember {
  friend typename Tag::Type& Of(Tag, CSolidWorksAddIn& object) { return object.*Member; }
};

struct LoginResult {
  using Type = std::shared_ptr<CJsonObject>;
  friend Type& Of(LoginResult, CSolidWorksAddIn& object);
};
template struct PrivateMember<LoginResult, &CSolidWorksAddIn::m_loginResult>;

struct LoginMutex {
  using Type = std::mutex;
  friend Type& Of(LoginMutex, CSolidWorksAddIn& object);
};
template struct PrivateMember<LoginMutex, &CSolidWorksAddIn::m_loginMutex>;

struct LoginChanged {
  using Type = std::condition_variable;
  friend Type& Of(LoginChanged, CSolidWorksAddIn& object);
};
template struct PrivateMember<LoginChanged, &CSolidWorksAddIn::m_loginChanged>;

using namespace std::chrono_literals;

constexpr auto kMostSeconds = 5s;

class LoginState : public ConnectedClass<AddInFixture> {
 protected:
  void SetUp() override {
    ConnectedClass::SetUp();
    ASSERT_EQ(m_class->PlmLogin(), S_OK);
  }

  bool IsLoggedIn() const {
    long status = -1;
    EXPECT_EQ(m_class->EnablePlmLogOut(&status), S_OK);
    return status == 1;
  }

  std::shared_ptr<CJsonObject>& Result() { return Of(LoginResult(), *m_class); }
  std::mutex& Mutex() { return Of(LoginMutex(), *m_class); }
  std::condition_variable& Changed() { return Of(LoginChanged(), *m_class); }
};

TEST_F(LoginState, IsKeptByAnotherHolderAsItWasAfterALogout) {
  const std::shared_ptr<CJsonObject> held = Result();
  EXPECT_EQ(m_class->PlmLogOut(), S_OK);
  EXPECT_EQ(Utf8(held->ToJson()), kLoginAnswer);
  EXPECT_EQ(held.use_count(), 1);
  EXPECT_EQ(Result(), nullptr);
}

TEST_F(LoginState, IsKeptByAnotherHolderAsItWasAfterASecondLogin) {
  const std::shared_ptr<CJsonObject> held = Result();
  Answer("QD_PLMLogin", R"({"__InvokeResult__":true,"user":"second"})");
  EXPECT_EQ(m_class->PlmLogin(), S_OK);
  EXPECT_EQ(Utf8(held->ToJson()), kLoginAnswer);
  EXPECT_EQ(held.use_count(), 1);
  EXPECT_EQ(Result()->ToJson(), LR"({"__InvokeResult__":true,"user":"second"})");
}

TEST_F(LoginState, IsChangedByALogoutOnlyUnderTheLock) {
  // given another thread that has the lock until well after the PLM client's answer
  std::promise<void> locked, answered;
  bool was_logged_in = false;
  std::thread other([&] {
    const std::lock_guard lock(Mutex());
    locked.set_value();
    answered.get_future().wait();
    std::this_thread::sleep_for(300ms);
    was_logged_in = IsLoggedIn() && Result();
  });
  ServeWith([&](const plm_client::Request&, std::stop_token) {
    answered.set_value();
    return plm_client::Reply::Text(R"({"__InvokeResult__":true})");
  });
  locked.get_future().wait();

  EXPECT_EQ(m_class->PlmLogOut(), S_OK);

  other.join();
  EXPECT_TRUE(was_logged_in);
  EXPECT_FALSE(IsLoggedIn());
  ServeWith(std::ref(m_script));
}

TEST_F(LoginState, IsChangedByALoginWithoutTheLock) {
  std::promise<void> locked, logged_in;
  bool in_time = false;
  std::thread other([&] {
    const std::lock_guard lock(Mutex());
    locked.set_value();
    in_time = logged_in.get_future().wait_for(kMostSeconds) == std::future_status::ready;
  });
  locked.get_future().wait();

  EXPECT_EQ(m_class->PlmLogin(), S_OK);

  logged_in.set_value();
  other.join();
  EXPECT_TRUE(in_time);
}

TEST_F(LoginState, ThatALogoutChangesWakesEveryWaiter) {
  std::atomic<int> woken = 0;
  const auto wait_for_logout = [&](std::promise<void>& waits) {
    std::unique_lock lock(Mutex());
    waits.set_value();  // the logout gets the lock only during the wait
    const auto deadline = std::chrono::steady_clock::now() + kMostSeconds;
    while (IsLoggedIn()) {
      if (Changed().wait_until(lock, deadline) == std::cv_status::timeout) return;
    }
    ++woken;
  };
  std::promise<void> first_waits, second_waits;
  std::thread first(wait_for_logout, std::ref(first_waits)), second(wait_for_logout, std::ref(second_waits));
  first_waits.get_future().wait();
  second_waits.get_future().wait();

  EXPECT_EQ(m_class->PlmLogOut(), S_OK);

  first.join();
  second.join();
  EXPECT_EQ(woken, 2);
}

TEST_F(LoginState, ThatAFailedLogoutDoesNotChangeWakesNobody) {
  Answer("QD_PLMLogout", "{}");
  std::promise<void> waits;
  std::cv_status woken = std::cv_status::no_timeout;
  std::thread other([&] {
    std::unique_lock lock(Mutex());
    waits.set_value();
    woken = Changed().wait_for(lock, 500ms);
  });
  waits.get_future().wait();

  EXPECT_EQ(m_class->PlmLogOut(), S_OK);

  other.join();
  EXPECT_EQ(woken, std::cv_status::timeout);
}

}  // namespace
