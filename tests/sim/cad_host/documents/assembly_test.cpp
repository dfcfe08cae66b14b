// Components: their files, their suppression and their replacement; selections; drawing views.
#include "host/assembly.h"
#include "host/drawing.h"
#include "host/model_doc.h"
#include "host/selection.h"
#include "host_fixture.h"

namespace {

using cad_host::Component;
using cad_host::Document;
using cad_host::Point;

// What SetSuppression2 returns.
constexpr long kBadState = 1;
constexpr long kChanged = 2;
constexpr long kFailed = 3;

class AssemblyTest : public HostTest {
 protected:
  AssemblyTest() : m_assembly(Host().Open(MakeAssembly(L"top.sldasm"))) {}

  std::shared_ptr<Component> Insert(const std::wstring& path) {
    return Host().AddComponent(*m_assembly, path);
  }

  void Select(const std::shared_ptr<Component>& component, const Point& point = {}) {
    m_assembly->selection = {{component, point}};
  }

  template <class Interface>
  _com_ptr_t<_com_IIID<Interface, &__uuidof(Interface)>> Active() {
    IModelDoc2Ptr document;
    Host().Application()->get_IActiveDoc2(&document);
    return document;
  }

  ISelectionMgrPtr SelectionManager() {
    ISelectionMgrPtr manager;
    Active<IModelDoc2>()->get_ISelectionManager(&manager);
    return manager;
  }

  IComponent2Ptr SelectedComponent() {
    IDispatchPtr selected;
    SelectionManager()->GetSelectedObject6(1, -1, &selected);
    return selected;
  }

  long SetSuppression(long state) {
    long result = -1;
    EXPECT_EQ(SelectedComponent()->SetSuppression2(state, &result), S_OK);
    return result;
  }

  bool Replace(const std::wstring& path, bool all = true, bool reattach = true) {
    VARIANT_BOOL replaced = VARIANT_FALSE;
    EXPECT_EQ(Active<IAssemblyDoc>()->ReplaceComponents2(CComBSTR(path), CComBSTR(L""),
                                                         all ? VARIANT_TRUE : VARIANT_FALSE, 0,
                                                         reattach ? VARIANT_TRUE : VARIANT_FALSE, &replaced),
              S_OK);
    return replaced == VARIANT_TRUE;
  }

  std::vector<std::wstring> Names() const {
    std::vector<std::wstring> names;
    for (const auto& component : m_assembly->components) names.push_back(component->record.name);
    return names;
  }

  bool CanMove(const std::wstring& path) const {
    const std::wstring away = path + L".away";
    return MoveFileExW(path.c_str(), away.c_str(), 0) && MoveFileExW(away.c_str(), path.c_str(), 0);
  }

  std::shared_ptr<Document> m_assembly;
};

using Names = std::vector<std::wstring>;

TEST_F(AssemblyTest, AddsAnOpenModelAtAPoint) {
  const std::wstring path = MakePart(L"bolt.sldprt", 4);
  const auto part = Host().Open(path);
  Host().Activate(m_assembly);
  IComponent2Ptr added;
  EXPECT_EQ(Active<IAssemblyDoc>()->AddComponent5(CComBSTR(path), 0, CComBSTR(L""), VARIANT_FALSE,
                                                  CComBSTR(L""), 1, 2, 3, &added),
            S_OK);
  ASSERT_TRUE(added);
  CComBSTR text;
  added->get_Name2(&text);
  EXPECT_EQ(text.View(), L"bolt-1");
  added->GetPathName(&text);
  EXPECT_EQ(text.View(), path);
  const auto component = m_assembly->FindComponent(L"BOLT-1");
  ASSERT_TRUE(component);
  EXPECT_EQ(component->record.position.x, 1);
  EXPECT_EQ(component->record.position.y, 2);
  EXPECT_EQ(component->record.position.z, 3);
  EXPECT_EQ(component->loaded_revision, 4);
  EXPECT_TRUE(m_assembly->changed);
}

TEST_F(AssemblyTest, AddsOnlyModelsThatAreOpen) {
  IComponent2Ptr added;
  EXPECT_EQ(Active<IAssemblyDoc>()->AddComponent5(CComBSTR(MakePart(L"bolt.sldprt")), 0, CComBSTR(L""),
                                                  VARIANT_FALSE, CComBSTR(L""), 0, 0, 0, &added),
            S_OK);
  EXPECT_FALSE(added);
  EXPECT_TRUE(m_assembly->components.empty());
}

TEST_F(AssemblyTest, NumbersTheInstancesOfAModel) {
  const std::wstring path = MakePart(L"bolt.sldprt");
  Insert(path);
  Insert(path);
  Insert(MakePart(L"nut.sldprt"));
  EXPECT_EQ(Names(), (::Names{L"bolt-1", L"bolt-2", L"nut-1"}));
}

TEST_F(AssemblyTest, AResolvedComponentKeepsItsFileOpen) {
  const std::wstring path = MakePart(L"bolt.sldprt");
  const std::wstring other = MakePart(L"other.sldprt");
  Select(Insert(path));
  EXPECT_FALSE(CanMove(path));
  EXPECT_FALSE(DeleteFileW(path.c_str()));
  EXPECT_FALSE(CopyFileW(other.c_str(), path.c_str(), FALSE));
  EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_SHARING_VIOLATION));
  EXPECT_EQ(SetSuppression(swComponentSuppressed), kChanged);
  EXPECT_TRUE(CanMove(path));
  EXPECT_TRUE(CopyFileW(other.c_str(), path.c_str(), FALSE));
}

