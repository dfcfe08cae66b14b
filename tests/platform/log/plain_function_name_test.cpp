// Function names as a person writes them, from the compiler's form of them.
#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <source_location>
#include <string>
#include <utility>

#include "log/platform_log.h"

namespace {

/// The plain name of the function that calls this one.
std::string PlainNameOf(std::source_location place = std::source_location::current()) {
  return PlainFunctionName(place.function_name());
}

struct First {};
struct Second {};

std::string g_name;  // of the function that was called last

}  // namespace

// Outside the namespace without a name, for what its own name becomes.
// NOLINTNEXTLINE(misc-use-anonymous-namespace)
static std::string FreeFunction() { return PlainNameOf(); }

namespace plain_function_name {
std::string InANamespace();
std::string InANamespace() { return PlainNameOf(); }
}  // namespace plain_function_name

namespace {

std::string Nameless() { return PlainNameOf(); }

std::map<int, std::pair<First, Second>> MapResult(const std::function<void(int)>&) {
  g_name = PlainNameOf();
  return {};
}

std::function<void(First, Second)> FunctionResult() {
  g_name = PlainNameOf();
  return {};
}

const std::map<int, First>* PointerResult() {
  g_name = PlainNameOf();
  return nullptr;
}

std::string& ReferenceResult() {
  g_name = PlainNameOf();
  return g_name;
}

void (*FunctionPointerResult(int))(First) {
  g_name = PlainNameOf();
  return nullptr;
}

const int (&ArrayResult())[2] {
  static constexpr int kNumbers[2]{};
  g_name = PlainNameOf();
  return kNumbers;
}

class Sample {
 public:
  Sample() { g_name = PlainNameOf(); }
  ~Sample() { g_name = PlainNameOf(); }
  Sample(const Sample&) = delete;
  Sample& operator=(const Sample&) = delete;

  std::string Member(int) const { return PlainNameOf(); }
  static std::string Static() { return PlainNameOf(); }
  std::string CallALambda() const {
    const auto lambda = [](const std::pair<int, int>&) -> std::string { return PlainNameOf(); };
    return lambda({});
  }
  std::string CallAGenericLambda() const {
    return [](auto) { return PlainNameOf(); }(1);
  }

  bool operator==(const Sample&) const {
    g_name = PlainNameOf();
    return true;
  }
  Sample& operator<<(int) {
    g_name = PlainNameOf();
    return *this;
  }
  std::map<int, First> operator()(int) const {
    g_name = PlainNameOf();
    return {};
  }
  const First* operator->() const {
    g_name = PlainNameOf();
    return nullptr;
  }
  explicit operator bool() const {
    g_name = PlainNameOf();
    return true;
  }
};

template <class T>
struct Holder {
  T Get() const {
    g_name = PlainNameOf();
    return {};
  }
};

TEST(PlainFunctionName, OfAFreeFunctionIsItsName) {
  EXPECT_EQ(FreeFunction(), "FreeFunction");
  EXPECT_EQ(plain_function_name::InANamespace(), "plain_function_name::InANamespace");
}

TEST(PlainFunctionName, HasNoNamespaceWithoutAName) {
  EXPECT_EQ(Nameless(), "Nameless");
  EXPECT_EQ(PlainFunctionName("{anonymous}::A::{anonymous}::B::F()"), "A::B::F");
}

TEST(PlainFunctionName, OfAMemberBeginsWithItsClass) {
  EXPECT_EQ(Sample().Member(1), "Sample::Member");
  EXPECT_EQ(Sample::Static(), "Sample::Static");
  Holder<std::pair<First, Second>>().Get();
  EXPECT_EQ(g_name, "Holder<T>::Get");
  EXPECT_EQ(
      PlainFunctionName("virtual HRESULT CSolidWorksAddIn::ConnectToSW(IDispatch*, long int, short int*)"),
      "CSolidWorksAddIn::ConnectToSW");
}

TEST(PlainFunctionName, HasNoResult) {
  MapResult({});
  EXPECT_EQ(g_name, "MapResult");
  FunctionResult();
  EXPECT_EQ(g_name, "FunctionResult");
  PointerResult();
  EXPECT_EQ(g_name, "PointerResult");
  ReferenceResult();
  EXPECT_EQ(g_name, "ReferenceResult");
  FunctionPointerResult(1);
  EXPECT_EQ(g_name, "FunctionPointerResult");
  ArrayResult();
  EXPECT_EQ(g_name, "ArrayResult");
  EXPECT_EQ(PlainFunctionName("const char *A::Name(int)"), "A::Name") << "as other compilers write it";
}

TEST(PlainFunctionName, OfALambdaIsThatOfTheFunctionAroundIt) {
  EXPECT_EQ(Sample().CallALambda(), "Sample::CallALambda");
  EXPECT_EQ(Sample().CallAGenericLambda(), "Sample::CallAGenericLambda");
}

TEST(PlainFunctionName, OfAConstructorOrDestructorIsTheClassTwice) {
  { const Sample sample; }
  EXPECT_EQ(g_name, "Sample::~Sample");
  const Sample sample;
  EXPECT_EQ(g_name, "Sample::Sample");
}

TEST(PlainFunctionName, OfAnOperatorHasItsSymbol) {
  Sample sample;
  const Sample other;
  (void)(sample == other);
  EXPECT_EQ(g_name, "Sample::operator==");
  sample << 1;
  EXPECT_EQ(g_name, "Sample::operator<<");
  sample(1);
  EXPECT_EQ(g_name, "Sample::operator()");
  sample.operator->();
  EXPECT_EQ(g_name, "Sample::operator->");
  (void)static_cast<bool>(sample);
  EXPECT_EQ(g_name, "Sample::operator bool");
}

TEST(PlainFunctionName, MayBeWithoutParameters) {
  EXPECT_EQ(PlainFunctionName("main"), "main");
  EXPECT_EQ(PlainFunctionName(""), "");
}

}  // namespace
