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
struct PlmAnswer;

/// The one object of the add-in. The host creates it, connects and disconnects it through ISwAddin, and
/// calls the methods of ISolidWorksAddIn by name when the user picks an item of the menu or toolbar.
///
/// All calls come on the host's user-interface thread. The class is spread over one .cpp file per
/// concern. Its methods let exceptions go; the guards that the host holds (module/guards.h) end them.
class CSolidWorksAddIn : public ISolidWorksAddIn, public ISwAddin {
 public:
  using Interfaces = InterfaceList<ISolidWorksAddIn, ISwAddin>;

  CSolidWorksAddIn();
  CSolidWorksAddIn(const CSolidWorksAddIn&) = delete;
  CSolidWorksAddIn& operator=(const CSolidWorksAddIn&) = delete;
  virtual ~CSolidWorksAddIn();

  /// @name IDispatch (solidworks_add_in.cpp)
  STDMETHODIMP GetTypeInfoCount(UINT* count) override;
  STDMETHODIMP GetTypeInfo(UINT index, LCID locale, ITypeInfo** info) override;
  STDMETHODIMP GetIDsOfNames(REFIID iid, LPOLESTR* names, UINT count, LCID locale, DISPID* ids) override;
  STDMETHODIMP Invoke(DISPID id, REFIID iid, LCID locale, WORD flags, DISPPARAMS* parameters, VARIANT* result,
                      EXCEPINFO* exception, UINT* bad_argument) override;

  /// @name ISwAddin (connection.cpp)
  /// Connects to the host and builds the command interface.
  /// @return S_OK always.
  /// @throws after one line in the log, if the host pointer is null, View.json is faulty or the add-in is
  ///         connected already.
  STDMETHODIMP ConnectToSW(IDispatch* ThisSW, long Cookie, VARIANT_BOOL* IsConnected) override;
  /// Removes everything that ConnectToSW added to the host, and logs out.
  /// @return S_OK always; `IsDisconnected` says whether the event sink could be unadvised.
  STDMETHODIMP DisconnectFromSW(VARIANT_BOOL* IsDisconnected) override;

  /// @name Login (login.cpp)
  STDMETHODIMP PlmLogin() override;
  STDMETHODIMP PlmLogOut() override;

  /// @name Files that the user chose in the PLM client (data_selector.cpp)
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
  /// @return whether the host opened it; if not, this was logged and shown in a message box.
  bool OpenFilePath(const std::wstring& path);
  /// The full path of the active document, if there is one and its file exists.
  /// @return whether `path` was set; if not, it is unchanged.
  bool GetCurrentFilePath(std::wstring& path);
  /// Inserts the part or assembly at `path` into the active assembly, at the point that the user picked
  /// (insert_component.cpp). A failure is logged or shown in a message box.
  /// @throws _com_error E_POINTER if the host returns no selection manager.
  void InsertChildFile(const std::wstring& path);
  /// Lets the host replace the selected component by the file at `path` (replace_component.cpp).
  /// @return whether it did; if not, this was logged and shown in a message box.
  /// @throws _com_error E_POINTER if no document is open; the host's code if the query for the assembly fails
  ///         with anything but E_NOINTERFACE.
  bool ReplaceCurrentFile(const std::wstring& path);
  /// Replaces the selected component's file with the downloaded file (cover_component.cpp).
  /// @return false after a failure that was logged and shown to the user.
  /// @throws like ReplaceCurrentFile.
  bool ReplaceCurrentFileByCovering(const std::wstring& download_path);
  /// Moves a component's file to the backup folder and copies the download to its place (swap_file.cpp).
  /// @return 0, or a platform code after a log line. A failure does not undo the move: the old file stays in
  ///         the backup folder. The download always stays where it is.
  static long SwapFile(const std::wstring& component_folder, const std::wstring& component_name,
                       const std::wstring& download_folder, const std::wstring& download_name,
                       const std::wstring& backup_folder);

  /// @name Properties (property_reader.cpp, property_writer.cpp)
  /// Adds the raw text of each property of the active document to `json`.
  /// @return S_OK, also without a document; the host's code if a call fails, which ends the reading.
  HRESULT GetAttributes(const std::shared_ptr<CJsonObject>& json);
  /// Adds the resolved value of each property of `document` to `json`; a property that cannot be read is
  /// skipped.
  /// @return the result of the last step: a failed property is reported only if it is the last one.
  /// @throws _com_error E_POINTER for a null document.
  HRESULT GetCustomProperty(const IModelDoc2Ptr& document, const std::shared_ptr<CJsonObject>& json);
  /// Writes the members of `json` into the properties of the active document with the same names, and shows
  /// the user a message when done.
  /// @return S_OK, also without a document; the host's code if a call fails, which ends the writing.
  HRESULT PutAttributes(const std::shared_ptr<CJsonObject>& json);

 private:
  // connection.cpp
  void Connect(IDispatch* host, long cookie);

  // command_interface.cpp
  /// @return the path of View.json.
  std::wstring BuildCommandInterface();
  void BuildMenu(const std::wstring& view_file);

  // plm_commands.cpp
  void RequireInvoker() const;
  PlmAnswer SendCommand(const wchar_t* command, std::wstring request = {},
                        const CZALCommandOptions& options = {});
  std::wstring LoginText() const;

  // login.cpp
  void LogOut(const CZALCommandOptions& options);
  void LogOutBeforeDisconnect();
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
  // Shared by all invokers of this object: if the host connects the add-in again while a command waits, the
  // new invoker must not start a second command within the first. Not one flag for the module, because
  // another add-in object may wait for its own client.
  const CZALCmdInvoker::BusyFlag m_commandWaits = std::make_shared<std::atomic<bool>>(false);
  std::atomic<bool> m_loggedIn = false;
  std::shared_ptr<CDrawingHelper> m_drawingHelper;
  std::shared_ptr<CJsonObject> m_loginResult;
  std::mutex m_loginMutex;
  std::condition_variable m_loginChanged;

  std::wstring m_currentFilePath;
  std::map<std::wstring, int> m_documentTypes;  // by lower-case file extension
};
