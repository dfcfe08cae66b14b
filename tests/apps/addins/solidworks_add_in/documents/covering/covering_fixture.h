/// @file An assembly with a selected component, and a download that is to cover the component's file.
#pragma once

#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "add_in_fixture.h"

/// The component's files lie in the folder "prj", the downloads in "dl". Every model file that a test makes
/// has a label by which Files() knows its content again.
class CoveringTest : public AddInTest {
 protected:
  /// Texts of the message boxes.
  static constexpr const wchar_t* kFailed = L"Model replacement failed.";
  static constexpr const wchar_t* kNotSupported = L"The Current Model does not Support Replacement";
  static constexpr const wchar_t* kIsOpening = L"File is opening!";

  CoveringTest();

  /// Writes a model file with a revision of its own; folders are made. @return its full path.
  std::wstring Put(const std::wstring& name, const std::wstring& label);

  /// Connects, logs in, opens an assembly and puts the file `name` into it; the component is selected.
  void Assemble(const std::wstring& name);

  /// Puts one more instance into the assembly, not selected.
  std::shared_ptr<cad_host::Component> AddComponent(const std::wstring& name);

  /// The user picks the paths in the data selector, to cover the component with.
  cad_host::PickResult Cover(const std::vector<std::wstring>& paths);

  /// The same in a case that fails with one message box of the text, which comes before any log line.
  void CoverTold(const std::wstring& path, const std::wstring& box);

  /// What lies in "prj" and "dl": files as "dl\A.sldprt = LABEL", folders as "dl\temp\". Sorted.
  std::vector<std::wstring> Files() const;

  /// The revision of the content that a label stands for.
  long RevisionOf(const std::wstring& label) const { return m_revisions.at(label); }

  std::wstring At(const std::wstring& name) const { return m_folder.Path(name); }

  /// A line of the add-in's log from the covering command, and one from the exchange of files in it.
  static std::wstring CoverLine(int line, const std::wstring& text);
  static std::wstring SwapLine(int line, const std::wstring& text);

  std::shared_ptr<cad_host::Document> m_assembly;
  std::shared_ptr<cad_host::Component> m_component;

 private:
  std::size_t CoverLines() const;
  void ListFiles(const std::wstring& name, std::vector<std::wstring>& files) const;

  std::map<std::wstring, long> m_revisions;
  std::map<std::string, std::wstring> m_labels;  // by content
};

/// An answer of the data selector that names files to cover the component with.
std::string CoveringAnswer(const std::vector<std::wstring>& paths);
