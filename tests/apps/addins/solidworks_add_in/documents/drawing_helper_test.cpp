// The drawing helper, called directly: no command reaches it. Its log is this program's own, not the DLL's.
#include <comdef.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

#include "CLogInitializer.h"
#include "CStringHelper.h"
#include "DrawingHelper.h"
#include "cad_host/host.h"
#include "temp_folder.h"

namespace {

using Texts = std::vector<std::wstring>;

/// The log that the linked sources write, set up once for the program.
class LinkedLog {
 public:
  static LinkedLog& Instance() {
    static LinkedLog log;
    return log;
  }

  /// Begins to count lines anew.
  void Reset() { m_seen = All().size(); }

  /// The lines since Reset, as "channel|level|line|function|file name|text".
  Texts Lines() const {
    const Texts all = All();
    return {all.begin() + static_cast<std::ptrdiff_t>(m_seen), all.end()};
  }

 private:
  LinkedLog() {
    const std::wstring properties =
        m_folder.Write(L"Log4cplus.properties",
                       "log4cplus.rootLogger=TRACE, events\n"
                       "log4cplus.appender.events=log4cplus::FileAppender\n"
                       "log4cplus.appender.events.File=${LogFolder}/events.log\n"
                       "log4cplus.appender.events.layout=log4cplus::PatternLayout\n"
                       "log4cplus.appender.events.layout.ConversionPattern=%c|%p|%L|%M|%b|%m%n\n");
    EXPECT_TRUE(m_initializer.Initialize(m_folder.Path(), L"Linked", properties));
  }

  Texts All() const {
    Texts lines;
    std::wistringstream text(m_folder.Exists(L"events.log") ? m_folder.ReadText(L"events.log") : L"");
    for (std::wstring line; std::getline(text, line); lines.push_back(line)) {
      if (line.ends_with(L'\r')) line.pop_back();
    }
    return lines;
  }

  TempFolder m_folder;
  CLogInitializer m_initializer;
  std::size_t m_seen = 0;
};

class DrawingHelper : public testing::Test {
 protected:
  DrawingHelper() { LinkedLog::Instance().Reset(); }

  void TearDown() override {
    EXPECT_EQ(m_host.HeldReferences().size(), 0u);
    EXPECT_EQ(m_host.GetFaults().Unused(), Texts{});
  }

  std::wstring MakeModel(const std::wstring& name) const {
    const std::wstring path = m_folder.Path(name);
    cad_host::ModelFile model;
    model.type = cad_host::DocumentTypeOfName(name);
    cad_host::WriteModelFile(path, model);
    return path;
  }

  /// The person opens a drawing and picks a point in it.
  std::shared_ptr<cad_host::Document> OpenDrawing() {
    const auto drawing = m_host.Open(MakeModel(L"sheet.slddrw"));
    drawing->selection = {{nullptr, {0.5, -2, 0}}};
    return drawing;
  }

  void Insert(const std::wstring& path) {
    m_host.GetJournal().Clear();
    CDrawingHelper().InsertChildFile(m_host.Application(), path);
  }

  Texts HostCalls() {
    Texts calls;
    for (const auto& call : m_host.GetJournal().Calls()) {
      calls.push_back(call.method + L"(" + call.arguments + L")");
    }
    return calls;
  }

  static Texts Log() { return LinkedLog::Instance().Lines(); }

  static std::wstring Line(const std::wstring& beginning, const std::wstring& text) {
    return beginning + L"|CDrawingHelper::InsertChildFile|DrawingHelper.cpp|" + text;
  }

  static std::wstring StartLine(const std::wstring& path) {
    return Line(L"infomsg|INFO|69", L"insert into the active drawing: " + path);
  }

  static std::wstring FailureLine(int line, const std::wstring& text) {
    return Line(L"errormsg|ERROR|" + std::to_wstring(line), text);
  }

