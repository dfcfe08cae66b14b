/// @file A host process that is killed while it covers a component.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "covering_fixture.h"

/// The program's first argument for RunKilledSession, and the exit code of a killed process.
inline constexpr const wchar_t* kCoverAndDie = L"--cover-and-die";
inline constexpr unsigned kKilled = 99;

/// A moment at which a process is killed.
struct End {
  enum class Place {
    kBefore,  ///< the call is reached, and does nothing
    kAfter,   ///< the call is done, and the add-in has not yet got its result
    kInside,  ///< a copy has written some of its bytes
  };

  Place place = Place::kBefore;
  std::wstring
      call{};      ///< a method of the host, such as IComponent2::GetPathName, or a function of the system
  int number = 1;  ///< which one of these calls, counted from 1; of a copy, how many tenths are written

  /// In words.
  std::wstring Text() const;
};

/// An assembly whose first component a download covers.
class CoveringSession : public CoveringFixture {
 protected:
  /// Opens the assembly, selects its first component, covers it with the download, and closes all documents.
  /// The add-in must be connected. @return whether the command succeeded without a message box.
  bool CoverFirst(const std::wstring& assembly, const std::wstring& download);

  /// Does the same, and notes the calls, beginning with the one for the active document, by which covering
  /// begins.
  /// @return two ends, before and after, for each call of the host and of those functions of the system that
  ///         can fail.
  std::vector<End> RecordEnds(const std::wstring& assembly, const std::wstring& download);

  /// Does the same, and is killed at `end`. @return as CoverFirst, if the end does not come.
  bool CoverAndDie(const std::wstring& assembly, const std::wstring& download, const End& end);

 private:
  /// From the beginning of covering on, calls `begun`.
  void WhenCoveringBegins(std::function<void()> begun);
};

/// Connects a host, covers and dies, as the arguments of a child process say: those of KillArguments.
/// @return 0 if the command succeeded before it reached the end, 1 if it failed before; does not return
///         otherwise.
int RunKilledSession(const std::vector<std::wstring>& arguments);

/// The arguments for a child process that is killed at `end`.
std::vector<std::wstring> KillArguments(const std::wstring& assembly, const std::wstring& download,
                                        const End& end);
