#include "platform/stamps.h"

#include <cstdio>

namespace tarnlog {

std::tm LocalNow() {
  const std::time_t now = std::time(nullptr);
  std::tm local{};
  localtime_r(&now, &local);
  return local;
}

std::string TimeStamp() {
  return TimeStamp(LocalNow());
}

std::string TimeStamp(const std::tm& local) {
  char text[40];
  std::snprintf(text, sizeof text, "%02d%02d%02d", local.tm_hour, local.tm_min, local.tm_sec);
  return text;
}

std::string HourStamp() {
  return HourStamp(LocalNow());
}

std::string HourStamp(const std::tm& local) {
  char text[32];
  std::snprintf(text, sizeof text, "%02d0000", local.tm_hour);
  return text;
}

std::string FullStamp() {
  return FullStamp(LocalNow());
}

std::string FullStamp(const std::tm& local) {
  char text[80];
  std::snprintf(text, sizeof text, "%04d%02d%02d%02d%02d%02d", local.tm_year + 1900,
                local.tm_mon + 1, local.tm_mday, local.tm_hour, local.tm_min, local.tm_sec);
  return text;
}

}  // namespace tarnlog
