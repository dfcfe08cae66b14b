// Replaces the selected component with another file, using the host's own replacement.
#include "replacement.h"
#include "solidworks_add_in.h"

bool CSolidWorksAddIn::ReplaceCurrentFile(const std::wstring& path) {
  namespace site = log_site::replace;
  const ActiveAssembly active =
      GetActiveAssembly(iSwApp, {site::kActiveDocument, site::kNoAssemblyType, site::kAssembly});
  if (!active) return false;
  return ReplaceSelectedComponent(iSwApp, m_hostMajorVersion, active.assembly, path, path, site::kReplace);
}
