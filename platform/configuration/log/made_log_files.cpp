#include "CFileHelper.h"
#include "configuration/log_files.h"
#include "file_access.h"

void MadeLogFiles::MakeFolder(const std::wstring& folder) { CFileHelper::CreateFolder(folder, false); }

DWORD MadeLogFiles::TryToOpen(const std::wstring& path) { return OpenToAppend(path, OPEN_ALWAYS); }
