// A program with the DLL's handler for exceptions that nothing catches, for terminate_handler_test.cpp.
#include <stdexcept>
#include <string_view>

int main(int count, char** arguments) {
  if (count > 1 && std::string_view(arguments[1]) == "number") throw 5;
  throw std::runtime_error("nobody catches this");
}
