/// @file What the checks found.
#pragma once

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

namespace doctor {

enum class Status {
  kOk,
  kWarning,        ///< it works, but perhaps not as it was meant
  kFailed,         ///< something does not work
  kNotApplicable,  ///< there is nothing to check, or what is needed for it is missing
};

/// The status in words, "ok" or "not_applicable".
const char* NameOf(Status status);

/// The finding of one check. A check that finds several faults has one finding for each, all with its id.
struct Finding {
  std::string id;  ///< `AREA.NAME`, in ASCII
  Status status;
  std::wstring text;    ///< one sentence or two
  std::wstring advice;  ///< what to do; empty if there is nothing to do

  /// The part of the id before the dot.
  std::string Area() const { return id.substr(0, id.find('.')); }
};

/// The findings, in the order of the checks.
class Report {
 public:
  void Add(Finding finding) { m_findings.push_back(std::move(finding)); }
  void Ok(std::string id, std::wstring text);
  void Warn(std::string id, std::wstring text, std::wstring advice);
  void Fail(std::string id, std::wstring text, std::wstring advice);
  void PassOver(std::string id, std::wstring text);

  /// What is true in any case and answers the most frequent question. It ends the printed findings.
  void Conclude(std::wstring text) { m_conclusion = std::move(text); }

  const std::vector<Finding>& Findings() const { return m_findings; }
  const std::wstring& Conclusion() const { return m_conclusion; }

  std::size_t Count(Status status) const;

 private:
  std::vector<Finding> m_findings;
  std::wstring m_conclusion;
};

}  // namespace doctor
