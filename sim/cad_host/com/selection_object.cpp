#include "selection_object.h"

#include "component_object.h"

namespace cad_host {
namespace {

constexpr long kPointCoordinates = 3;

/// The selection `index`, counted from 1; null if there is none. The simulated host selects without marks, so
/// the mark of a query is ignored.
const Selection* FindSelection(const Document& document, long index) {
  if (index < 1 || static_cast<std::size_t>(index) > document.selection.size()) return nullptr;
  return &document.selection[static_cast<std::size_t>(index) - 1];
}

}  // namespace

STDMETHODIMP SelectionObject::GetSelectedObject6(long Index, long Mark, IDispatch** retval) {
  return Call(L"ISelectionMgr::GetSelectedObject6", {In(Index), In(Mark), Out(retval)},
              [&](Document& document) {
                const Selection* const selection = FindSelection(document, Index);
                if (!selection) return S_OK;
                if (selection->component) {
                  *retval = ObjectFor<ComponentObject>(SharedServices(), selection->component);
                } else {
                  *retval = ObjectFor<FaceObject>(SharedServices(), GetState());
                }
                return S_OK;
              });
}

STDMETHODIMP SelectionObject::IGetSelectionPoint2(long Index, long Mark, double* retval) {
  return Call(L"ISelectionMgr::IGetSelectionPoint2", {In(Index), In(Mark), Out(retval, kPointCoordinates)},
              [&](Document& document) {
                const Selection* const selection = FindSelection(document, Index);
                if (!selection) return E_FAIL;
                retval[0] = selection->point.x;
                retval[1] = selection->point.y;
                retval[2] = selection->point.z;
                return S_OK;
              });
}

}  // namespace cad_host
