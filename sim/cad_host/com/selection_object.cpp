#include "selection_object.h"

#include <comdef.h>

#include "component_object.h"
#include "late_binding.h"

namespace cad_host {
namespace {

constexpr long kPointCoordinates = 3;
constexpr LateMethod kPoint = {.name = L"IGetSelectionPoint2", .id = 38, .arguments = 2};

/// An array of numbers as the result of a call by name.
HRESULT GiveArray(const double* numbers, long count, VARIANT* result) {
  if (!result) return S_OK;
  SAFEARRAY* const array = SafeArrayCreateVector(VT_R8, 0, static_cast<ULONG>(count));
  if (!array) return E_OUTOFMEMORY;
  for (long index = 0; index < count; ++index) {
    double number = numbers[index];
    SafeArrayPutElement(array, &index, &number);
  }
  result->vt = VT_ARRAY | VT_R8;
  result->parray = array;
  return S_OK;
}

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

STDMETHODIMP SelectionObject::GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) {
  return FindLate(*SharedServices(), kPoint, names, count, ids);
}

STDMETHODIMP SelectionObject::Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS* parameters, VARIANT* result,
                                     EXCEPINFO*, UINT*) try {
  const HRESULT checked = CheckLate(*SharedServices(), kPoint, id, parameters);
  if (FAILED(checked)) return checked;
  double point[kPointCoordinates] = {};
  const HRESULT found = IGetSelectionPoint2(LateNumber(*parameters, 0), LateNumber(*parameters, 1), point);
  return FAILED(found) ? found : GiveArray(point, kPointCoordinates, result);
} catch (const _com_error& error) {
  return error.Error();
}

}  // namespace cad_host
