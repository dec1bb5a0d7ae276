// The NMEA page: KML tracks of receiver logs, or plainer text cut out of
// them (NMEA lines, chosen GGA sentences, split parts), all beside the log.
#pragma once

#include <array>
#include <string>

#include "frame/file_slot.h"
#include "frame/page.h"

namespace tarnlog {

inline constexpr std::size_t kNemaSlotCount = 100;

struct NemaFileSlot : FileSlotPaths {
  int colour = 0;
  int dataType = 1;  // list position plus 1
  int board = 1;     // "Kestrix" 1 ... "SiWeiTuXin" 5
};

// What a data type value makes, and how (list position plus 1).
struct NemaDataType {
  const char* text;
  bool withRange;       // BuildRangeMixLog, else BuildPositionMixLog
  const char* message;  // the message name handed to the builder
  int kmlType;
  bool thinned;  // the frequency is passed; 0 otherwise
};
const NemaDataType& DataTypeOfValue(int value);

class Nema : public Page {
 public:
  Nema(PageParent& parent, PageHost& host);
  void Process() override;

  // The Open action's part for one chosen file.
  void AddFile(const std::string& path);
  void DeleteOneItem();
  void DeleteAllItem();

  ChoiceField boardType;
  CheckField kml;
  ChoiceField color;
  ChoiceField dataType;
  TextField lineWidth;
  TextField frequency;
  CheckField crc;
  CheckField nemaCrc;
  CheckField nema;
  CheckField gga;
  CheckField ggaE4;
  CheckField ggaE5;
  CheckField ggaE45;
  TextField startTime;
  TextField endTime;
  CheckField split;
  ChoiceField splitType;  // "ByFixedString", "ByFixedTimePeriod"
  TextField fixedString;
  ChoiceField period;
  TextField filePath;  // the path of the file added last
  TableField files;
  ActionField open;
  ActionField deleteOne;
  ActionField deleteAll;
  ActionField process;

  const std::array<NemaFileSlot, kNemaSlotCount>& Slots() const { return slots_; }
  int FileCount() const { return count_; }
  int SplitTypeValue() const { return splitTypeValue_; }

 protected:
  bool TakeModeWord(const CommandLine& commandLine, std::string_view word) override;

 private:
  void OpenFiles();
  void StoreInNextAndSelected(int NemaFileSlot::*member, int value);
  bool RunSplit();
  bool RunGetData();
  void RunKml();
  void Finish();

  std::array<NemaFileSlot, kNemaSlotCount> slots_{};
  int count_ = 0;
  int splitTypeValue_ = 0;
};

}  // namespace tarnlog