TEST_F(AssemblyTest, ASecondResolvedInstanceKeepsTheFileOpenToo) {
  const std::wstring path = MakePart(L"bolt.sldprt");
  Select(Insert(path));
  const auto second = Insert(path);
  SetSuppression(swComponentSuppressed);
  EXPECT_FALSE(CanMove(path));
  Select(second);
  SetSuppression(swComponentSuppressed);
  EXPECT_TRUE(CanMove(path));
}

TEST_F(AssemblyTest, ResolvingLoadsTheFileAgain) {
  const std::wstring path = MakePart(L"bolt.sldprt", 1);
  const auto component = Insert(path);
  Select(component);
  SetSuppression(swComponentSuppressed);
  MakePart(L"bolt.sldprt", 9);
  EXPECT_EQ(component->loaded_revision, 1);
  EXPECT_EQ(SetSuppression(swComponentResolved), kChanged);
  EXPECT_EQ(component->loaded_revision, 9);
  EXPECT_FALSE(CanMove(path));
  long state = -1;
  SelectedComponent()->GetSuppression(&state);
  EXPECT_EQ(state, swComponentResolved);
}

TEST_F(AssemblyTest, AComponentWithoutItsFileStaysSuppressed) {
  const std::wstring path = MakePart(L"bolt.sldprt");
  const auto component = Insert(path);
  Select(component);
  SetSuppression(swComponentSuppressed);
  DeleteFileW(path.c_str());
  EXPECT_EQ(SetSuppression(swComponentResolved), kFailed);
  EXPECT_TRUE(component->IsSuppressed());
  EXPECT_EQ(SetSuppression(17), kBadState);
}

TEST_F(AssemblyTest, ReadsBackAsItWasSaved) {
  const std::wstring bolt = MakePart(L"bolt.sldprt", 5);
  const std::wstring nut = MakePart(L"nut.sldprt");
  Host().AddComponent(*m_assembly, bolt, {0.25, -1.5, 1e-7});
  Select(Insert(nut));
  SetSuppression(swComponentSuppressed);
  m_assembly->model.mates = {{L"Coincident1", L"bolt-1", L"nut-1"}};
  const std::wstring path = m_assembly->path;
  Host().Save(*m_assembly);
  Host().Close(m_assembly);
  EXPECT_TRUE(CanMove(bolt)) << "closing the document closes the file";

  const auto again = Host().Open(path);
  ASSERT_EQ(again->components.size(), 2u);
  const Component& first = *again->components[0];
  EXPECT_EQ(first.record.name, L"bolt-1");
  EXPECT_EQ(first.record.path, bolt);
  EXPECT_EQ(first.record.position.x, 0.25);
  EXPECT_EQ(first.record.position.y, -1.5);
  EXPECT_EQ(first.record.position.z, 1e-7);
  EXPECT_EQ(first.loaded_revision, 5);
  EXPECT_TRUE(again->components[1]->IsSuppressed());
  ASSERT_EQ(again->model.mates.size(), 1u);
  EXPECT_EQ(again->model.mates[0].second, L"nut-1");
  EXPECT_FALSE(CanMove(bolt));
  EXPECT_TRUE(CanMove(nut));
}

TEST_F(AssemblyTest, ReplacesAllInstancesAndReattachesMates) {
  const std::wstring bolt = MakePart(L"bolt.sldprt");
  const auto selected = Insert(bolt);
  Insert(MakePart(L"nut.sldprt"));
  Insert(bolt);
  m_assembly->model.mates = {{L"M1", L"bolt-1", L"nut-1"}, {L"M2", L"nut-1", L"bolt-2"}};
  Select(selected);
  const std::wstring screw = MakePart(L"screw.sldprt", 3);
  EXPECT_TRUE(Replace(screw));
  EXPECT_EQ(Names(), (::Names{L"screw-1", L"nut-1", L"screw-2"}));
  EXPECT_EQ(selected->record.path, screw);
  EXPECT_EQ(selected->loaded_revision, 3);
  EXPECT_EQ(m_assembly->model.mates[0].first, L"screw-1");
  EXPECT_EQ(m_assembly->model.mates[1].second, L"screw-2");
  EXPECT_TRUE(CanMove(bolt));
  EXPECT_FALSE(CanMove(screw));
}

TEST_F(AssemblyTest, ReplacesOneInstanceAndDropsItsMates) {
  const std::wstring bolt = MakePart(L"bolt.sldprt");
  Select(Insert(bolt));
  Insert(bolt);
  m_assembly->model.mates = {{L"M1", L"bolt-1", L"bolt-2"}};
  EXPECT_TRUE(Replace(MakePart(L"screw.sldprt"), /*all=*/false, /*reattach=*/false));
  EXPECT_EQ(Names(), (::Names{L"screw-1", L"bolt-2"}));
  EXPECT_TRUE(m_assembly->model.mates.empty());
}

