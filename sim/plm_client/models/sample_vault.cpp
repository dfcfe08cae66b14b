#include "models/sample_vault.h"

#include <functional>

#include "cad_host/model_file.h"
#include "sample_models.h"

namespace plm_models {
namespace {

using plm_vault::Item;
using plm_vault::Vault;

constexpr const wchar_t* kDesigner = L"kim";

/// Makes the files of the items one after the other and takes them into the vault.
class SampleMaker {
 public:
  explicit SampleMaker(Vault& vault) : m_vault(vault), m_folder(vault.Folder() / L"sample") {
    std::filesystem::create_directories(m_folder);
  }
  SampleMaker(const SampleMaker&) = delete;
  SampleMaker& operator=(const SampleMaker&) = delete;
  ~SampleMaker() {
    std::error_code ignored;  // what is left lies in the vault's folder and does no harm
    std::filesystem::remove_all(m_folder, ignored);
  }

  void AddPart(const SampleModel& part) {
    cad_host::ModelFile model;
    model.properties = Described(part.name);
    model.properties.push_back({L"Material", part.material});
    // As in the CAD application: the mass is computed when the property is read.
    model.properties.push_back({L"Weight", L"\"SW-Mass@" + std::wstring(part.file_name) + L"\""});
    model.quantities[L"SW-Mass"] = part.mass;
    AddRevisions(part.file_name, part.name, part.revisions, model);
  }

  void AddAssembly(const SampleAssembly& assembly) {
    cad_host::ModelFile model;
    model.type = swDocASSEMBLY;
    model.properties = Described(assembly.name);
    for (const SamplePlacement& placement : assembly.parts) AddComponents(model, placement);
    const Item item = AddRevisions(assembly.file_name, assembly.name, assembly.revisions, model);
    for (const SamplePlacement& placement : assembly.parts) AddUse(item, placement.file_name);
  }

  void AddDrawing(const SampleDrawing& drawing) {
    cad_host::ModelFile model;
    model.type = swDocDRAWING;
    model.properties = Described(drawing.name);
    model.views.push_back({WorkPath(drawing.model), L"*Front", {0.1, 0.15, 0}});
    AddUse(AddRevisions(drawing.file_name, drawing.name, 1, model), drawing.model);
  }

 private:
  static cad_host::CustomProperties Described(const wchar_t* name) {
    return {{L"Number", L"-"}, {L"Description", name}};
  }

  std::wstring WorkPath(const wchar_t* file_name) const {
    return m_vault.WorkFile(*m_vault.FindByFileName(file_name)).wstring();
  }

  void AddComponents(cad_host::ModelFile& model, const SamplePlacement& placement) const {
    constexpr double kPitch = 0.15;  // metres between components
    constexpr std::size_t kInRow = 8;
    const std::wstring stem = std::filesystem::path(placement.file_name).stem().wstring();
    for (int i = 1; i <= placement.count; ++i) {
      const std::size_t count = model.components.size();
      const std::size_t column = count % kInRow, row = count / kInRow;
      model.components.push_back(
          {.name = stem + L"-" + std::to_wstring(i),
           .path = WorkPath(placement.file_name),
           .position = {static_cast<double>(column) * kPitch, static_cast<double>(row) * kPitch, 0}});
    }
  }

  Item AddRevisions(const wchar_t* file_name, const wchar_t* name, int count, cad_host::ModelFile model) {
    const std::filesystem::path file = m_folder / file_name;
    for (int revision = 1; revision <= count; ++revision) {
      model.revision = revision;
      cad_host::WriteModelFile(file.wstring(), model);
      m_vault.Import(file, kDesigner, name, revision == 1 ? L"" : L"Dimensions corrected");
    }
    return *m_vault.FindByFileName(file_name);
  }

  void AddUse(const Item& user, const wchar_t* used) {
    m_vault.AddUse(user.number, m_vault.FindByFileName(used)->number);
  }

  Vault& m_vault;
  std::filesystem::path m_folder;
};

void AddMaterials(Vault& vault) {
  for (const auto& [name, group, steel] :
       {std::tuple{L"Hexagon bolt M8\u00d740, A2", L"Fasteners", L"A2-70"},
        std::tuple{L"Hexagon nut M8, A2", L"Fasteners", L"A2-70"},
        std::tuple{L"Flat bar 40\u00d75", L"Profiles", L"S235JR"},
        std::tuple{L"\u4e0d\u9508\u94a2\u677f 2 mm", L"\u677f\u91d1", L"06Cr19Ni10"}}) {
    const plm_vault::Material material = vault.CreateMaterial(
        name, group, {{L"Description", name}, {L"Material", steel}, {L"Supplier", L"Nordstahl"}}, kDesigner);
    vault.KeepMaterial(material.number);
  }
  vault.CreateMaterial(L"Rubber foot, soft", L"Other", {{L"Description", L"Rubber foot, soft"}}, kDesigner);
}

void AddWork(Vault& vault) {
  const auto number = [&vault](const wchar_t* file) { return vault.FindByFileName(file)->number; };
  vault.SetState(number(L"plate.sldprt"), plm_vault::ItemState::kReleased);
  vault.SetState(number(L"washer-m8.sldprt"), plm_vault::ItemState::kReleased);
  vault.CheckOut(number(L"rail-600.sldprt"), L"muller");
  vault.CheckOut(number(L"cover.sldprt"), kDesigner);
  vault.StartWorkflow(L"review", L"Check the frame's feet", kDesigner,
                      {number(L"frame.sldasm"), number(L"foot.sldprt")}, L"muller");
  vault.StartWorkflow(L"change", L"\u66f4\u6539\u652f\u67b6\u539a\u5ea6", kDesigner,
                      {number(L"\u652f\u67b6.sldprt")}, L"wang");
}

}  // namespace

Vault MakeSampleVault(const std::filesystem::path& folder) {
  Vault vault = Vault::Create(folder);
  for (const plm_vault::User& user :
       {plm_vault::User{L"kim", L"Kim Lindqvist"}, plm_vault::User{L"muller", L"Jonas M\u00fcller"},
        plm_vault::User{L"wang", L"\u738b\u6653\u660e"}}) {
    vault.AddUser(user);
  }
  SampleMaker maker(vault);
  for (const SampleModel& part : SampleParts()) maker.AddPart(part);
  for (const SampleAssembly& assembly : SampleAssemblies()) maker.AddAssembly(assembly);
  for (const SampleDrawing& drawing : SampleDrawings()) maker.AddDrawing(drawing);
  AddMaterials(vault);
  AddWork(vault);
  return vault;
}

}  // namespace plm_models
