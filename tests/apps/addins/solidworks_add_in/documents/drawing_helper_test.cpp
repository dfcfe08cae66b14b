// The drawing helper, called directly because no command calls it. It writes the log of this program, not the
// log of the DLL.
#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

#include "CLogInitializer.h"
#include "CStringHelper.h"
#include "DrawingHelper.h"
#include "cad_host/host.h"
#include "case_name.h"
#include "list_difference.h"
#include "log_line.h"
#include "method_case_name.h"
#include "opening_faults.h"
#include "raised_by.h"
#include "temp_folder.h"

namespace {

using Texts = std::vector<std::wstring>;

/// The log of the code that is linked into this program; it is set up once.
class LinkedLog {
 public:
  static LinkedLog& Instance() {
    static LinkedLog log;
    return log;
  }

  /// From now on, Lines returns only new lines.
  void Reset() { m_seen = All().size(); }

  /// The lines since Reset, as "channel|level|line|function|text|source file".
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
                       "log4cplus.appender.events.layout.ConversionPattern=%c|%p|%L|%M|%m|%F%n\n");
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

  /// The user opens a drawing and picks a point in it.
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

  /// The line with which each insertion starts.
  static std::wstring StartLine(const std::wstring& path) {
    return InfoLine(69, kDrawingHelperClass, kFunction, L"insert into the active drawing: " + path) + kSource;
  }

  static std::wstring FailureLine(int line, const std::wstring& text, HRESULT code) {
    return ErrorLine(line, kFunction, text, code, kDrawingHelperClass) + kSource;
  }

  static constexpr const wchar_t* kFunction = L"InsertChildFile";
  static constexpr const wchar_t* kSource = L"|/tavo/apps/addins/solidworks_add_in/DrawingHelper.cpp";

  TempFolder m_folder;
  cad_host::Host m_host;
};

TEST_F(DrawingHelper, PlacesAFrontViewAtThePickPointAndLogsIt) {
  const auto drawing = OpenDrawing();
  const std::wstring model = MakeModel(L"轴.SLDASM");
  Insert(model);
  EXPECT_SAME_ENTRIES(
      HostCalls(),
      Texts{L"ISldWorks::get_IActiveDoc2()", L"IModelDoc2::QueryInterface(IDrawingDoc)()",
            L"ISldWorks::OpenDoc6(\"" + model + L"\", 2, 1, \"\")", L"IModelDoc2::get_ISelectionManager()",
            L"ISelectionMgr::IGetSelectionPoint2(1, -1)",
            L"IDrawingDoc::CreateDrawViewFromModelView3(\"" + model + L"\", \"*Front\", 0.5, -2, 0)"});
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
  EXPECT_EQ(Log(),
            (Texts{StartLine(model), FailureLine(85, L"iSwApp->get_IActiveDoc2: " + model, E_NOINTERFACE)}));
  EXPECT_EQ(m_host.ActiveDocument(), part);
}

TEST_F(DrawingHelper, LogsThatTheModelCannotBeOpened) {
  OpenDrawing();
  const std::wstring missing = m_folder.Path(L"missing.sldprt");
  Insert(missing);
  EXPECT_EQ(Log(), (Texts{StartLine(missing), FailureLine(112, L"OpenDoc6 failed at " + missing, S_OK)}));
}

TEST_F(DrawingHelper, PlacesAViewEvenIfTheHostReportsErrorsAndWarningsOfTheModel) {
  const auto drawing = OpenDrawing();
  const std::wstring model = MakeModel(L"x.sldprt");
  ReportErrorsAndWarnings(m_host.GetFaults());
  Insert(model);
  EXPECT_EQ(drawing->model.views.size(), 1u);
  EXPECT_EQ(Log(), Texts{StartLine(model)});
}

TEST_F(DrawingHelper, LogsThatOpeningFailsAlthoughTheHostReturnsADocument) {
  const auto drawing = OpenDrawing();
  const std::wstring model = MakeModel(L"x.sldprt");
  FailWithADocument(m_host.GetFaults(), E_ACCESSDENIED);
  Insert(model);
  EXPECT_EQ(drawing->model.views.size(), 0u);
  EXPECT_EQ(Log(),
            (Texts{StartLine(model), FailureLine(112, L"OpenDoc6 failed at " + model, E_ACCESSDENIED)}));
}

