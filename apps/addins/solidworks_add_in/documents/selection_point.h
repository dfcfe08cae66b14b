/// @file The point where the user picked the first selected object.
#pragma once

#include "host/selection.h"

// Arguments of ISelectionMgr: the first selected object, whatever its mark.
inline constexpr long kFirstSelection = 1;
inline constexpr long kAnyMark = -1;

/// A point in the host's model units.
struct SelectionPoint {
  double x = 0;
  double y = 0;
  double z = 0;
};

/// Reads the pick point of the first selected object.
/// @return the host's result; `point` is set on success only.
/// @throws _com_error E_POINTER if `selection` is null.
inline HRESULT ReadSelectionPoint(const ISelectionMgrPtr& selection, SelectionPoint& point) {
  double coordinates[3] = {};
  const HRESULT result = selection->IGetSelectionPoint2(kFirstSelection, kAnyMark, coordinates);
  if (SUCCEEDED(result)) point = {coordinates[0], coordinates[1], coordinates[2]};
  return result;
}
