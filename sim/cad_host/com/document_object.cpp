#include "document_object.h"

#include "base/system_path.h"
#include "component_object.h"
#include "documents/assembly.h"
#include "host_state.h"
#include "model_doc_object.h"

namespace cad_host {
namespace {

class AssemblyObject : public ModelDocObject<IAssemblyDoc> {
 public:
  using ModelDocObject::ModelDocObject;

  STDMETHODIMP AddComponent5(BSTR CompName, long ConfigOption, BSTR NewConfigName,
                             VARIANT_BOOL UseConfigForPartReferences, BSTR ExistingConfigName, double X,
                             double Y, double Z, IComponent2** retval) override {
    return Call(L"IAssemblyDoc::AddComponent5",
                {In(CompName), In(ConfigOption), In(NewConfigName), In(UseConfigForPartReferences),
                 In(ExistingConfigName), In(X), In(Y), In(Z), Out(retval)},
                [&](Document& assembly) {
                  Documents& documents = Session()->documents;
                  const auto model = documents.Find(FullPath(Text(CompName)));
                  if (!model || model->Type() == swDocDRAWING) {
                    SharedServices()->journal.Note(L"no open part or assembly: " + Text(CompName));
                    return S_OK;
                  }
                  const auto added = AddComponent(documents, assembly, model->path, {X, Y, Z});
                  *retval = ObjectFor<ComponentObject>(SharedServices(), added);
                  return S_OK;
                });
  }

  STDMETHODIMP ReplaceComponents2(BSTR FileName, BSTR ConfigName, VARIANT_BOOL ReplaceAllInstance,
                                  long UseConfigChoice, VARIANT_BOOL ReAttachMates,
                                  VARIANT_BOOL* retval) override {
    return Call(L"IAssemblyDoc::ReplaceComponents2",
                {In(FileName), In(ConfigName), In(ReplaceAllInstance), In(UseConfigChoice), In(ReAttachMates),
                 Out(retval)},
                [&](Document& assembly) {
                  const Replacement replacement = {Text(FileName), ReplaceAllInstance != VARIANT_FALSE,
                                                   ReAttachMates != VARIANT_FALSE,
                                                   SharedServices()->quirks.IsOn(Quirk::kSameNameRefused)};
                  const std::wstring refusal = ReplaceSelected(Session()->documents, assembly, replacement);
                  if (!refusal.empty()) SharedServices()->journal.Note(L"nothing replaced: " + refusal);
                  Give(retval, refusal.empty());
                  return S_OK;
                });
  }
};

/// A view of a model. Add-ins call no methods of it.
class ViewObject : public ComObject<Document, IDispatch> {
 public:
  using ComObject::ComObject;

  std::wstring Describe() const override { return L"a drawing view"; }
};

class DrawingObject : public ModelDocObject<IDrawingDoc> {
 public:
  using ModelDocObject::ModelDocObject;

  STDMETHODIMP CreateDrawViewFromModelView3(BSTR ModelName, BSTR ViewName, double LocX, double LocY,
                                            double LocZ, IView** retval) override {
    return Call(L"IDrawingDoc::CreateDrawViewFromModelView3",
                {In(ModelName), In(ViewName), In(LocX), In(LocY), In(LocZ), Out(retval)},
                [&](Document& drawing) {
                  const auto model = Session()->documents.Find(FullPath(Text(ModelName)));
                  if (!model || model->Type() == swDocDRAWING) {
                    SharedServices()->journal.Note(L"no open part or assembly: " + Text(ModelName));
                    return S_OK;
                  }
                  drawing.model.views.push_back({model->path, Text(ViewName), {LocX, LocY, LocZ}});
                  drawing.changed = true;
                  // IView declares nothing beyond IDispatch here.
                  *retval = reinterpret_cast<IView*>(
                      static_cast<IDispatch*>(ObjectFor<ViewObject>(SharedServices(), GetState())));
                  return S_OK;
                });
  }
};

}  // namespace

IModelDoc2* ServeDocument(const std::shared_ptr<Services>& services,
                          const std::shared_ptr<Document>& document) {
  switch (document->Type()) {
    case swDocASSEMBLY:
      return ObjectFor<AssemblyObject>(services, document);
    case swDocDRAWING:
      return ObjectFor<DrawingObject>(services, document);
    default:
      return ObjectFor<PartObject>(services, document);
  }
}

}  // namespace cad_host
