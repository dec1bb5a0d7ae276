#include "extract/extract_options.h"

#include <cstdio>

namespace tarnlog {
namespace {

struct Companion {
  TableId table;
  const char* name;
};

// One row per option. `values` texts follow the option and name its tables in
// the folder; an option with no values fixes its own file name.
struct OptionRow {
  char first;
  char second;  // 0 for the one-letter options
  int values;
  int outputs;
  TableId tables[2];
  const char* fixedName;
  Companion companions[2];
};

constexpr TableId kNone = TableId::kCount;

// In the order of the option flags, which is also the order the remaining
// tables open in.
constexpr OptionRow kOptions[] = {
    {'R',
     'P',
     1,
     1,
     {TableId::kRtkPos, kNone},
     nullptr,
     {{TableId::kTtff, "ttff.txt"}, {TableId::kRtkPosXY, "RtkPosXY.txt"}}},
    {'R', 'V', 1, 1, {TableId::kRtkVel, kNone}, nullptr, {}},
    {'R', 'D', 1, 1, {TableId::kRtkDop, kNone}, nullptr, {}},
    {'R', 'Q', 1, 1, {TableId::kRtkPos2, kNone}, nullptr, {}},
    {'R', 'W', 1, 1, {TableId::kRtkVel2, kNone}, nullptr, {}},
    {'R', 'E', 1, 1, {TableId::kRtkDop2, kNone}, nullptr, {}},
    {'R', 'X', 1, 1, {TableId::kRtkDopplerVel, kNone}, nullptr, {}},
    {'R', 'S', 1, 1, {TableId::kRefStation, kNone}, nullptr, {}},
    {'R',
     'I',
     1,
     3,
     {TableId::kRawImux, kNone},
     nullptr,
     {{TableId::kRawImuxC, "RawImuxC.txt"}, {TableId::kRawImuxP, "RawImuxP.txt"}}},
    {'R', 'M', 1, 1, {TableId::kRawImu, kNone}, nullptr, {}},
    {'M', 'P', 1, 1, {TableId::kMatch, kNone}, nullptr, {}},
    {'M', 'Q', 1, 1, {TableId::kMatch2, kNone}, nullptr, {}},
    {'M', 'H', 1, 1, {TableId::kMatchH, kNone}, nullptr, {}},
    {'B',
     'P',
     0,
     1,
     {TableId::kBestPos, kNone},
     "bestpos.txt",
     {{TableId::kBstPosXY, "BstPosXY.txt"}, {kNone, nullptr}}},
    {'B', 'V', 0, 1, {TableId::kBestVel, kNone}, "bestvel.txt", {}},
    {'B', 'X', 0, 1, {TableId::kBestXyz, kNone}, "bestxyz.txt", {}},
    {'B', 'G', 0, 1, {TableId::kBestGnss, kNone}, "bestgnss.txt", {}},
    {'B', '1', 0, 1, {TableId::kBestPos1, kNone}, "bestpos1.txt", {}},
    {'B', '2', 0, 1, {TableId::kBestPos2, kNone}, "bestpos2.txt", {}},
    {'B', '3', 0, 1, {TableId::kBestVel1, kNone}, "bestvel1.txt", {}},
    {'B', '4', 0, 1, {TableId::kBestVel2, kNone}, "bestvel2.txt", {}},
    {'P',
     'P',
     1,
     3,
     {TableId::kPsrPos, kNone},
     nullptr,
     {{TableId::kTpfInfo, "tpfinfo.txt"}, {TableId::kTsvNum, "tsvnum.txt"}}},
    {'P', 'V', 1, 1, {TableId::kPsrVel, kNone}, nullptr, {}},
    {'P', 'D', 1, 1, {TableId::kPsrDop, kNone}, nullptr, {}},
    {'P', '1', 1, 1, {TableId::kPsrPos2, kNone}, nullptr, {}},
    {'P', '2', 1, 1, {TableId::kPsrVel2, kNone}, nullptr, {}},
    {'P', '3', 1, 1, {TableId::kPsrDop2, kNone}, nullptr, {}},
    {'P', 'S', 2, 2, {TableId::kPerfstat, TableId::kPerfstatName}, nullptr, {}},
    {'T', 0, 1, 1, {TableId::kTime, kNone}, nullptr, {}},
    {'1', 0, 2, 2, {TableId::kRange, TableId::kFreqList}, nullptr, {}},
    {'2', 0, 2, 2, {TableId::kRangeH, TableId::kFreqhList}, nullptr, {}},
    {'G', 'G', 1, 1, {TableId::kGga, kNone}, nullptr, {}},
    {'G', 'R', 1, 1, {TableId::kRmc, kNone}, nullptr, {}},
    {'G', 'V', 1, 1, {TableId::kVtg, kNone}, nullptr, {}},
    {'G', 'N', 1, 1, {TableId::kNtr, kNone}, nullptr, {}},
    {'G', 'S', 1, 1, {TableId::kGns, kNone}, nullptr, {}},
    {'G', 'Y', 1, 1, {TableId::kGyoAcc, kNone}, nullptr, {}},
    {'D', 0, 1, 1, {TableId::kDrpva, kNone}, nullptr, {}},
    {'J', 0, 1, 1, {TableId::kPvtSol, kNone}, nullptr, {}},
    {'Z', 'P', 0, 1, {TableId::kTdifPdpPos, kNone}, "tdifpdppos.txt", {}},
    {'Z', 'V', 0, 1, {TableId::kTdifPdpVel, kNone}, "tdifpdpvel.txt", {}},
    {'Z', 'A', 0, 1, {TableId::kPppPos, kNone}, "ppppos.txt", {}},
    {'Z', 'D', 0, 1, {TableId::kPppDop, kNone}, "pppdop.txt", {}},
    {'C', 0, 1, 1, {TableId::kClkDt, kNone}, nullptr, {}},
    {'A', 'B', 0, 1, {TableId::kAlignBslnEnu, kNone}, "alignbslnenua.txt", {}},
    {'A', 'G', 0, 1, {TableId::kAgric, kNone}, "agric.txt", {}},
    {'o', 0, 0, 1, {TableId::kOdometer, kNone}, "Odometer.txt", {}},
    {'I', 'P', 0, 1, {TableId::kInspva, kNone}, "inspva.txt", {}},
    {'I', 'Q', 0, 1, {TableId::kInspvax, kNone}, "inspvax.txt", {}},
    {'K', 'S', 1, 1, {TableId::kKsxt, kNone}, nullptr, {}},
    {'S', '1', 0, 1, {TableId::kCanGear, kNone}, "cangear.txt", {}},
    {'S', '2', 0, 1, {TableId::kCanAngle, kNone}, "canangle.txt", {}},
    {'S', '3', 0, 1, {TableId::kCanSpeed, kNone}, "canspeed.txt", {}},
    {'S', '4', 0, 1, {TableId::kCorrImuData, kNone}, "corrimudata.txt", {}},
    {'S', '5', 0, 1, {TableId::kTimedWheelData, kNone}, "timedwheeldata.txt", {}},
    {'S', '6', 0, 1, {TableId::kDopErrorInfo, kNone}, "dop-ErrorInfo.txt", {}},
    {'S', '7', 0, 1, {TableId::kBslnXyz, kNone}, "bslnxyz.txt", {}},
    {'S', '8', 0, 1, {TableId::kImu2VelAttBias, kNone}, "IMU2VELATTBIAS.txt", {}},
    {'S', '9', 0, 1, {TableId::kRtkVelD, kNone}, "RtkvelD.txt", {}},
    {'S', 'a', 0, 1, {TableId::kRtk, kNone}, "RTK.txt", {}},
    {'E', 'G', 1, 1, {TableId::kGpsEphem, kNone}, nullptr, {}},
    {'E', 'B', 1, 1, {TableId::kBd2Ephem, kNone}, nullptr, {}},
    {'E', 'L', 1, 1, {TableId::kGloEphem, kNone}, nullptr, {}},
    // The value is ignored: the table is always event.txt of the default set.
    {'E', 'V', 1, 1, {kNone, kNone}, nullptr, {}},
    {'s', 0, 1, 1, {TableId::kSmallS, kNone}, nullptr, {}},
};

void CommandError() {
  std::fputs("*****command error\n", stdout);
}

const OptionRow* FindOption(char first, char second) {
  for (const OptionRow& row : kOptions) {
    if (row.first == first && (row.second == 0 || row.second == second)) return &row;
  }
  return nullptr;
}

bool HasTwoLetterOptions(char first) {
  for (const OptionRow& row : kOptions) {
    if (row.first == first && row.second != 0) return true;
  }
  return false;
}

void Name(ExtractOptions& options, TableId table, const std::string& path) {
  if (table == kNone) return;
  const auto index = static_cast<std::size_t>(table);
  options.wanted[index] = true;
  options.paths[index] = path;
}

void Apply(ExtractOptions& options, const OptionRow& row, int argc, char** argv, int i) {
  options.outputCount += row.outputs;
  for (int k = 0; k < row.values; ++k) {
    // Values are read one past argc, where the Static page's full vector
    // keeps the value of its last option, but never further: a command
    // line's vector ends there with its null.
    const int at = i + 1 + k;
    if (at > argc || argv[at] == nullptr) break;
    Name(options, row.tables[k], TablePath(options.outputFolder, argv[at]));
  }
  if (row.fixedName) Name(options, row.tables[0], TablePath(options.outputFolder, row.fixedName));
  for (const Companion& companion : row.companions) {
    if (companion.name)
      Name(options, companion.table, TablePath(options.outputFolder, companion.name));
  }
}

}  // namespace

std::string TablePath(const std::string& folder, const std::string& name) {
  return folder + "/" + name;
}

ExtractOptions ParseExtractOptions(int argc, char** argv) {
  ExtractOptions options;
  options.outputFolder = argc > 0 && argv[0] ? argv[0] : "";
  options.capturePath = argc > 2 && argv[2] ? argv[2] : "";
  for (int i = 1; i < argc; ++i) {
    const char* arg = argv[i];
    if (arg == nullptr || arg[0] != '-') continue;
    const char first = arg[1];
    const char second = first ? arg[2] : 0;
    if (first == 'i') continue;  // the input is always argv[2]
    if (!HasTwoLetterOptions(first)) {
      const OptionRow* row = FindOption(first, second);
      if (row) {
        Apply(options, *row, argc, argv, i);
      } else {
        CommandError();
      }
      continue;
    }
    const OptionRow* row = FindOption(first, second);
    if (row) {
      Apply(options, *row, argc, argv, i);
    } else if (first == 'E' || first == 'G' || first == 'K' || first == 'P') {
      CommandError();
    }
    // The K branch runs on into the Z branch: -KA also acts as -ZA.
    if (first == 'K') {
      if (const OptionRow* z = FindOption('Z', second)) Apply(options, *z, argc, argv, i);
    }
  }
  for (const OptionRow& row : kOptions) {
    for (TableId table : row.tables) {
      if (table != kNone && options.Wants(table)) options.optionOrder.push_back(table);
    }
    for (const Companion& companion : row.companions) {
      if (companion.name && options.Wants(companion.table)) {
        options.optionOrder.push_back(companion.table);
      }
    }
  }
  return options;
}

}  // namespace tarnlog
