#include "peers/nlohmann_peer.h"

#include <nlohmann/json.hpp>

std::size_t NlohmannRead(const std::string& text) {
  const auto document = nlohmann::json::parse(text);
  std::size_t size = 0;
  for (const char* list : {"OpenFile", "InsertFile", "ReplaceFileByCovering", "ReplaceFile"}) {
    for (const auto& element : document[list]) size += element.get_ref<const std::string&>().size();
  }
  return size;
}
