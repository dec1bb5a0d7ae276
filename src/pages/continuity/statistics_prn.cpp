#include "pages/continuity/statistics_prn.h"

#include <cctype>
#include <climits>
#include <cmath>
#include <cstdlib>

#include "platform/files.h"
#include "platform/host.h"
#include "platform/paths.h"

namespace tarnlog {
namespace {

constexpr double kSecondsOfWeek = 604800.0;
constexpr double kTimeStep = 0.001;

// The fields as fscanf reads them, one after another over the whole text.
class FieldReader {
 public:
  explicit FieldReader(const std::string& text)
      : cursor_(text.c_str()), end_(text.c_str() + text.size()) {}

  bool AtEnd() {
    SkipBlanks();
    return cursor_ >= end_;
  }
  bool Int(int& value) {
    SkipBlanks();
    char* stop = nullptr;
    const long long read = std::strtoll(cursor_, &stop, 10);
    if (stop == cursor_) return false;
    cursor_ = stop;
    value = static_cast<int>(read < INT_MIN ? INT_MIN : read > INT_MAX ? INT_MAX : read);
    return true;
  }
  bool Real(double& value) {
    SkipBlanks();
    char* stop = nullptr;
    value = std::strtod(cursor_, &stop);
    if (stop == cursor_) return false;
    cursor_ = stop;
    return true;
  }

 private:
  void SkipBlanks() {
    while (cursor_ < end_ && std::isspace(static_cast<unsigned char>(*cursor_)))
      ++cursor_;
  }

  const char* cursor_;
  const char* end_;
};

}  // namespace

bool WriteStatisticsPrn(const std::string& resultPath, PageHost& host) {
  std::string text;
  if (!ReadWholeFile(resultPath, text)) return false;
  OutFile out;
  out.Open(JoinPath(FolderOf(resultPath), "StatisticsPRN.txt"), FileMode::kText);

  FieldReader reader(text);
  int previousWeek = 0;
  double previousSeconds = 0.0;
  while (!reader.AtEnd()) {
    int week = 0;
    double seconds = 0.0;
    double difference = 0.0;
    int prn = 0;
    const char* failure = nullptr;
    if (!reader.Int(week)) {
      failure = "Read week error!";
    } else if (!reader.Real(seconds)) {
      failure = "Read weeksec error!";
    } else if (!reader.Real(difference)) {
      failure = "Read diff time error!";
    } else if (!reader.Int(prn)) {
      failure = "Read PRN error!";
    }
    if (failure) {
      host.ShowMessage(failure);
      break;
    }
    // The first line steps from week 0, second 0, so it is always kept.
    const double step =
        static_cast<double>(week - static_cast<long long>(previousWeek)) * kSecondsOfWeek +
        seconds - previousSeconds;
    if (std::fabs(step) > kTimeStep) out.Printf("%6d %12.4lf %6d\n", week, seconds, prn);
    previousWeek = week;
    previousSeconds = seconds;
  }
  out.Close();
  host.ShowMessage(kStatisticsFinished);
  return true;
}

}  // namespace tarnlog
