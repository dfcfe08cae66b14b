#include "report.h"

#include <algorithm>
#include <utility>

namespace doctor {

const char* NameOf(Status status) {
  switch (status) {
    case Status::kOk:
      return "ok";
    case Status::kWarning:
      return "warning";
    case Status::kFailed:
      return "failed";
    case Status::kNotApplicable:
      return "not_applicable";
  }
  return "";
}

void Report::Ok(std::string id, std::wstring text) {
  m_findings.push_back({std::move(id), Status::kOk, std::move(text), {}});
}

void Report::Warn(std::string id, std::wstring text, std::wstring advice) {
  m_findings.push_back({std::move(id), Status::kWarning, std::move(text), std::move(advice)});
}

void Report::Fail(std::string id, std::wstring text, std::wstring advice) {
  m_findings.push_back({std::move(id), Status::kFailed, std::move(text), std::move(advice)});
}

void Report::PassOver(std::string id, std::wstring text) {
  m_findings.push_back({std::move(id), Status::kNotApplicable, std::move(text), {}});
}

std::size_t Report::Count(Status status) const {
  return static_cast<std::size_t>(std::ranges::count(m_findings, status, &Finding::status));
}

}  // namespace doctor
