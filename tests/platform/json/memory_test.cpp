// What happens if memory runs out.
#include <new>

#include "failing_allocation.h"
#include "json_test_support.h"
#include "temp_files.h"

namespace {

constexpr long kOutOfMemory = static_cast<long>(0x8007000E);

/// A text with every kind of value. It needs more memory than the blocks that a parser begins with.
std::wstring LargeText() {
  const std::wstring text(300, L'\u96f6');
  std::wstring json = LR"({"numbers":[1,-2,18446744073709551615,0.5,1e300,0e309],"o":{"t":")" + text +
                      LR"("},"words":[true,false,null],"more":[)";
  for (int i = 0; i < 100; ++i) json += L"{\"a name of more than fourteen bytes\":\"" + text + L"\"},";
  return json + L"[[[[]]]]]}";
}

/// Runs `call` in `attempt`. @return whether it threw std::bad_alloc.
template <typename Call>
bool RunsOutOfMemory(Attempt& attempt, Call&& call) {
  try {
    attempt(call);
  } catch (const std::bad_alloc&) {
    return true;
  }
  return false;
}

/// Expects that the object can be changed, read and parsed.
void ExpectUsable(CJsonObject& json) {
  json.SetStringValue(L"new", L"a value of more than fourteen bytes");
  EXPECT_EQ(json.GetStringValue(L"new"), L"a value of more than fourteen bytes");
  EXPECT_TRUE(json.CreateFrom(LR"({"a":"x"})"));
  EXPECT_EQ(json.ToJson(), LR"({"a":"x"})");
}

TEST(OutOfMemory, WhileATextIsParsedLeavesAnEmptyObject) {
  const std::wstring text = LargeText();
  FailEachAllocation([&](Attempt& attempt) {
    CJsonObject json;
    json.SetStringValue(L"before", L"x");

    const bool parsed = attempt([&] { return json.CreateFrom(text); });

    EXPECT_EQ(parsed, !attempt.Fails());
    if (attempt.Fails()) {
      EXPECT_EQ(json.ToJson(), L"{}");
    }
    ExpectUsable(json);
  });
}

TEST(OutOfMemory, WhileATextIsParsedIntoAViewLeavesAnEmptyView) {
  const std::wstring text = LR"({"b":["more than fourteen bytes",1]})";
  FailEachAllocation([&](Attempt& attempt) {
    const auto json = Parse(LR"({"before":1,"o":{"a":"x"},"after":2})");
    const auto view = json->GetObjectShared(L"o");

    const bool parsed = attempt([&] { return view->CreateFrom(text); });

    EXPECT_EQ(parsed, !attempt.Fails());
    if (attempt.Fails()) {
      EXPECT_EQ(json->ToJson(), LR"({"before":1,"o":{},"after":2})");
    }
    ExpectUsable(*view);
  });
}

TEST(OutOfMemory, WhileAFileIsParsedIsReportedWithThePath) {
  const TempFiles files;
  const std::wstring path = files.Write(L"View.json", CStringHelper::UnicodeToUTF8(LargeText()));
  FailEachAllocation([&](Attempt& attempt) {
    const auto json = Parse(LR"({"before":"x"})");

    try {
      attempt([&] { json->CreateFromFile(path); });
      EXPECT_FALSE(attempt.Fails());
    } catch (const CZALException& exception) {
      EXPECT_TRUE(attempt.Fails());
      EXPECT_EQ(exception.GetErrorCode(), kOutOfMemory);
      EXPECT_EQ(exception.GetErrorMessage(), L"cannot read \"" + path + L"\": out of memory");
    } catch (const std::bad_alloc&) {
      EXPECT_TRUE(attempt.AllLaterFail()) << "only if there is no memory for the message";
    }

    if (attempt.Fails()) {
      EXPECT_EQ(json->ToJson(), LR"({"before":"x"})") << "the object is unchanged";
    }
    ExpectUsable(*json);
  });
}

TEST(OutOfMemory, WhileTheFaultOfAFileIsDescribedIsReportedWithThePath) {
  const TempFiles files;
  const std::wstring path = files.Write(L"View.json", "{\"a\":\n x}");
  FailEachAllocation([&](Attempt& attempt) {
    CJsonObject json;

    try {
      attempt([&] { json.CreateFromFile(path); });
      ADD_FAILURE() << "no exception";
    } catch (const CZALException& exception) {
      EXPECT_EQ(exception.GetErrorCode(), attempt.Fails() ? kOutOfMemory : kWrongType);
      EXPECT_NE(exception.GetErrorMessage().find(path), std::wstring::npos);
    } catch (const std::bad_alloc&) {
      EXPECT_TRUE(attempt.AllLaterFail()) << "only if there is no memory for the message";
    }

    ExpectUsable(json);
  });
}

TEST(OutOfMemory, WhileAnObjectIsCreatedIsThrown) {
  FailEachAllocation([](Attempt& attempt) {
    EXPECT_EQ(RunsOutOfMemory(attempt, [] { CJsonObject json; }), attempt.Fails());
  });
}

TEST(OutOfMemory, WhileAnObjectIsCopiedLeavesTheTargetUnchanged) {
  const auto source = Parse(LargeText());
  FailEachAllocation([&](Attempt& attempt) {
    const auto target = Parse(LR"({"before":"x"})");

    EXPECT_EQ(RunsOutOfMemory(attempt, [&] { target->CopyFrom(*source); }), attempt.Fails());

    if (attempt.Fails()) {
      EXPECT_EQ(target->ToJson(), LR"({"before":"x"})");
    }
    ExpectUsable(*target);
  });
}

