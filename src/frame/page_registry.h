// The twelve pages: creation order and tab order are two different orders.
// CAuto is created before PVTProcess, while the tab "INS" stands before "AUTO".
#pragma once

#include <array>
#include <memory>
#include <string_view>

#include "frame/page.h"

namespace tarnlog {

struct PageRegistration {
  int tabIndex;
  std::string_view caption;
  std::string_view className;
  std::unique_ptr<Page> (*create)(PageParent& parent, PageHost& host);
};

inline constexpr std::size_t kPageCount = 12;

// In creation order.
const std::array<PageRegistration, kPageCount>& PageRegistry();

// The registration shown under a tab index, or nullptr outside 0 to 11.
const PageRegistration* RegistrationAtTab(int tabIndex);

}  // namespace tarnlog
