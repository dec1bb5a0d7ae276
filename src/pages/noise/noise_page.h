// The noise page: observation noise of receiver boards by double
// differencing, from binary captures taken in pairs or singly, and the
// production (MFG) test of a batch of boards from one folder of captures.
#pragma once

#include <array>
#include <chrono>
#include <cstdint>
#include <string>
#include <vector>

#include "frame/coordinate_fields.h"
#include "frame/page.h"
#include "pages/noise/control_file.h"
#include "pages/noise/noise_boards.h"

namespace tarnlog {

inline constexpr std::size_t kNoiseBinaryRows = 17;
inline constexpr std::size_t kNoisePairs = 32;

inline constexpr std::string_view kNoisePlotterMissing =
    "NoisePlot.exe doesn't exist in the same folder with Tarnlog.exe";
inline constexpr std::string_view kNoiseChooseBinaryFirst = "Please Choose Binary File Firstly!";
inline constexpr std::string_view kNoiseNoItemSelected = "No item was selected!";
inline constexpr std::string_view kNoiseSameFile = "You could not select the same file";
inline constexpr std::string_view kNoiseSetDdFirst = "Please Set DD Files Firstly!";
inline constexpr std::string_view kNoiseGpsPrn = "Please Check GPS Ref PRN , 1~37";
inline constexpr std::string_view kNoiseGloPrn = "Please Check GLONASS PRN, 38~69";
inline constexpr std::string_view kNoiseBd2Prn = "Please Check BD2 Ref PRN, 161-223";
inline constexpr std::string_view kMfgChooseFolderFirst = "Please Choose MFG Folder Firstly!";
inline constexpr std::string_view kMfgTooManyCaptures =
    "Make sure no more than 100 binary files in the path!";
inline constexpr std::string_view kMfgNoCaptures =
    "No binary files in the choosing folder, please check the path!";
inline constexpr std::string_view kMfgOneCapture =
    "Only 1 binary file in the choosing folder, make sure more than 2!";
inline constexpr std::string_view kMfgCommandLineError = "Command line error!";
inline constexpr std::size_t kMfgMaxCaptures = 100;

// A row of the binary list. The board index stays with its row number when
// a row above it is deleted, as the texts move up without it.
struct NoiseBinaryRow {
  std::string path;
  std::string displayName;  // without folder and extension
  int board = 0;
};

// A base and rover pair of the DD list.
struct NoisePair {
  std::array<std::string, 2> names;  // display names of base and rover
  std::string basePath;
  std::string roverPath;
  std::string name;    // base + "-" + rover, or the file's name in self-noise
  std::string folder;  // below the output folder
};

// A threshold field as the plotter is handed it, "%.2lf".
std::string FormatThreshold(const TextField& field);

class GenNoise : public Page {
 public:
  GenNoise(PageParent& parent, PageHost& host);
  // Refuses to set anything up without the plotter in EXE; otherwise the
  // defaults, the real-value lists, and the "-N" automatic test.
  void Start() override;
  // The noise pipeline over the pairs, or over the files in self-noise.
  void Process() override;
  // Both real-value lists are refilled and put back on entry 0.
  void RefreshOnTabChoice() override;

  // The add-file action for one chosen path.
  void AddBinaryFile(const std::string& path);
  void OnOpenBinaryFile();
  void OnBoardTypeChanged();
  // A double-click on the binary list: its selected rows join the DD list.
  void OnBinaryListDoubleClick();
  void DeleteOneBinary();
  void DeleteAllBinary();
  void DeleteOneDD();
  void DeleteAllDD();
  void ClearAll();
  void OnRefCoorChanged();
  void OnInitCoorChanged();

  // The production test over the folder of captures.
  void MFGProcess();
  // The same run started by "-N": the captures are those the preparation
  // step made in `folder`; `golden` is the prepared golden capture or empty.
  void MFGProcessFromCommandLine(const std::string& folder, const std::string& golden);
  // One production pair through the pipeline, one after the other.
  void RunMFGPair(const std::string& folder, const std::string& base, const std::string& rover,
                  const MfgBoard& board);
  // The repair of the result tables in the MFG folder.
  void TrimResultTables();

