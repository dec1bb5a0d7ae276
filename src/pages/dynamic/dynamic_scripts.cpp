#include "pages/dynamic/dynamic_scripts.h"

#include <array>
#include <cstdlib>

#include "platform/fast_format.h"
#include "platform/saturating.h"
#include "platform/script_text.h"

namespace tarnlog {
namespace {

struct KindRow {
  const char* entry;
  const char* word;
};

// The list entry and the tool's word of each kind, in list order.
constexpr std::array<KindRow, 16> kPosKinds{{{"auto", "auto "},
                                             {"matchedpos", "matchedpos "},
                                             {"rtkpos", "rtkpos "},
                                             {"bestpos", "bestpos "},
                                             {"psrpos", "psrpos "},
                                             {"Fixed-gga", "gga "},
                                             {"All-gga", "sban "},
                                             {"Drpva", "drpva "},
                                             {"ppppos", "ppppos "},
                                             {"INS", "INS "},
                                             {"inspva", "inspva "},
                                             {"inspvax", "inspvax "},
                                             {"inspvas", "inspvas "},
                                             {"ksxt", "ksxt "},
                                             {"BestPosNarrowInt", "BestPosNarrowInt "},
                                             {"none", "none "}}};

constexpr std::array<KindRow, 13> kVelKinds{{{"auto", "auto "},
                                             {"bestvel", "bestvel "},
                                             {"rtkvel", "rtkvel "},
                                             {"psrvel", "psrvel "},
                                             {"gnrmc", "gnrmc "},
                                             {"Drpva", "drpva "},
                                             {"inspva", "inspva "},
                                             {"rtkdopplervel", "rtkdopplervel "},
                                             {"inspvax", "inspvax "},
                                             {"inspvas", "inspvas "},
                                             {"ksxt", "ksxt "},
                                             {"none", "none "},
                                             {"Canspeed", "canspeed "}}};

constexpr std::array<KindRow, 9> kAttKinds{{{"auto", "auto "},
                                            {"inspva", "inspva "},
                                            {"drpva", "drpva "},
                                            {"heading", "heading "},
                                            {"rtkvel", "rtkvel "},
                                            {"psrvel", "psrvel "},
                                            {"inspvax", "inspvax "},
                                            {"inspvas", "inspvas "},
                                            {"none", "codeangle "}}};

template <std::size_t N>
std::vector<std::string> Entries(const std::array<KindRow, N>& rows) {
  std::vector<std::string> entries;
  for (const KindRow& row : rows)
    entries.emplace_back(row.entry);
  return entries;
}

template <std::size_t N>
std::string_view Word(const std::array<KindRow, N>& rows, int index) {
  if (index < 0 || index >= static_cast<int>(N)) return "auto ";
  return rows[static_cast<std::size_t>(index)].word;
}

}  // namespace

const std::vector<std::string> kDynamicPosEntries = Entries(kPosKinds);
const std::vector<std::string> kDynamicVelEntries = Entries(kVelKinds);
const std::vector<std::string> kDynamicAttEntries = Entries(kAttKinds);

std::string_view DynamicPosWord(int index) {
  return Word(kPosKinds, index);
}
std::string_view DynamicVelWord(int index) {
  return Word(kVelKinds, index);
}
std::string_view DynamicAttWord(int index) {
  return Word(kAttKinds, index);
}

std::string DurationText(const DurationLimits& limits) {
  return FormatString("%d,%.3lf\n%d,%.3lf\n", TextToInt(limits.fromWeek),
                      std::atof(limits.fromSeconds.c_str()), TextToInt(limits.toWeek),
                      std::atof(limits.toSeconds.c_str()));
}

std::string DynamicPairScriptText(const DynamicPairScript& script) {
  const std::string enter = EnterFolderLine(script.pairFolder);
  return script.drive + "\n" + enter + "DynamicDataProcess.exe " + Quoted(script.referencePath) +
         " " + Quoted(script.sourcePath) + " " + std::string(DynamicPosWord(script.posKind)) +
         std::string(DynamicVelWord(script.velKind)) + std::string(DynamicAttWord(script.attKind)) +
         " " + std::to_string(script.pairNumber) + "\n" + enter + "move *.fig .\\FIG\nexit\n";
}

}  // namespace tarnlog