TEST_F(AssemblyTest, RefusesAFileOfTheSameNameEvenInAnotherFolder) {
  Select(Insert(MakePart(L"bolt.sldprt")));
  m_folder.MakeFolder(L"elsewhere");
  EXPECT_FALSE(Replace(MakePart(L"elsewhere\\BOLT.sldprt")));
  EXPECT_EQ(m_assembly->components[0]->record.path, m_folder.Path(L"bolt.sldprt"));
  EXPECT_TRUE(Journal().Contains(L"nothing replaced"));
}

TEST_F(AssemblyTest, RefusesInvalidReplacements) {
  Select(Insert(MakePart(L"bolt.sldprt")));
  EXPECT_FALSE(Replace(m_folder.Path(L"missing.sldprt")));
  cad_host::ModelFile drawing;
  drawing.type = swDocDRAWING;
  EXPECT_FALSE(Replace(MakeFile(L"sheet.slddrw", drawing)));
  const std::wstring screw = MakePart(L"screw.sldprt");
  m_assembly->selection = {{nullptr, {}}};
  EXPECT_FALSE(Replace(screw)) << "a face is selected";
  m_assembly->selection.clear();
  EXPECT_FALSE(Replace(screw)) << "nothing is selected";
  EXPECT_EQ(Names(), ::Names{L"bolt-1"});
}

TEST_F(AssemblyTest, ASuppressedComponentIsReplacedAndStaysSuppressed) {
  Select(Insert(MakePart(L"bolt.sldprt")));
  SetSuppression(swComponentSuppressed);
  const std::wstring screw = MakePart(L"screw.sldprt");
  EXPECT_TRUE(Replace(screw));
  EXPECT_TRUE(m_assembly->components[0]->IsSuppressed());
  EXPECT_TRUE(CanMove(screw));
}

TEST_F(AssemblyTest, SelectionsReturnTheirObjectAndPoint) {
  const auto component = Insert(MakePart(L"bolt.sldprt"));
  m_assembly->selection = {{component, {0.5, 1.5, 2.5}}, {nullptr, {7, 8, 9}}};
  const ISelectionMgrPtr manager = SelectionManager();
  double point[3] = {};
  EXPECT_EQ(manager->IGetSelectionPoint2(1, -1, point), S_OK);
  EXPECT_EQ(point[0], 0.5);
  EXPECT_EQ(point[1], 1.5);
  EXPECT_EQ(point[2], 2.5);
  const IComponent2Ptr selected = SelectedComponent();
  CComBSTR name;
  selected->get_Name2(&name);
  EXPECT_EQ(name.View(), L"bolt-1");
  EXPECT_EQ(selected.GetInterfacePtr(), SelectedComponent().GetInterfacePtr()) << "one identity";

  IDispatchPtr object;
  EXPECT_EQ(manager->GetSelectedObject6(2, -1, &object), S_OK);
  ASSERT_TRUE(object);
  IComponent2* no_component = nullptr;
  EXPECT_EQ(object->QueryInterface(__uuidof(IComponent2), reinterpret_cast<void**>(&no_component)),
            E_NOINTERFACE);
}

TEST_F(AssemblyTest, ReturnsNoObjectAndNoPointIfNothingIsSelected) {
  const ISelectionMgrPtr manager = SelectionManager();
  IDispatchPtr object;
  EXPECT_EQ(manager->GetSelectedObject6(1, -1, &object), S_OK);
  EXPECT_FALSE(object);
  double point[3] = {1, 1, 1};
  EXPECT_EQ(manager->IGetSelectionPoint2(1, -1, point), E_FAIL);
  EXPECT_EQ(point[0], 0);
}

TEST_F(AssemblyTest, ADrawingGetsViewsOfOpenModels) {
  const std::wstring bolt = MakePart(L"bolt.sldprt");
  Host().Open(bolt);
  const auto drawing = Host().New(swDocDRAWING);
  const auto create = [&](const std::wstring& model) {
    IViewPtr view;
    EXPECT_EQ(Active<IDrawingDoc>()->CreateDrawViewFromModelView3(CComBSTR(model), CComBSTR(L"*Front"), 1, 2,
                                                                  0, &view),
              S_OK);
    return view != nullptr;
  };
  EXPECT_TRUE(create(bolt));
  EXPECT_FALSE(create(m_folder.Path(L"nut.sldprt")));
  Host().Save(*drawing, m_folder.Path(L"sheet.slddrw"));
  const cad_host::ModelFile saved = cad_host::ReadModelFile(drawing->path);
  ASSERT_EQ(saved.views.size(), 1u);
  EXPECT_EQ(saved.views[0].model, bolt);
  EXPECT_EQ(saved.views[0].name, L"*Front");
  EXPECT_EQ(saved.views[0].position.y, 2);
}

}  // namespace
