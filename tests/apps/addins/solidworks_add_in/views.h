/// @file View.json files for tests.
#pragma once

#include <string>

/// A View.json with `title` and `count` items: "Item 0", "Item 1" and so on, with the callback PlmLogin.
inline std::string ViewWithItems(int count, const std::string& title = "PLM") {
  std::string items;
  for (int index = 0; index < count; ++index) {
    const std::string number = std::to_string(index);
    items += (index == 0 ? "" : ",") + std::string(R"({"name":"Item )") + number + R"(","ToolTip":"tip )" +
             number + R"(","Hint":"hint )" + number +
             R"(","CallbackFunction":"PlmLogin","EnableMethod":"EnablePlmLogin","ImageListIndex":)" + number +
             "}";
  }
  return R"({"name":")" + title + R"(","Menu":[)" + items + "]}";
}
