#include "extract/record_time/time_files.h"

#include <algorithm>

#include "platform/folders.h"
#include "platform/paths.h"

namespace tarnlog::record_time {
namespace {

int SlotNamed(std::vector<std::string_view>& names, std::string_view name) {
  const auto found = std::find(names.begin(), names.end(), name);
  if (found != names.end()) return static_cast<int>(found - names.begin());
  names.push_back(name);
  return static_cast<int>(names.size() - 1);
}

TimeFileSlots MakeSlots() {
  TimeFileSlots slots;
  for (const LogType& type : LogTypes()) {
    slots.ofType.push_back(SlotNamed(slots.names, type.file));
    slots.talkerOfType.push_back(type.talkerFile.empty() ? -1
                                                         : SlotNamed(slots.names, type.talkerFile));
  }
  slots.baseDelay = SlotNamed(slots.names, kBaseDelayFile);
  slots.mixMatched = SlotNamed(slots.names, kMixMatchedFile);
  for (const DirectType& type : DirectTypes())
    slots.ofDirect.push_back(SlotNamed(slots.names, type.file));
  return slots;
}

const SatelliteFolder& FolderOf(int family) {
  if (family == kGpsFamily) return kGpsFolder;
  if (family == kGlonassFamily) return kGlonassFolder;
  return kBeiDouFolders[family - kFirstBeiDouFamily];
}

}  // namespace

const TimeFileSlots& SharedTimeFileSlots() {
  static const TimeFileSlots slots = MakeSlots();
  return slots;
}

TimeFiles::TimeFiles() : files_(SharedTimeFileSlots().names.size()) {
  std::size_t total = files_.size();
  for (int family = 0; family < kSatelliteFamilies; ++family) {
    const auto count = static_cast<std::size_t>(FolderOf(family).highest);
    satellites_[static_cast<std::size_t>(family)] = std::vector<File>(count);
    total += count;
  }
  written_.reserve(total);
}

void TimeFiles::Open(const std::string& folder) {
  folder_ = folder;
  for (int family = 0; family < kSatelliteFamilies; ++family) {
    MakeFolder(JoinPath(folder, FolderOf(family).folder));
  }
  const auto& names = SharedTimeFileSlots().names;
  for (std::size_t slot = 0; slot < names.size(); ++slot) {
    File& file = files_[slot];
    if (!file.out.IsOpen()) file.out.Open(JoinPath(folder, names[slot]), FileMode::kBinary);
  }
}

OutFile* TimeFiles::Satellite(int family, int number) {
  const SatelliteFolder& where = FolderOf(family);
  if (number < 1 || number > where.highest) return nullptr;
  File& file = satellites_[static_cast<std::size_t>(family)][static_cast<std::size_t>(number - 1)];
  if (!file.tried) {
    file.tried = true;
    file.out.Open(JoinPath(JoinPath(folder_, where.folder), std::to_string(number) + ".txt"),
                  FileMode::kBinary);
  }
  return &Touch(file);
}

void TimeFiles::FlushWritten() {
  for (File* file : written_) {
    file->out.Flush();
    file->written = false;
  }
  written_.clear();
}

void TimeFiles::Close() {
  FlushWritten();
  for (File& file : files_)
    file.out.Close();
  for (auto& family : satellites_) {
    for (File& file : family) {
      file.out.Close();
      file.tried = false;
    }
  }
}

}  // namespace tarnlog::record_time
