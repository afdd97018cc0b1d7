#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace margindesk {

enum class THeaderAlignment { Left, Center, Right };

// One column description. A column list owns its descriptions; a data control borrows them from the list it
// is given and is given the list again after any change of it.
class TColumnInfo {
 public:
  // A new description, visible, with the options as initialised below. The caller puts it into the list that
  // owns it. width: pixels at 100 % scale; numeric: a floating-point value, right-aligned.
  static std::unique_ptr<TColumnInfo> AddColumn(std::int32_t id, std::string_view resourceKey,
                                                std::int32_t width, std::string_view key, bool numeric);

  std::int32_t FId = 0;
  std::string FResourceKey;
  std::string FKey;
  std::int32_t FWidth = 0;
  bool FNumeric = false;
  std::int32_t FMinWidth = 0;  // pixels; 0 for none
  THeaderAlignment FHeaderAlignment = THeaderAlignment::Center;
  bool FAllowEditing = false;
  bool FAllowSorting = true;
  bool FVisible = true;
};

using TColumnList = std::vector<std::unique_ptr<TColumnInfo>>;

}  // namespace margindesk
