#include "pages/nmea/nema_page.h"

#include <cstdio>
#include <cstdlib>

#include "pages/nmea/get_data.h"
#include "pages/nmea/log_splitter.h"
#include "pages/nmea/mix_log.h"
#include "platform/folders.h"
#include "platform/paths.h"
#include "platform/processes.h"
#include "platform/saturating.h"

namespace tarnlog {
namespace {

const std::vector<std::string> kBoardTexts{"Kestrix", "Novatel", "Trimble", "SiNan", "SiWeiTuXin"};
const std::vector<std::string> kColourTexts{"Green", "Orange", "Yellow", "Blue",  "Red",  "Teal",
                                            "Pink",  "Gray",   "Brown",  "Black", "White"};

constexpr NemaDataType kDataTypes[] = {
    {"GGA+RANGE", true, "GGA", 0, true},
    {"OnlyGGA", false, "GGA", 1, true},
    {"RTKPOS+RANGE", true, "RTKPOS", 2, false},
    {"MatchedPos+RANGE", true, "MATCHEDPOS", 3, false},
    {"PSRPOS+RANGE", true, "PSRPOS", 4, false},
    {"BESTPOS+RANGE", true, "BESTPOS", 5, false},
    {"RTKPOS", false, "RTKPOS", 6, true},
    {"PSRPOS", false, "PSRPOS", 7, true},
    {"BESTPOS", false, "BESTPOS", 8, true},
    {"MATCHEDPOS", false, "MATCHEDPOS", 9, true},
    {"DRPVA", false, "DRPVA", 10, true},
    {"PosT", false, "PosT", 11, true},
    {"INSPVA", false, "INSPVA", 12, true},
    {"INSPVAX", false, "INSPVAX", 13, true},
    {"INSPVAS", false, "INSPVAS", 13, true},
    {"PPPPOS", false, "PPPPOS", 13, true},
    // The BESTGNSSPOS entry reads PPPPOS messages: the table stands so.
    {"BESTGNSSPOS", false, "PPPPOS", 13, true},
    {"BESTNAV+RANGE", true, "BESTNAV", 14, false},
    {"BESTNAV", false, "BESTNAV", 15, false},
    {"SPPNAV+RANGE", true, "SPPNAV", 16, false},
    {"SPPNAV", false, "SPPNAV", 17, false},
};
constexpr int kDataTypeCount = static_cast<int>(std::size(kDataTypes));

const std::vector<std::string> kPeriodTexts{"1 hour",  "2 hours", "3 hours",  "4 hours",
                                            "6 hours", "8 hours", "12 hours", "24 hours"};
constexpr int kPeriodSeconds[] = {3600, 7200, 10800, 14400, 21600, 28800, 43200, 86400};
constexpr int kOutOfRangePeriod = 21600;

constexpr int kOpenRefusedAt = 99;
constexpr std::size_t kSlotsClearedByDeleteAll = 17;
constexpr int kLatestTime = 1000000;

std::vector<std::string> DataTypeTexts() {
  std::vector<std::string> texts;
  for (const NemaDataType& type : kDataTypes)
    texts.emplace_back(type.text);
  return texts;
}

int BoardValue(const ChoiceField& list) {
  return list.selected >= 0 && list.selected < static_cast<int>(kBoardTexts.size())
             ? list.selected + 1
             : 1;
}

bool OutOfWindow(const TextField& field) {
  if (field.text.empty()) return false;
  const int value = TextToInt(field.text);
  return value < 0 || value > kLatestTime;
}

}  // namespace

const NemaDataType& DataTypeOfValue(int value) {
  return value >= 1 && value <= kDataTypeCount ? kDataTypes[value - 1] : kDataTypes[0];
}

Nema::Nema(PageParent& parent, PageHost& host)
    : Page(parent, host, "Nema"),
      boardType(*this, "BoardType", kBoardTexts),
      kml(*this, "KML", true),
      color(*this, "Color", kColourTexts),
      dataType(*this, "DataType", DataTypeTexts()),
      lineWidth(*this, "LineWidth", "2"),
      frequency(*this, "Frequency(Hz)", "0"),
      crc(*this, "CRC", true),
      nemaCrc(*this, "NEMACRC", true),
      nema(*this, "NEMA", false),
      gga(*this, "GGA", false),
      ggaE4(*this, "GGA_E4", false),
      ggaE5(*this, "GGA_E5", false),
      ggaE45(*this, "GGA_E45", false),
      startTime(*this, "StartTime"),
      endTime(*this, "EndTime"),
      split(*this, "SPLIT", false),
      splitType(*this, "Split Type", {"ByFixedString", "ByFixedTimePeriod"}, -1, {},
                ChoiceStyle::kRadio),
      fixedString(*this, "FixedString", "[COM1]"),
      period(*this, "Period", kPeriodTexts),
      filePath(*this, "FilePath"),
      files(*this, "Files", {"ID", "NAME", "COLOR", "DADA TYPE", "BOARD TYPE", "FILE PATH"}),
      open(*this, "Open", [this] { OpenFiles(); }),
      deleteOne(*this, "Delete One Item", [this] { DeleteOneItem(); }),
      deleteAll(*this, "Delete All Item", [this] { DeleteAllItem(); }),
      process(*this, "Process", [this] { Process(); }) {
  color.onChanged = [this] { StoreInNextAndSelected(&NemaFileSlot::colour, color.selected); };
  dataType.onChanged = [this] {
    StoreInNextAndSelected(&NemaFileSlot::dataType, dataType.selected + 1);
  };
  boardType.onChanged = [this] {
    StoreInNextAndSelected(&NemaFileSlot::board, BoardValue(boardType));
  };
  splitType.onChanged = [this] {
    split.checked = true;
    splitTypeValue_ = splitType.selected + 1;
  };
}

void Nema::StoreInNextAndSelected(int NemaFileSlot::*member, int value) {
  if (count_ < static_cast<int>(kNemaSlotCount)) slots_[count_].*member = value;
  if (files.selected >= 0 && files.selected < count_) slots_[files.selected].*member = value;
}

void Nema::OpenFiles() {
  if (count_ >= kOpenRefusedAt) {
    Message("Two Many Files had chosed! The Max file number is 16!");
    return;
  }
  for (const std::string& path : Host().ChooseFiles(filters::kAsciiFiles))
    AddFile(path);
}

void Nema::AddFile(const std::string& path) {
  if (count_ >= static_cast<int>(kNemaSlotCount)) return;
  NemaFileSlot& slot = slots_[count_];
  static_cast<FileSlotPaths&>(slot) = FileSlotPathsOf(path);
  // Successive files of one run get different colours.
  slot.colour = count_ >= 10 ? count_ - 10 : count_;
  color.Select(slot.colour);
  slot.dataType = dataType.selected + 1;
  slot.board = BoardValue(boardType);
  const int shownColour =
      slot.colour >= 0 && slot.colour < static_cast<int>(kColourTexts.size()) ? slot.colour : 0;
  files.rows.push_back({std::to_string(count_ + 1), slot.name, kColourTexts[shownColour],
                        DataTypeOfValue(slot.dataType).text, kBoardTexts[slot.board - 1],
                        slot.path});
  filePath.text = slot.path;
  ++count_;
}

void Nema::DeleteOneItem() {
  if (count_ == 0) {
    Message("Please Choose ASCII File Firstly!");
    return;
  }
  const int selected = files.selected;
  if (selected < 0 || selected >= count_) {
    Message("No item was selected!");
    return;
  }
  for (int i = selected; i + 1 < count_; ++i)
    slots_[i] = slots_[i + 1];
  slots_[count_ - 1] = NemaFileSlot{};
  files.rows.erase(files.rows.begin() + selected);
  files.selected = -1;
  --count_;
}

void Nema::DeleteAllItem() {
  files.rows.clear();
  files.selected = -1;
  // Only the lowest 17 slots are cleared; the count is what matters.
  for (std::size_t i = 0; i < kSlotsClearedByDeleteAll; ++i)
    slots_[i] = NemaFileSlot{};
  filePath.text.clear();
  count_ = 0;
  color.Select(0);
  dataType.Select(0);
  boardType.Select(0);
}

void Nema::Finish() {
  SetStatus("Status:Finished");
  filePath.text.clear();
  DeleteAllItem();
}

void Nema::Process() {
  SetStatus("Status:Processing");
  if (OutOfWindow(startTime)) {
    Message("Please check the start time");
    return;
  }
  if (OutOfWindow(endTime)) {
    Message("Please check the end time");
    return;
  }
  if (splitType.selected >= 0) splitTypeValue_ = splitType.selected + 1;
  const bool getData =
      nema.checked || gga.checked || ggaE4.checked || ggaE5.checked || ggaE45.checked;
  if (!kml.checked && !getData && !split.checked) {
    Message("Please Set Processing KML Or NEMA Data Or Split File!");
    Finish();
    // A run from the command line with nothing ticked ends itself.
    if (batchFlag != 0) SelfTerminate();
    return;
  }
  if (kml.checked) {
    RunKml();
    return;
  }
  if (!RunSplit() || !RunGetData()) return;
  Message("Get Data Successfully!");
  Finish();
}

bool Nema::RunSplit() {
  if (!split.checked) return true;
  if (splitTypeValue_ == 0) {
    Message("Please select split type!");
    return false;
  }
  if (splitTypeValue_ == 1) {
    const std::string& marker = fixedString.text;
    if (marker.empty()) {
      Message("Please Make Sure The Fixed String!");
      return false;
    }
    if (marker == " " || marker == "," || marker == ";") {
      Message("It does not support symbol, you should input one string!");
      return false;
    }
  }
  const int seconds =
      period.selected >= 0 && period.selected < static_cast<int>(std::size(kPeriodSeconds))
          ? kPeriodSeconds[period.selected]
          : kOutOfRangePeriod;
  for (int i = 0; i < count_; ++i) {
    const std::string& path = slots_[i].path;
    const int result = splitTypeValue_ == 1 ? SplitByFixedString(path, fixedString.text)
                                            : SplitByFixedPeriod(path, seconds);
    if (result != 1) {
      Message("Fail To Process " + path);
      return false;
    }
  }
  return true;
}

bool Nema::RunGetData() {
  const int start = startTime.text.empty() ? 0 : TextToInt(startTime.text);
  const int end = endTime.text.empty() ? kLatestTime : TextToInt(endTime.text);
  for (GetDataKind kind : kGetDataKinds) {
    if (!Find<CheckField>(GetDataCaption(kind))->checked) continue;
    for (int i = 0; i < count_; ++i) {
      const std::string& path = slots_[i].path;
      const int result = GetData(kind, path, start, end, nemaCrc.checked);
      if (result != kGetDataSucceeded) {
        Message("Fail To Process " + path + "On The Line" + std::to_string(result));
        return false;
      }
    }
  }
  return true;
}

void Nema::RunKml() {
  const int width = TextToInt(lineWidth.text);
  const int hertz = TextToInt(frequency.text);
  const std::string icons = JoinPath(StartFolder(), "KML");
  for (int i = 0; i < count_; ++i) {
    const NemaFileSlot& slot = slots_[i];
    const std::string number = std::to_string(i + 1);
    SetStatus("Status: Generate KML File of  the " + number + " File...");
    CopyFolderTree(icons, slot.folder + "KestrixKML");
    const NemaDataType& type = DataTypeOfValue(slot.dataType);
    const auto build = type.withRange ? BuildRangeMixLog : BuildPositionMixLog;
    const int result = build(slot.path, type.message, slot.colour, type.kmlType, width, slot.board,
                             crc.checked, nemaCrc.checked, type.thinned ? hertz : 0);
    if (result == 0) {
      Message("Fail To Process " + slot.path);
      continue;
    }
    SetStatus("Status: Generate KML File of the " + number + " File Finished!");
  }
  if (batchFlag != 0) {
    std::fflush(stdout);
    std::exit(0);
  }
  Message("Generate KML File Successfully!");
  Finish();
}

bool Nema::TakeModeWord(const CommandLine& commandLine, std::string_view word) {
  if (word != "kml") return false;
  NemaFileSlot& slot = slots_[0];
  static_cast<FileSlotPaths&>(slot) = FileSlotPathsOf(commandLine.Arg(1));
  slot.dataType = ArgToInt(commandLine.Arg(2));
  slot.colour = ArgToInt(commandLine.Arg(3));
  lineWidth.text = commandLine.Arg(4);
  filePath.text = slot.path;
  files.rows = {{"1", slot.name, "", "", "", slot.path}};
  count_ = 1;
  batchFlag = 1;
  Process();
  return true;
}

}  // namespace tarnlog