TEST_F(DrawingHelper, LogsThatNothingIsSelectedAndLeavesTheModelOpen) {
  const auto drawing = OpenDrawing();
  drawing->selection.clear();
  const std::wstring model = MakeModel(L"x.sldprt");
  Insert(model);
  EXPECT_EQ(Log(), (Texts{StartLine(model),
                          FailureLine(129, L"iSelectionMgr->IGetSelectionPoint2: " + model, E_FAIL)}));
  EXPECT_EQ(drawing->model.views.size(), 0u);
  EXPECT_NE(m_host.FindDocument(model), nullptr);
}

/// A call that fails, its result, and the error that is logged.
struct FailingCall {
  const char* name;
  const wchar_t* method;
  HRESULT result;
  int line;  ///< of the log; 0 if no error is logged
  const wchar_t* text;
};

class FailingDrawing : public DrawingHelper, public testing::WithParamInterface<FailingCall> {};

TEST_P(FailingDrawing, IsLogged) {
  OpenDrawing();
  const std::wstring model = MakeModel(L"x.sldprt");
  m_host.GetFaults().Fail(GetParam().method, 1, GetParam().result);
  Insert(model);
  Texts expected = {StartLine(model)};
  if (GetParam().line) {
    expected.push_back(FailureLine(GetParam().line, GetParam().text + model, GetParam().result));
  }
  EXPECT_EQ(Log(), expected);
}

constexpr const wchar_t* kCreateView = L"IDrawingDoc::CreateDrawViewFromModelView3";

INSTANTIATE_TEST_SUITE_P(
    , FailingDrawing,
    testing::Values(
        FailingCall{"ActiveDocumentFails", L"ISldWorks::get_IActiveDoc2", E_FAIL, 85,
                    L"iSwApp->get_IActiveDoc2: "},
        FailingCall{"DrawingQueryFails", L"IModelDoc2::QueryInterface(IDrawingDoc)", E_FAIL, 85,
                    L"iSwApp->get_IActiveDoc2: "},
        FailingCall{"OpenFails", L"ISldWorks::OpenDoc6", E_FAIL, 112, L"OpenDoc6 failed at "},
        FailingCall{"OpenReturnsFalse", L"ISldWorks::OpenDoc6", S_FALSE, 112, L"OpenDoc6 failed at "},
        FailingCall{"SelectionManagerFails", L"IModelDoc2::get_ISelectionManager", E_FAIL, 129,
                    L"iSelectionMgr->IGetSelectionPoint2: "},
        FailingCall{"PointFails", L"ISelectionMgr::IGetSelectionPoint2", E_FAIL, 129,
                    L"iSelectionMgr->IGetSelectionPoint2: "},
        FailingCall{"PointReturnsFalse", L"ISelectionMgr::IGetSelectionPoint2", S_FALSE, 0, L""},
        FailingCall{"ViewFails", kCreateView, E_FAIL, 162, L"pDrawDoc->CreateDrawViewFromModelView3: "},
        FailingCall{"ViewReturnsNothing", kCreateView, S_OK, 162,
                    L"pDrawDoc->CreateDrawViewFromModelView3: "},
        FailingCall{"ViewReturnsFalse", kCreateView, S_FALSE, 162,
                    L"pDrawDoc->CreateDrawViewFromModelView3: "}),
    CaseName<FailingCall>);

/// A call that returns null instead of an object that the helper needs.
class MissingObject : public DrawingHelper, public testing::WithParamInterface<const wchar_t*> {};

TEST_P(MissingObject, IsThrownAsAComError) {
  OpenDrawing();
  const std::wstring model = MakeModel(L"x.sldprt");
  for (const HRESULT result : {S_OK, S_FALSE}) {
    LinkedLog::Instance().Reset();
    m_host.GetFaults().Fail(GetParam(), 1, result);
    EXPECT_EQ(RaisedBy([&] { Insert(model); }), E_POINTER);
    EXPECT_EQ(Log(), Texts{StartLine(model)});
    m_host.Activate(m_host.FindDocument(L"sheet.slddrw"));
  }
}

INSTANTIATE_TEST_SUITE_P(, MissingObject,
                         testing::Values(L"ISldWorks::get_IActiveDoc2",
                                         L"IModelDoc2::QueryInterface(IDrawingDoc)",
                                         L"IModelDoc2::get_ISelectionManager"),
                         MethodCaseName);

TEST_F(DrawingHelper, ThrowsAComErrorWithoutADocument) {
  EXPECT_EQ(RaisedBy([&] { Insert(MakeModel(L"x.sldprt")); }), E_POINTER);
}

}  // namespace
