// The only way a page talks to the user: message boxes, its status line,
// the file and folder choosers and its finished notice. The window, the
// batch run and the tests each supply their own host.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tarnlog {

enum class MessageButtons { kOk, kOkCancel };
enum class MessageAnswer { kOk, kCancel };

// The chooser filters, in the system's "Name (*.x)|*.x|...||" form.
namespace filters {
inline constexpr std::string_view kLogFiles =
    "LOG Files (*.log)|*.log|(*.LOG)|*.log|All Files (*.*)|*.*||";
inline constexpr std::string_view kLogFilesSingle = "LOG Files (*.log)|*.log|All Files (*.*)|*.*||";
inline constexpr std::string_view kAsciiFiles = "ASCII Files (*.log)|*.log|All Files (*.*)|*.*||";
inline constexpr std::string_view kAllFilesFirst =
    "All Files (*.*)|*.*|ASCII Files (*.log)|*.log||";
inline constexpr std::string_view kGoldenFile = "文本文件(*.log)|*.log|所有文件(*.*)|*.*||";
inline constexpr std::string_view kTextTables =
    "TXT Files (*.txt)|*.txt|(*.TXT)|*.TXT|All Files (*.*)|*.*||";
inline constexpr std::string_view kBinFiles =
    "BIN Files (*.bin)|*.bin|(*.BIN)|*.BIN|All Files (*.*)|*.*||";
inline constexpr std::string_view kBinFilesSecond =
    "Bin Files (*.bin)|*.bin|Bin Files (*.BIN)|*.BIN|Bin Files (*.Bin)|*.Bin|All Files (*.*)|*.*||";
inline constexpr std::string_view kCsvFiles = "CSV Files (*.csv)|*.csv|All Files (*.*)|*.*||";
}  // namespace filters

inline constexpr std::string_view kSelectFolderTitle = "Select a folder";
inline constexpr std::string_view kStaticSelectFolderTitle = "请选择需要的目录";

// The multiple-selection chooser returns at most this many paths (8320 bytes
// of names in the system's dialog).
inline constexpr std::size_t kMaxChosenFiles = 32;

class PageHost {
 public:
  virtual ~PageHost() = default;

  // A modal message box; the title is empty when the page gives none.
  virtual MessageAnswer ShowMessage(std::string_view text, std::string_view title = {},
                                    MessageButtons buttons = MessageButtons::kOk) = 0;
  // Replaces the page's status line.
  virtual void SetStatus(std::string_view text) = 0;
  // Multiple-selection open dialog with default suffix "log"; the chosen
  // paths in selection order, empty on cancel.
  virtual std::vector<std::string> ChooseFiles(std::string_view filter) = 0;
  // Single-file open dialog; nothing on cancel.
  virtual std::optional<std::string> ChooseFile(std::string_view filter) = 0;
  // Folder browser; nothing on cancel.
  virtual std::optional<std::string> ChooseFolder(std::string_view title) = 0;
  // The page's finished notice: `handler` runs on the interface thread, after
  // the worker that posts it has gone on.
  virtual void PostFinished(std::function<void()> handler) = 0;
  // Any other notice of a worker to its page (a run has started, a stage
  // begins): `handler` runs on the interface thread, after the worker that
  // posts it has gone on.
  virtual void Post(std::function<void()> handler) = 0;
};

}  // namespace tarnlog
