// What the dynamic page writes for each pair: the kind words of
// DynamicDataProcess.exe's command line, duration.txt and the pair's script.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tarnlog {

// The entries of the three kind lists, as shown.
extern const std::vector<std::string> kDynamicPosEntries;
extern const std::vector<std::string> kDynamicVelEntries;
extern const std::vector<std::string> kDynamicAttEntries;

// The word the tool takes for a list index, with its trailing blank. Three
// rows carry another word than the list's own ("Fixed-gga" gives "gga ",
// "All-gga" "sban ", the attitude "none" "codeangle "); an index off the
// list gives "auto ".
std::string_view DynamicPosWord(int index);
std::string_view DynamicVelWord(int index);
std::string_view DynamicAttWord(int index);

// The two time limits the tool reads from duration.txt, as typed.
struct DurationLimits {
  std::string fromWeek;
  std::string fromSeconds;
  std::string toWeek;
  std::string toSeconds;
};

// duration.txt, written in binary mode: "%d,%.3lf\n" for "From" and "to".
std::string DurationText(const DurationLimits& limits);

struct DynamicPairScript {
  std::string drive;
  std::string pairFolder;
  std::string referencePath;
  std::string sourcePath;
  int posKind = 0;
  int velKind = 0;
  int attKind = 0;
  int pairNumber = 1;  // from 1
};

// RTKDPlot<stamp>.bat in its "\n" form: the reference stands first on the
// tool's line, and the attitude word's blank and "%s %d" put two blanks
// before the pair number.
std::string DynamicPairScriptText(const DynamicPairScript& script);

}  // namespace tarnlog
