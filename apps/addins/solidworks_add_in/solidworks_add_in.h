/// @file The add-in object.
#pragma once

#include <atomic>
#include <condition_variable>
#include <map>
#include <memory>
#include <mutex>
#include <string>

#include "CJsonObject.h"
#include "CZALCmdInvoker.h"
#include "connection/application_event_sink.h"
#include "diagnostics/log_sites.h"
#include "host/application.h"
#include "host/assembly.h"
#include "host/command_manager.h"
#include "host/model_doc.h"
#include "module/bitmap_handler.h"
#include "solidworks_add_in_h.h"

class CDrawingHelper;

/// The one object of the add-in. The host creates it, connects and disconnects it through ISwAddin, and
/// calls the methods of ISolidWorksAddIn by name when the user picks an item of the menu or toolbar.
///
/// All calls come on the host's user-interface thread. The class is spread over one .cpp file per
/// concern. A command method lets exceptions go; Invoke, through which the host calls, is where they end.
class CSolidWorksAddIn : public ISolidWorksAddIn, public ISwAddin {
 public:
  CSolidWorksAddIn();
  CSolidWorksAddIn(const CSolidWorksAddIn&) = delete;
  CSolidWorksAddIn& operator=(const CSolidWorksAddIn&) = delete;
  virtual ~CSolidWorksAddIn();

  /// The interfaces that the object answers; see ComObject.
  void* FindInterface(REFIID iid) noexcept { return FindInterfaceOf<ISolidWorksAddIn, ISwAddin>(this, iid); }

  /// @name IDispatch (solidworks_add_in.cpp)
  STDMETHODIMP GetTypeInfoCount(UINT* count) override;
  STDMETHODIMP GetTypeInfo(UINT index, LCID locale, ITypeInfo** info) override;
  STDMETHODIMP GetIDsOfNames(REFIID iid, LPOLESTR* names, UINT count, LCID locale, DISPID* ids) override;
  STDMETHODIMP Invoke(DISPID id, REFIID iid, LCID locale, WORD flags, DISPPARAMS* parameters, VARIANT* result,
                      EXCEPINFO* exception, UINT* bad_argument) override;

  /// @name ISwAddin (connection.cpp)
  /// Connects to the host and builds the command interface.
  /// @return S_OK always. What a null host pointer, View.json or a second connection raises leaves as an
  ///         exception, with one line in the log.
  STDMETHODIMP ConnectToSW(IDispatch* ThisSW, long Cookie, VARIANT_BOOL* IsConnected) override;
  /// Takes everything back that ConnectToSW put into the host, and logs out.
  /// @return S_OK always; `IsDisconnected` tells whether the event sink could be unadvised.
  STDMETHODIMP DisconnectFromSW(VARIANT_BOOL* IsDisconnected) override;

  /// @name Login (login.cpp)
  STDMETHODIMP PlmLogin() override;
  STDMETHODIMP PlmLogOut() override;

  /// @name Files chosen in the PLM client (data_selector.cpp)
  STDMETHODIMP OpenDataSelector() override;
  STDMETHODIMP PlmMyCheckOutList() override;
  STDMETHODIMP PlmQuery() override;
  STDMETHODIMP PlmTaskManage() override;

  /// @name Panels of the PLM client (panels.cpp)
  STDMETHODIMP PlmWf() override;
  STDMETHODIMP PlmCode() override;
  STDMETHODIMP PlmMyTempMaterial() override;

  /// @name Import (imports.cpp)
  STDMETHODIMP PlmImportCurrent() override;
  STDMETHODIMP PlmImportChangeItem() override;
  STDMETHODIMP PlmLotimport() override;

  /// @name Materials (materials.cpp)
  STDMETHODIMP PlmCreateMaterial() override;
  STDMETHODIMP PlmMaterialBackFill() override;

  /// @name Enablement (enablement.cpp): `status` becomes 1, enabled, or 0
  STDMETHODIMP EnablePlmLogin(long* status) override;
  STDMETHODIMP EnablePlmLogOut(long* status) override;
  STDMETHODIMP EnableOpenDataSelector(long* status) override;
  STDMETHODIMP EnablePlmMyCheckOutList(long* status) override;
  STDMETHODIMP EnablePlmWf(long* status) override;
  STDMETHODIMP EnablePlmCode(long* status) override;
  STDMETHODIMP EnablePlmQuery(long* status) override;
  STDMETHODIMP EnableImportCurrent(long* status) override;
  STDMETHODIMP EnableLotimport(long* status) override;
  STDMETHODIMP EnablePlmCreateMaterial(long* status) override;
  STDMETHODIMP EnablePlmMyTempMaterial(long* status) override;
  STDMETHODIMP EnablePlmTaskManage(long* status) override;
  STDMETHODIMP EnablePlmMaterialBackFill(long* status) override;
  STDMETHODIMP EnablePlmImportChangeItem(long* status) override;

