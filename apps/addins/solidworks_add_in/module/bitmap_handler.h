/// @file Bitmap resources as files.
#pragma once

#include <windows.h>

#include <comdef.h>

#include <deque>
#include <string>

#include "com_object.h"
#include "guards.h"
#include "solidworks_add_in_h.h"

_COM_SMARTPTR_TYPEDEF(IBitmapHandler, __uuidof(IBitmapHandler));

/// Writes bitmap resources of the add-in to temporary files. Dispose and the destructor delete the files.
class CBitmapHandler : public IBitmapHandler {
 public:
  using Interfaces = InterfaceList<IBitmapHandler>;

  CBitmapHandler() = default;
  CBitmapHandler(const CBitmapHandler&) = delete;
  CBitmapHandler& operator=(const CBitmapHandler&) = delete;
  virtual ~CBitmapHandler();

  STDMETHODIMP GetTypeInfoCount(UINT* count) override;
  STDMETHODIMP GetTypeInfo(UINT index, LCID locale, ITypeInfo** info) override;
  STDMETHODIMP GetIDsOfNames(REFIID iid, LPOLESTR* names, UINT count, LCID locale, DISPID* ids) override;
  STDMETHODIMP Invoke(DISPID id, REFIID iid, LCID locale, WORD flags, DISPPARAMS* parameters, VARIANT* result,
                      EXCEPINFO* exception, UINT* bad_argument) override;

  /// Writes the bitmap `resID` (only the low 16 bits count) to a new file in the temporary folder.
  /// @param retval the file's full path; null after a failure.
  /// @return S_OK, or E_FAIL if there is no such bitmap or the file cannot be written. Then an empty file may
  ///         be left, which Dispose does not delete.
  /// @throws _com_error E_OUTOFMEMORY if the returned path cannot be allocated.
  STDMETHODIMP CreateBitmapFileFromResource(LONG resID, BSTR* retval) override;

  /// Deletes all files created so far; ignores files that cannot be deleted. @return S_OK.
  STDMETHODIMP Dispose() override;

 private:
  std::deque<std::wstring> m_files;
};
