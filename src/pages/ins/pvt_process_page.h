// The INS noise page: the raw inertial data of a device under test against
// those of a reference device. Both logs are filtered into raw-IMU tables in
// a new folder, where InsMeasProc.exe compares them. The run holds the
// interface thread from start to end.
#pragma once

#include <string>
#include <string_view>

#include "frame/page.h"
#include "platform/files.h"

namespace tarnlog {

inline constexpr std::string_view kInsOpenBatError = "Open bat file error!";
inline constexpr std::string_view kInsCopyToolError = "copy InsMeasProc.exe error!";
inline constexpr std::string_view kInsConfigOptional = "可选";

class PVTProcess : public Page {
 public:
  PVTProcess(PageParent& parent, PageHost& host);
  void Process() override;

  // A chosen log: the field shows it and its stream is opened at once,
  // to be read when Process runs.
  void ChooseSourceLog(const std::string& path);
  void ChooseReferenceLog(const std::string& path);

  TextField sourceLog;
  ActionField openSource;
  TextField referenceLog;
  ActionField openReference;
  TextField configFile;  // held; no step reads it
  TextField save;
  ActionField process;

 private:
  void ChooseLog(TextField& field, InFile& stream);
  void TakeLog(TextField& field, InFile& stream, const std::string& path);

  InFile sourceStream_;
  InFile referenceStream_;
};

}  // namespace tarnlog
