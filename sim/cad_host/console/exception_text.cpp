#include "exception_text.h"

#include <comdef.h>

#include <exception>

#include "CStringHelper.h"
#include "CZALException.h"
#include "cad_host/host_error.h"

namespace cad_host {

std::wstring TextOfException() {
  try {
    throw;
  } catch (const HostError& error) {
    return error.Message();
  } catch (const CZALException& error) {
    return L"left by an exception: " + error.GetErrorMessage() + L" (" + ResultText(error.GetErrorCode()) +
           L")";
  } catch (const _com_error& error) {
    return L"left by a COM error: " + ResultText(error.Error());
  } catch (const std::exception& error) {
    return L"left by an exception: " + CStringHelper::UTF8ToUnicode(error.what());
  } catch (...) {
    return L"left by an exception of an unknown kind";
  }
}

}  // namespace cad_host
