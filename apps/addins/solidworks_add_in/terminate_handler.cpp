// What runs when an exception has no handler, or leaves a function that must not throw. The standard
// library's own handler prints the exception's name in readable form, and the code for this is 50 KB of the
// DLL.
#include <cxxabi.h>

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <typeinfo>

/// Writes the exception's name, as the compiler has it, and its text to the standard error stream, and ends
/// the process.
void __gnu_cxx::__verbose_terminate_handler() {
  const std::type_info* const type = abi::__cxa_current_exception_type();
  std::fprintf(stderr, "solidworks_add_in.dll: exception without a handler: %s\n",
               type ? type->name() : "none");
  if (const std::exception_ptr exception = std::current_exception()) {
    try {
      std::rethrow_exception(exception);
    } catch (const std::exception& error) {
      std::fprintf(stderr, "what: %s\n", error.what());
    } catch (...) {  // has no text
    }
  }
  std::abort();
}