  /// @name Documents (open_document.cpp)
  /// Opens the file at `path` in the host, silently, and makes it the active document.
  /// @return whether the host gave a document; where not, one log line and one message box have said so.
  bool OpenFilePath(const std::wstring& path);
  /// The full path of the active document, if there is one whose file exists.
  /// @return whether `path` was set; it stays untouched where not.
  bool GetCurrentFilePath(std::wstring& path);
  /// Inserts the part or assembly at `path` into the active assembly, at the point that the user picked
  /// (insert_component.cpp). What fails is told in the log or in a message box.
  /// @throws _com_error E_POINTER where the host gives no selection manager.
  void InsertChildFile(const std::wstring& path);
  /// Lets the host replace the selected component by the file at `path` (replace_component.cpp).
  /// @return whether it did; where not, one message box and one log line have said so.
  /// @throws _com_error E_POINTER where no document is open; the host's code where it fails to say whether
  ///         the active document is an assembly.
  bool ReplaceCurrentFile(const std::wstring& path);
  /// Puts the downloaded file in the place of the selected component's file (cover_component.cpp).
  /// @return false after a failure that the user and the log were told of.
  /// @throws as ReplaceCurrentFile.
  bool ReplaceCurrentFileByCovering(const std::wstring& download_path);
  /// Moves a component's file to the backup folder and copies the download to its place (swap_file.cpp).
  /// @return 0, or a platform code after a log line. Nothing is taken back on a failure: the old file then
  ///         lies in the backup folder. The download stays where it is in every case.
  static long SwapFile(const std::wstring& component_folder, const std::wstring& component_name,
                       const std::wstring& download_folder, const std::wstring& download_name,
                       const std::wstring& backup_folder);

  /// @name Properties (property_reader.cpp, property_writer.cpp)
  /// Adds the raw text of each property of the active document to `json`.
  /// @return S_OK, also without a document; the host's code where a call fails, which ends the reading.
  HRESULT GetAttributes(const std::shared_ptr<CJsonObject>& json);
  /// Adds the resolved value of each property of `document` to `json`; a property that cannot be read is
  /// passed over.
  /// @return the result of the last step, so a failure only where the last property could not be read.
  /// @throws _com_error E_POINTER for a null document.
  HRESULT GetCustomProperty(const IModelDoc2Ptr& document, const std::shared_ptr<CJsonObject>& json);
  /// Writes the members of `json` into those properties of the active document that have their names, and
  /// tells the user that it is done.
  /// @return S_OK, also without a document; the host's code where a call fails, which ends the writing.
  HRESULT PutAttributes(const std::shared_ptr<CJsonObject>& json);

 private:
  // connection.cpp
  void Connect(IDispatch* host, long cookie);

  // command_interface.cpp
  void BuildCommandInterface();
  void BuildMenu(const std::wstring& view_file);

  // plm_commands.cpp
  std::wstring SendCommand(const wchar_t* command, std::wstring request = {});
  std::wstring LoginText() const;

  // login.cpp
  void DropLoginResult();

  // data_selector.cpp
  void ApplyFileSelection(const wchar_t* command);
  void OpenFiles(const CJsonObject& selection);

  // imports.cpp
  HRESULT ImportActiveDocument(const wchar_t* command, const LogSite& failed);
  HRESULT SendImport(const wchar_t* command, std::wstring request, const LogSite& failed);

  // cover_component.cpp
  bool ReplaceByCopy(const IAssemblyDocPtr& assembly, const std::wstring& download_path,
                     const std::wstring& target);

  // materials.cpp
  HRESULT ExtractProperties(const std::shared_ptr<CJsonObject>& properties, IModelDoc2Ptr& document);

  ISldWorksPtr iSwApp;
  ICommandManagerPtr m_commandManager;
  IBitmapHandlerPtr m_bitmapHandler;
  long m_cookie = 0;
  long m_hostMajorVersion = 0;
  long m_hostMinorVersion = 0;
  ApplicationEventAdvice m_eventAdvice;

  std::shared_ptr<CZALCmdInvoker> m_invok;
  std::atomic<bool> m_loggedIn = false;
  std::shared_ptr<CDrawingHelper> m_drawingHelper;
  std::shared_ptr<CJsonObject> m_loginResult;
  std::mutex m_loginMutex;
  std::condition_variable m_loginChanged;

  std::wstring m_currentFilePath;
  std::map<std::wstring, int> m_documentTypes;  // by lower-case file extension
};
