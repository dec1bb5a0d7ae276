#include "pages/noise/noise_page.h"

#include <cstdio>
#include <cstdlib>

#include "frame/file_slot.h"
#include "pages/noise/capture_scan.h"
#include "platform/capture_converter.h"
#include "platform/folders.h"
#include "platform/paths.h"
#include "platform/saturating.h"
#include "platform/stamps.h"

namespace tarnlog {
namespace {

std::vector<std::string> BoardTexts() {
  std::vector<std::string> texts;
  for (const NoiseBoard& board : kNoiseBoards)
    texts.emplace_back(board.text);
  return texts;
}

std::vector<std::string> NoiseTypeTexts() {
  return {kNoiseTypes.begin(), kNoiseTypes.end()};
}

double FieldDouble(const TextField& field) {
  return std::atof(field.text.c_str());
}

}  // namespace

std::string FormatThreshold(const TextField& field) {
  char text[64];
  std::snprintf(text, sizeof text, "%.2lf", FieldDouble(field));
  return text;
}

GenNoise::GenNoise(PageParent& parent, PageHost& host)
    : Page(parent, host, "GenNoise"),
      boardType(*this, "BoardType", BoardTexts(), 0),
      scene(*this, "Scene", {"Static", "Dynamic"}, 0, {}, ChoiceStyle::kRadio),
      noiseType(*this, "NoiseType", NoiseTypeTexts(), 0),
      elevation(*this, "Elevation", "5"),
      lockTime(*this, "LockTime", "-10", "Threshold"),
      cn0(*this, "CN0", "20", "Threshold"),
      refCoor(*this, "RefCoor"),
      refCoordinates(*this, "RefCoor"),
      refXyz(*this, "xyz", false, "RefCoor"),
      initCoor(*this, "InitCoor"),
      initCoordinates(*this, "InitCoor"),
      initXyz(*this, "xyz", false, "InitCoor"),
      startWeek(*this, "Week", "", "SetStartTime"),
      startSecond(*this, "Second", "", "SetStartTime"),
      endWeek(*this, "Week", "", "SetEndTime"),
      endSecond(*this, "Second", "", "SetEndTime"),
      cutTimeHour(*this, "hour", "0", "CutTime"),
      timeFromRover(*this, "Time", false, "Mutual-Noise"),
      interval(*this, "Interval/ms", "10", "SetInterval"),
      gpsPrn(*this, "GPS", "0", "SetRefPRN"),
      gloPrn(*this, "GLO", "0", "SetRefPRN"),
      bd2Prn(*this, "BD2", "0", "SetRefPRN"),
      brR(*this, "BR-R", false, "Self-Noise"),
      rhR(*this, "RH-R", false, "Self-Noise"),
      onlyRh(*this, "OnlyRH", false, "Mutual-Noise"),
      baseStation(*this, "BaseStation", {"KESTRIX", "TRIMBLE"}, 0, {}, ChoiceStyle::kRadio),
      sbasIrnss(*this, "SBAS/IRNSS"),
      onlyTxt(*this, "OnlyTXT"),
      delTxt(*this, "Del TXT"),
      delFig(*this, "Del FIG"),
      report(*this, "Report"),
      savePath(*this, "Save path"),
      chooseSavePath(*this, "Save path",
                     [this] {
                       if (auto folder = Host().ChooseFolder(kSelectFolderTitle))
                         savePath.text = *folder;
                     }),
      binaryFile(*this, "Binary File"),
      openBinaryFile(*this, "Open Binary File", [this] { OnOpenBinaryFile(); }),
      binaryFiles(*this, "Binary Files", {"ID", "NAME"}),
      ddFiles(*this, "DD Files", {"ID", "NAME"}),
      deleteOneBinary(*this, "Delete One Binary", [this] { DeleteOneBinary(); }),
      deleteAllBinary(*this, "Delete All Binary", [this] { DeleteAllBinary(); }),
      deleteOneDd(*this, "Delete One DD", [this] { DeleteOneDD(); }),
      deleteAllDd(*this, "Delete All DD", [this] { DeleteAllDD(); }),
      clearAll(*this, "Clear All", [this] { ClearAll(); }),
      process(*this, "Process", [this] { Process(); }),
      mfgFolder(*this, "MFG Folder"),
      openMfgFolder(*this, "Open Folder",
                    [this] {
                      if (auto folder = Host().ChooseFolder(kSelectFolderTitle))
                        mfgFolder.text = *folder;
                    }),
      goldenFile(*this, "Golden File"),
      chooseGoldenFile(*this, "Golden File",
                       [this] {
                         if (auto path = Host().ChooseFile(filters::kBinFiles))
                           goldenFile.text = *path;
                       }),
      subSatNum(*this, "SubSatNum", "10"),
      subObsNum(*this, "SubObsNum", "20"),
      subMaxCno(*this, "SubMaxCNO", "2"),
      subTotalCno(*this, "SubTotalCNO", "0.5"),
      clockDrift(*this, "ClockDrift", "1"),
      ins(*this, "INS"),
      mfgProcess(*this, "MFGProcess", [this] { MFGProcess(); }) {
  boardType.onChanged = [this] { OnBoardTypeChanged(); };
  refCoor.onChanged = [this] { OnRefCoorChanged(); };
  initCoor.onChanged = [this] { OnInitCoorChanged(); };
  binaryFiles.multipleSelection = true;
  binaryFiles.onActivated = [this] { OnBinaryListDoubleClick(); };
  // "BR-R" and "RH-R" exclude each other; turning one off touches nothing.
  brR.onClicked = [this] {
    if (brR.checked) rhR.checked = false;
  };
  rhR.onClicked = [this] {
    if (rhR.checked) brR.checked = false;
  };
}

void GenNoise::Start() {
  Page::Start();
  ready_ = PathExists(ExePath(NoisePlotterName(false)));
  if (!ready_) {
    // Nothing is set up without the plotter: the page shows empty controls.
    for (Field* field : Fields()) {
      if (auto* text = dynamic_cast<TextField*>(field)) text->text.clear();
      if (auto* choice = dynamic_cast<ChoiceField*>(field)) choice->Fill({});
    }
    Message(kNoisePlotterMissing);
    return;
  }
  tag_ = TimeStamp();
  RefreshOnTabChoice();
  if (refCoor.selected >= 0) OnRefCoorChanged();

  const std::optional<AutoTestConfig> config =
      TakeAutomaticTest(kNoiseSwitch, &AutoTestConfig::runNoise);
  if (!config) return;
  // Each listed log is prepared into a binary capture beside it, and so is
  // the golden log; the production run then takes the prepared captures.
  const std::string folder = AbsolutePath(config->path);
  for (int i = 0; i < config->fileCount; ++i) {
    ConvertCapture(StartFolder(), JoinPath(folder, config->fileNames[i]), ConvertTarget::kBinary);
  }
  std::string golden;
  if (!config->goldenFile.empty()) {
    golden =
        ConvertCapture(StartFolder(), JoinPath(folder, config->goldenFile), ConvertTarget::kBinary);
  }
  MFGProcessFromCommandLine(folder, golden);
}

void GenNoise::RefreshOnTabChoice() {
  RefillRealValueList(refCoor);
  RefillRealValueList(initCoor);
  refCoor.Select(0);
  initCoor.Select(0);
}

void GenNoise::OnRefCoorChanged() {
  const std::optional<Coordinates> values = SelectedCoordinates(refCoor, Parent().RealValueStore());
  if (!values) return;
  refCoordinates.Show(*values);
  initCoordinates.Show(*values);
  initCoor.Select(refCoor.selected);
}

void GenNoise::OnInitCoorChanged() {
  if (const std::optional<Coordinates> values =
          SelectedCoordinates(initCoor, Parent().RealValueStore()))
    initCoordinates.Show(*values);
}

void GenNoise::OnOpenBinaryFile() {
  for (const std::string& path : Host().ChooseFiles(filters::kBinFiles))
    AddBinaryFile(path);
}

void GenNoise::AddBinaryFile(const std::string& path) {
  // The list has 17 rows; a file past them is not taken.
  if (binaryCount_ >= static_cast<int>(kNoiseBinaryRows)) return;
  const FileSlotPaths parts = FileSlotPathsOf(path, &lastExtension_);
  NoiseBinaryRow& row = binaries_[static_cast<std::size_t>(binaryCount_)];
  row.path = parts.path;
  row.displayName = parts.name;
  binaryFile.text = parts.path;
  binaryFiles.rows.push_back({std::to_string(binaryCount_ + 1), parts.name});
  ++binaryCount_;
  OnBoardTypeChanged();
}

void GenNoise::OnBoardTypeChanged() {
  const int board = boardType.selected;
  clockDrift.text = ClockDriftOfBoard(board);
  if (board == board::kKB570) {
    noiseType.Select(kNoiseTypeL5);
  } else if (board <= board::kLastListed) {
    noiseType.Select(0);
  }
  const std::vector<int> chosen = binaryFiles.SelectedRows();
  const int row = chosen.empty() ? binaryCount_ - 1 : chosen.front();
  if (row < 0 || row >= binaryCount_) return;
  const bool unlisted = board == board::kKB570 || board > board::kLastListed;
  binaries_[static_cast<std::size_t>(row)].board = unlisted ? 0 : board;
  // Past the listed boards the text appended is the last added file's
  // name, so the row shows a doubled name; the list keeps it that way.
  const std::string appended =
      board > board::kLastListed
          ? binaries_[static_cast<std::size_t>(binaryCount_ - 1)].displayName
          : std::string(board >= 0 && board < static_cast<int>(kNoiseBoards.size())
                            ? kNoiseBoards[static_cast<std::size_t>(board)].suffix
                            : "");
  binaryFiles.rows[static_cast<std::size_t>(row)][1] =
      binaries_[static_cast<std::size_t>(row)].displayName + appended;
}

void GenNoise::OnBinaryListDoubleClick() {
  const std::vector<int> chosen = binaryFiles.SelectedRows();
  if (chosen.empty()) {
    Message(kNoiseNoItemSelected);
    return;
  }
  for (int row : chosen) {
    // 64 selections make the 32 pairs; a selection past them is not taken.
    if (selectionCount_ >= static_cast<int>(selections_.size())) break;
    if (row >= binaryCount_) continue;
    const int pair = selectionCount_ / 2;
    const int member = selectionCount_ % 2;
    selections_[static_cast<std::size_t>(selectionCount_)] = static_cast<std::uint8_t>(row);
    NoisePair& slot = pairs_[static_cast<std::size_t>(pair)];
    slot.names[static_cast<std::size_t>(member)] =
        binaries_[static_cast<std::size_t>(row)].displayName;
    if (member == 0) ddFiles.rows.push_back({std::to_string(pair + 1), slot.names[0]});
    ++selectionCount_;
  }
  // Checked once, after all rows were taken: it sees the last pair only.
  if (selectionCount_ > 0 && selectionCount_ % 2 == 0) {
    NoisePair& last = pairs_[static_cast<std::size_t>(selectionCount_ / 2 - 1)];
    if (last.names[0] == last.names[1]) {
      Message(kNoiseSameFile);
      --selectionCount_;
    } else {
      last.name = last.names[0] + "-" + last.names[1];
      ddFiles.rows[static_cast<std::size_t>(selectionCount_ / 2 - 1)][1] = last.name;
    }
  }
}

void GenNoise::DeleteOneBinary() {
  if (binaryCount_ == 0) {
    Message(kNoiseChooseBinaryFirst);
    return;
  }
  const std::vector<int> chosen = binaryFiles.SelectedRows();
  const int row = chosen.empty() ? -1 : chosen.front();
  if (row < 0 || row >= binaryCount_) {
    Message(kNoiseNoItemSelected);
    return;
  }
  // The texts move up; each row's board index stays where it was.
  for (int i = row; i + 1 < binaryCount_; ++i) {
    binaries_[static_cast<std::size_t>(i)].path = binaries_[static_cast<std::size_t>(i + 1)].path;
    binaries_[static_cast<std::size_t>(i)].displayName =
        binaries_[static_cast<std::size_t>(i + 1)].displayName;
  }
  binaries_[static_cast<std::size_t>(binaryCount_ - 1)].path.clear();
  binaries_[static_cast<std::size_t>(binaryCount_ - 1)].displayName.clear();
  --binaryCount_;
  binaryFiles.rows.erase(binaryFiles.rows.begin() + row);
  for (std::size_t i = 0; i < binaryFiles.rows.size(); ++i)
    binaryFiles.rows[i][0] = std::to_string(i + 1);
  binaryFiles.selected = -1;
  binaryFiles.selectedRows.clear();
}

void GenNoise::DeleteAllBinary() {
  binaries_ = {};
  binaryCount_ = 0;
  binaryFiles.Reset();
}

void GenNoise::DeleteOneDD() {
  if (ddFiles.rows.empty()) {
    Message(kNoiseSetDdFirst);
    return;
  }
  const int row = ddFiles.selected;
  if (row < 0 || row >= static_cast<int>(ddFiles.rows.size())) {
    Message(kNoiseNoItemSelected);
    return;
  }
  if (ddFiles.rows.size() == 1) {
    DeleteAllDD();
    return;
  }
  const std::size_t pairs = ddFiles.rows.size();
  for (std::size_t i = static_cast<std::size_t>(row); i + 1 < pairs; ++i) {
    pairs_[i] = pairs_[i + 1];
    selections_[2 * i] = selections_[2 * i + 2];
    selections_[2 * i + 1] = selections_[2 * i + 3];
  }
  pairs_[pairs - 1] = {};
  selections_[2 * pairs - 2] = 0;
  selections_[2 * pairs - 1] = 0;
  selectionCount_ = selectionCount_ >= 2 ? selectionCount_ - 2 : 0;
  ddFiles.rows.erase(ddFiles.rows.begin() + row);
  for (std::size_t i = 0; i < ddFiles.rows.size(); ++i)
    ddFiles.rows[i][0] = std::to_string(i + 1);
  ddFiles.selected = -1;
}

void GenNoise::DeleteAllDD() {
  ddFiles.Reset();
  selections_ = {};
  selectionCount_ = 0;
  pairs_ = {};
}

void GenNoise::ClearAll() {
  DeleteAllBinary();
  DeleteAllDD();
  binaryFile.text.clear();
  savePath.text.clear();
  tag_ = TimeStamp();
}

SpanFields GenNoise::ReadSpanFields() const {
  SpanFields span;
  span.start = {TextToInt(startWeek.text), FieldDouble(startSecond)};
  span.end = {TextToInt(endWeek.text), FieldDouble(endSecond)};
  span.hours = FieldDouble(cutTimeHour);
  return span;
}

void GenNoise::ShowSpanFields(const SpanFields& span) {
  const SpanFields typed = ReadSpanFields();
  if (span.start.week != typed.start.week || span.start.second != typed.start.second) {
    startWeek.text = std::to_string(span.start.week);
    startSecond.text = DialogNumberText(span.start.second);
  }
  if (span.end.week != typed.end.week || span.end.second != typed.end.second) {
    endWeek.text = std::to_string(span.end.week);
    endSecond.text = DialogNumberText(span.end.second);
  }
}

ControlFileSettings GenNoise::ControlSettings() const {
  ControlFileSettings settings;
  settings.staticScene = scene.selected == 0;
  settings.ref = {FieldDouble(refCoordinates.latitude), FieldDouble(refCoordinates.longitude),
                  FieldDouble(refCoordinates.height)};
  settings.init = {FieldDouble(initCoordinates.latitude), FieldDouble(initCoordinates.longitude),
                   FieldDouble(initCoordinates.height)};
  settings.refSelection = refCoor.selected;
  settings.initSelection = initCoor.selected;
  settings.intervalMs = TextToInt(interval.text);
  settings.elevation = FieldDouble(elevation);
  settings.cn0 = FieldDouble(cn0);
  settings.gpsPrn = TextToInt(gpsPrn.text);
  settings.gloPrn = TextToInt(gloPrn.text);
  settings.bd2Prn = TextToInt(bd2Prn.text);
  settings.rangeH = rhR.checked;
  settings.onlyRangeH = onlyRh.checked;
  settings.baseStation = baseStation.SelectedText();
  return settings;
}

std::string GenNoise::PairCapture(int pair, int member) const {
  if (brR.checked || rhR.checked) {
    return pair < binaryCount_ ? binaries_[static_cast<std::size_t>(pair)].path : std::string();
  }
  const std::size_t selection = static_cast<std::size_t>(2 * pair + member);
  if (selection >= selections_.size()) return {};
  return binaries_[selections_[selection] % kNoiseBinaryRows].path;
}

void GenNoise::WriteControlFile(const std::string& path, char systemMode,
                                GpsWeekSecond firstEpoch) {
  SpanFields span = ReadSpanFields();
  SpanLines lines;
  if (mfgFlag_) {
    lines = ResolveSpan(SpanCase::kProduction, span, firstEpoch, startOffset);
  } else if (!timeFromRover.checked) {
    lines = ResolveSpan(SpanCase::kTyped, span, {}, 0);
  } else {
    lines = ResolveSpan(SpanCase::kFromRover, span, firstEpoch, 0);
  }
  ShowSpanFields(span);
  tarnlog::WriteControlFile(path, ControlSettings(), systemMode, lines);
}

void GenNoise::ConvertXyzInPlace() {
  CoordinateFields* fields = refXyz.checked    ? &refCoordinates
                             : initXyz.checked ? &initCoordinates
                                               : nullptr;
  if (fields == nullptr) return;
  fields->Show(EcefToGeodetic(kNoiseSemiMajor, kNoiseFlattening, FieldDouble(fields->latitude),
                              FieldDouble(fields->longitude), FieldDouble(fields->height)));
}

bool GenNoise::CheckProcess() {
  if (binaries_[0].path.empty()) {
    FailCheck(kNoiseChooseBinaryFirst);
    return false;
  }
  const ControlFileSettings settings = ControlSettings();
  if (settings.gpsPrn < 0 || (settings.gpsPrn > 0 && !IsValidGpsPrn(settings.gpsPrn))) {
    FailCheck(kNoiseGpsPrn, "GPS is " + gpsPrn.text);
    return false;
  }
  if (settings.gloPrn < 0 || (settings.gloPrn > 0 && !IsValidGloPrn(settings.gloPrn))) {
    FailCheck(kNoiseGloPrn, "GLO is " + gloPrn.text);
    return false;
  }
  if (settings.bd2Prn < 0 || (settings.bd2Prn > 0 && !IsValidBd2Prn(settings.bd2Prn))) {
    FailCheck(kNoiseBd2Prn, "BD2 is " + bd2Prn.text);
    return false;
  }
  if (selectionCount_ == 0 && !brR.checked && !rhR.checked) {
    FailCheck(kNoiseSetDdFirst);
    return false;
  }
  return true;
}

}  // namespace tarnlog
