#include "journal_file.h"

#include <fstream>

#include "CStringHelper.h"
#include "cad_host/host_error.h"

namespace cad_host {

void WriteJournalFile(const std::wstring& path, const Journal& journal) {
  if (path.empty()) return;
  std::ofstream file(path.c_str(), std::ios::binary);
  file << CStringHelper::UnicodeToUTF8(journal.Text());
  file.close();
  if (!file) throw HostError(L"cannot write the journal " + path);
}

}  // namespace cad_host
