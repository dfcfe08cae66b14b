/// @file An assembly with a selected component, and downloads that cover the component's file.
#pragma once

#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <optional>
#include <string>

#include "add_in_fixture.h"
#include "log_line.h"
#include "result_codes.h"
#include "shown_texts.h"

/// The component's files are in the folder "prj", the downloads in "dl". Every model file that a test makes
/// has a label, by which Files() shows its content.
class CoveringFixture : public AddInFixture {
 protected:
  CoveringFixture();

  /// Writes a model file, with a revision of its own for each label, and its folders. @return its full path.
  std::wstring Put(const std::wstring& name, const std::wstring& label);

  /// Connects, logs in, opens an assembly, adds the file `name` as a component and selects it.
  void Assemble(const std::wstring& name);

  /// Adds one more instance to the assembly; it is not selected.
  std::shared_ptr<cad_host::Component> AddComponent(const std::wstring& name);

  /// The user picks files in the data selector that cover the component.
  cad_host::PickResult Cover(const Texts& paths);

  /// Covers with a file and fails: one message box is shown before the command logs a line.
  void CoverExpectingBox(const std::wstring& path, const std::wstring& box);

  /// The contents of "prj" and "dl": files as "dl\A.sldprt = LABEL", folders as "dl\temp\". Sorted.
  Texts Files() const;

  /// The revision of the files with this label.
  long RevisionOf(const std::wstring& label) const { return m_revisions.at(label); }

  std::wstring At(const std::wstring& name) const { return m_folder.Path(name); }

  // Lines of the log.

  /// An error line of the covering command, and one of the exchange of files in it.
  static std::wstring CoverLine(int line, const std::wstring& text, std::optional<HRESULT> code = {}) {
    return ErrorLine(line, L"ReplaceCurrentFileByCovering", text, code);
  }
  static std::wstring SwapLine(int line, const std::wstring& text, HRESULT code) {
    return ErrorLine(line, L"SwapFile", text, code);
  }

  /// The backup folder `path` was not created.
  static std::wstring NoBackupFolderLine(const std::wstring& path) {
    return CoverLine(1049, L"CFileHelper::CreateFolder:" + path, hr::kBackupFolderNotMade);
  }

  /// The download was not copied beside the component's file; `error` is the system's.
  static std::wstring NotCopiedLine(const std::wstring& from, const std::wstring& to, int error) {
    return CoverLine(1082, CopyFailed(from, to, error), hr::kCopyFailed);
  }

  /// The component's file was not moved to the backup.
  static std::wstring NotMovedLine(const std::wstring& from, const std::wstring& to, int error) {
    return SwapLine(
        1519,
        L"MoveFileEx from " + from + L" to " + to + L" failed. Get Last Error: " + std::to_wstring(error),
        hr::kMoveToBackupFailed);
  }

  /// The files were not exchanged; the line of the exchange comes before this one.
  static std::wstring SwapFailedLine(const std::wstring& component, const std::wstring& download,
                                     HRESULT code) {
    return CoverLine(
        1120, L"SwapFile failed. Current model file: " + component + L", download file: " + download, code);
  }

  /// The text of a failed copy.
  static std::wstring CopyFailed(const std::wstring& from, const std::wstring& to, int error) {
    return L"CopyFile from " + from + L" to " + to + L" failed. Get Last Error: " + std::to_wstring(error);
  }

  std::shared_ptr<cad_host::Document> m_assembly;
  std::shared_ptr<cad_host::Component> m_component;

 private:
  std::size_t CoverLines() const;
  std::wstring LabelOf(const std::wstring& path) const;

  std::map<std::wstring, long> m_revisions;
  std::map<std::string, std::wstring> m_labels;  // by content
};