TEST(OutOfMemory, WhileMembersAreCopiedIsThrown) {
  const auto json = Parse(LargeText());
  json->SetStringValue(L"to change", L"x");
  const std::wstring text = json->ToJson();
  const auto copy = json->GetObjectCopy(L"o");
  const std::wstring more = LR"({"Menu":[{"a":"x"},{"a":"a text of more than fourteen bytes"}]})";
  const auto menu = Parse(more);
  using Call = void (*)(const CJsonObject&, const CJsonObject&);
  for (const Call call : {+[](const CJsonObject&o, const CJsonObject&) { o.GetObjectCopy(L"o"); },
                          +[](const CJsonObject&o, const CJsonObject&) { o.GetObjectShared(L"o"); },
                          +[](const CJsonObject&, const CJsonObject&m) { m.GetObjectArray(L"Menu"); }}) {
    FailEachAllocation([&](Attempt& attempt) {
      EXPECT_EQ(RunsOutOfMemory(attempt, [&] { call(*json, *menu); }), attempt.Fails());
    });
  }
  EXPECT_EQ(json->ToJson(), text) << "unchanged";
  EXPECT_EQ(menu->ToJson(), more) << "unchanged";
}

TEST(OutOfMemory, WhileAnObjectIsWrittenIsThrown) {
  const auto json = Parse(LargeText());
  const std::wstring text = json->ToJson();
  FailEachAllocation([&](Attempt& attempt) {
    std::wstring written;

    EXPECT_EQ(RunsOutOfMemory(attempt, [&] { written = json->ToJson(); }), attempt.Fails());

    EXPECT_EQ(written, attempt.Fails() ? L"" : text);
  });
  EXPECT_EQ(json->ToJson(), text) << "still usable";
}

TEST(OutOfMemory, WhileAMemberIsReadIsThrown) {
  const auto json = Parse(LR"({"a name of some length":"a value of more than fourteen bytes"})");
  FailEachAllocation([&](Attempt& attempt) {
    std::wstring value;

    EXPECT_EQ(RunsOutOfMemory(attempt, [&] { value = json->GetStringValue(L"a name of some length"); }),
              attempt.Fails());

    EXPECT_EQ(value, attempt.Fails() ? L"" : L"a value of more than fourteen bytes");
  });
}

TEST(OutOfMemory, WhileAStringArrayIsReadIsThrown) {
  const auto json = Parse(LR"({"OpenFile":["a value of more than fourteen bytes","b","c"]})");
  FailEachAllocation([&](Attempt& attempt) {
    EXPECT_EQ(RunsOutOfMemory(attempt, [&] { json->GetPropertyStringArrayValue(L"OpenFile"); }),
              attempt.Fails());
  });
}

TEST(OutOfMemory, WhileALargeObjectIsSearchedLeavesItSearchable) {
  std::wstring text;
  for (int i = 0; i < 50; ++i) text += L",\"" + std::to_wstring(i) + L"\":\"" + std::to_wstring(i) + L"\"";
  text = L"{" + text.substr(1) + L"}";
  FailEachAllocation([&](Attempt& attempt) {
    const auto json = Parse(text);

    EXPECT_EQ(RunsOutOfMemory(attempt, [&] { json->IsExist(L"49"); }), attempt.Fails());

    for (int i = 0; i < 50; ++i) EXPECT_EQ(json->GetStringValue(std::to_wstring(i)), std::to_wstring(i));
    EXPECT_FALSE(json->IsExist(L"50"));
  });
}

TEST(OutOfMemory, WhileAStringIsSetLeavesTheObjectUnchanged) {
  const std::wstring value(100'000, L'x');
  // The numbers of members at which RapidJSON needs more memory for an object, and one at which it does not.
  for (const int members : {0, 3, 16, 24, 36}) {
    CJsonObject model;
    for (int i = 0; i < members; ++i) model.SetStringValue(std::to_wstring(i), L"y");
    FailEachAllocation([&](Attempt& attempt) {
      CJsonObject json;
      for (int i = 0; i < members; ++i) json.SetStringValue(std::to_wstring(i), L"y");

      EXPECT_EQ(RunsOutOfMemory(attempt, [&] { json.SetStringValue(L"new", value); }), attempt.Fails());

      if (attempt.Fails()) {
        EXPECT_EQ(json.ToJson(), model.ToJson());
      }
      for (int i = 0; i < 50; ++i) json.SetStringValue(L"more " + std::to_wstring(i), L"z");
      for (int i = 0; i < 50; ++i) EXPECT_EQ(json.GetStringValue(L"more " + std::to_wstring(i)), L"z");
      ExpectUsable(json);
    });
  }
}

TEST(OutOfMemory, WhileAnArrayBecomesAnObjectLeavesTheArray) {
  FailEachAllocation([](Attempt& attempt) {
    const auto json = Parse(L"[1]");

    EXPECT_EQ(RunsOutOfMemory(attempt, [&] { json->SetStringValue(L"k", std::wstring(100'000, L'x')); }),
              attempt.Fails());

    if (attempt.Fails()) {
      EXPECT_EQ(json->ToJson(), L"[1]");
    }
    ExpectUsable(*json);
  });
}

// Most of its members fit into memory that is already allocated; the growth of the object does not.
TEST(OutOfMemory, WhileAnObjectGrowsLeavesItUsable) {
  CJsonObject json;
  for (int i = 0; i < 2000; ++i) {
    const std::wstring key = std::to_wstring(i);
    Attempt attempt({1, true});
    if (!RunsOutOfMemory(attempt, [&] { json.SetStringValue(key, L"y"); })) continue;
    EXPECT_FALSE(json.IsExist(key));
    json.SetStringValue(key, L"y");
  }
  for (int i = 0; i < 2000; ++i) EXPECT_EQ(json.GetStringValue(std::to_wstring(i)), L"y");
}

}  // namespace