  // control.txt at `path` with the page's fields; the span fields take the
  // values it computes. A production run and the "Time" case start from
  // `firstEpoch`, the first epoch of the pair's rover (week 0, second 0
  // when it has none).
  void WriteControlFile(const std::string& path, char systemMode, GpsWeekSecond firstEpoch = {});

  ChoiceField boardType;
  ChoiceField scene;
  ChoiceField noiseType;
  TextField elevation;
  TextField lockTime;
  TextField cn0;
  ChoiceField refCoor;
  CoordinateFields refCoordinates;
  CheckField refXyz;
  ChoiceField initCoor;
  CoordinateFields initCoordinates;
  CheckField initXyz;
  TextField startWeek;
  TextField startSecond;
  TextField endWeek;
  TextField endSecond;
  TextField cutTimeHour;
  CheckField timeFromRover;
  TextField interval;
  TextField gpsPrn;
  TextField gloPrn;
  TextField bd2Prn;
  CheckField brR;
  CheckField rhR;
  CheckField onlyRh;
  ChoiceField baseStation;
  CheckField sbasIrnss;
  CheckField onlyTxt;
  CheckField delTxt;
  CheckField delFig;
  CheckField report;
  TextField savePath;
  ActionField chooseSavePath;
  TextField binaryFile;
  ActionField openBinaryFile;
  TableField binaryFiles;
  TableField ddFiles;
  ActionField deleteOneBinary;
  ActionField deleteAllBinary;
  ActionField deleteOneDd;
  ActionField deleteAllDd;
  ActionField clearAll;
  ActionField process;
  TextField mfgFolder;
  ActionField openMfgFolder;
  TextField goldenFile;
  ActionField chooseGoldenFile;
  TextField subSatNum;
  TextField subObsNum;
  TextField subMaxCno;
  TextField subTotalCno;
  TextField clockDrift;
  CheckField ins;
  ActionField mfgProcess;

  // What a run reads besides the controls.
  const std::array<NoiseBinaryRow, kNoiseBinaryRows>& BinaryRows() const { return binaries_; }
  int BinaryCount() const { return binaryCount_; }
  int SelectionCount() const { return selectionCount_; }
  const std::array<std::uint8_t, 2 * kNoisePairs>& Selections() const { return selections_; }
  const std::array<NoisePair, kNoisePairs>& Pairs() const { return pairs_; }
  const std::string& Tag() const { return tag_; }
  void SetTag(std::string tag) { tag_ = std::move(tag); }
  bool MfgFlag() const { return mfgFlag_; }
  const std::string& ImuState() const { return imuState_; }
  const std::string& ResultPath() const { return resultPath_; }
  // The production run's whole-second offset of the start time.
  int startOffset = 0;
  // The pause after each processor start, so the runs overlap; tests shorten it.
  std::chrono::milliseconds startSpacing{1000};

 protected:
  // The "MFG" row of the mode words: it never matches, since the word is
  // compared in capitals with a lower-cased argument, but its positions
  // fill the production fields and press "MFGProcess".
  bool TakeModeWord(const CommandLine& commandLine, std::string_view word) override;

 private:
  ControlFileSettings ControlSettings() const;
  SpanFields ReadSpanFields() const;
  void ShowSpanFields(const SpanFields& span);
  void ConvertXyzInPlace();
  bool CheckProcess();
  std::string PairCapture(int pair, int member) const;
  void CleanUpPair(const std::string& pairFolder);
  void RunMfgCaptures(const std::vector<std::string>& captures, const std::string& golden);

  std::array<NoiseBinaryRow, kNoiseBinaryRows> binaries_{};
  int binaryCount_ = 0;  // an 8-bit count in the system
  std::string lastExtension_;
  std::array<std::uint8_t, 2 * kNoisePairs> selections_{};
  int selectionCount_ = 0;
  std::array<NoisePair, kNoisePairs> pairs_{};
  std::string tag_;
  bool ready_ = false;  // the plotter was found at the start
  bool mfgFlag_ = false;
  std::string imuState_ = "0";
  std::string resultPath_;
  std::string mfgTestLog_;
  double mfgLimit_ = 0.0;
};

}  // namespace tarnlog
