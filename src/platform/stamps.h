// Time stamps that name result folders and scripts, from the local clock.
#pragma once

#include <ctime>
#include <string>

namespace tarnlog {

// "%02d%02d%02d": hour, minute, second. Made at page start and again when a
// page's list is cleared.
std::string TimeStamp();
std::string TimeStamp(const std::tm& local);

// The stamp of a headless run: the hour and four zeros ("140000"), so all
// runs within one hour share a folder name.
std::string HourStamp();
std::string HourStamp(const std::tm& local);

// "%04d%02d%02d%02d%02d%02d": year to second.
std::string FullStamp();
std::string FullStamp(const std::tm& local);

std::tm LocalNow();

}  // namespace tarnlog