  TempFolder m_folder;
  cad_host::Host m_host;
};

TEST_F(DrawingHelper, PlacesAFrontViewAtThePickPointAndSaysThatItDoes) {
  const auto drawing = OpenDrawing();
  const std::wstring model = MakeModel(L"轴.SLDASM");
  Insert(model);
  EXPECT_EQ(
      HostCalls(),
      (Texts{L"ISldWorks::get_IActiveDoc2()", L"IModelDoc2::QueryInterface(IDrawingDoc)()",
             L"ISldWorks::OpenDoc6(\"" + model + L"\", 2, 1, \"\")", L"IModelDoc2::get_ISelectionManager()",
             L"ISelectionMgr::IGetSelectionPoint2(1, -1)",
             L"IDrawingDoc::CreateDrawViewFromModelView3(\"" + model + L"\", \"*Front\", 0.5, -2, 0)"}));
  ASSERT_EQ(drawing->model.views.size(), 1u);
  EXPECT_EQ(drawing->model.views[0].model, model);
  EXPECT_EQ(drawing->model.views[0].name, L"*Front");
  EXPECT_EQ(drawing->model.views[0].position.y, -2);
  EXPECT_EQ(Log(), Texts{StartLine(model)});
}

TEST_F(DrawingHelper, LogsThatNoDrawingIsActive) {
  const auto part = m_host.Open(MakeModel(L"active.sldprt"));
  const std::wstring model = MakeModel(L"x.sldprt");
  Insert(model);
  EXPECT_EQ(Log(), (Texts{StartLine(model),
                          FailureLine(85, L"iSwApp->get_IActiveDoc2: " + model + L"<hr=0x80004002>")}));
  EXPECT_EQ(m_host.ActiveDocument(), part);
}

TEST_F(DrawingHelper, LogsThatTheModelCannotBeOpened) {
  OpenDrawing();
  const std::wstring missing = m_folder.Path(L"missing.sldprt");
  Insert(missing);
  EXPECT_EQ(Log(),
            (Texts{StartLine(missing), FailureLine(112, L"OpenDoc6 failed at " + missing + L"<hr=0x0>")}));
}

TEST_F(DrawingHelper, LogsThatNothingIsSelectedAndLeavesTheModelOpen) {
  const auto drawing = OpenDrawing();
  drawing->selection.clear();
  const std::wstring model = MakeModel(L"x.sldprt");
  Insert(model);
  EXPECT_EQ(Log(), (Texts{StartLine(model), FailureLine(129, L"iSelectionMgr->IGetSelectionPoint2: " + model +
                                                                 L"<hr=0x80004005>")}));
  EXPECT_EQ(drawing->model.views.size(), 0u);
  EXPECT_NE(m_host.FindDocument(model), nullptr);
}

/// A call that fails, and how.
struct FailingCall {
  const wchar_t* method;
  HRESULT result;
  int line;  ///< 0 for none
  const wchar_t* text;
};

class FailingDrawing : public DrawingHelper, public testing::WithParamInterface<FailingCall> {};

TEST_P(FailingDrawing, IsToldInTheLog) {
  OpenDrawing();
  const std::wstring model = MakeModel(L"x.sldprt");
  m_host.GetFaults().Fail(GetParam().method, 1, GetParam().result);
  Insert(model);
  wchar_t code[16];
  std::swprintf(code, std::size(code), L"<hr=0x%lx>", static_cast<unsigned long>(GetParam().result));
  Texts expected = {StartLine(model)};
  if (GetParam().line) expected.push_back(FailureLine(GetParam().line, GetParam().text + model + code));
  EXPECT_EQ(Log(), expected);
}

constexpr const wchar_t* kCreateView = L"IDrawingDoc::CreateDrawViewFromModelView3";

INSTANTIATE_TEST_SUITE_P(
    , FailingDrawing,
    testing::Values(FailingCall{L"ISldWorks::get_IActiveDoc2", E_FAIL, 85, L"iSwApp->get_IActiveDoc2: "},
                    FailingCall{L"IModelDoc2::QueryInterface(IDrawingDoc)", E_FAIL, 85,
                                L"iSwApp->get_IActiveDoc2: "},
                    FailingCall{L"ISldWorks::OpenDoc6", E_FAIL, 112, L"OpenDoc6 failed at "},
                    FailingCall{L"ISldWorks::OpenDoc6", S_FALSE, 112, L"OpenDoc6 failed at "},
                    FailingCall{L"IModelDoc2::get_ISelectionManager", E_FAIL, 129,
                                L"iSelectionMgr->IGetSelectionPoint2: "},
                    FailingCall{L"ISelectionMgr::IGetSelectionPoint2", E_FAIL, 129,
                                L"iSelectionMgr->IGetSelectionPoint2: "},
                    FailingCall{L"ISelectionMgr::IGetSelectionPoint2", S_FALSE, 0, L""},
                    FailingCall{kCreateView, E_FAIL, 162, L"pDrawDoc->CreateDrawViewFromModelView3: "},
                    FailingCall{kCreateView, S_OK, 162, L"pDrawDoc->CreateDrawViewFromModelView3: "},
                    FailingCall{kCreateView, S_FALSE, 162, L"pDrawDoc->CreateDrawViewFromModelView3: "}));

/// Calls that leave it without an object that it cannot do without.
class MissingObject : public DrawingHelper, public testing::WithParamInterface<const wchar_t*> {};

TEST_P(MissingObject, IsRaisedAsAComError) {
  OpenDrawing();
  const std::wstring model = MakeModel(L"x.sldprt");
  for (const HRESULT result : {S_OK, S_FALSE}) {
    LinkedLog::Instance().Reset();
    m_host.GetFaults().Fail(GetParam(), 1, result);
    try {
      Insert(model);
      ADD_FAILURE() << "nothing was raised";
    } catch (const _com_error& error) {
      EXPECT_EQ(error.Error(), E_POINTER);
    }
    EXPECT_EQ(Log(), Texts{StartLine(model)});
    m_host.Activate(m_host.FindDocument(L"sheet.slddrw"));
  }
}

INSTANTIATE_TEST_SUITE_P(, MissingObject,
                         testing::Values(L"ISldWorks::get_IActiveDoc2",
                                         L"IModelDoc2::QueryInterface(IDrawingDoc)",
                                         L"IModelDoc2::get_ISelectionManager"));

TEST_F(DrawingHelper, RaisesAComErrorWithoutADocument) {
  try {
    Insert(MakeModel(L"x.sldprt"));
    ADD_FAILURE() << "nothing was raised";
  } catch (const _com_error& error) {
    EXPECT_EQ(error.Error(), E_POINTER);
  }
}

}  // namespace
