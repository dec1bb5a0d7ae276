// The host of a headless run: a message box is one line on standard error
// and counts as OK pressed; each status change is one line on standard output.
#pragma once

#include <mutex>

#include "platform/host.h"

namespace tarnlog {

class BatchHost : public PageHost {
 public:
  MessageAnswer ShowMessage(std::string_view text, std::string_view title,
                            MessageButtons buttons) override;
  void SetStatus(std::string_view text) override;
  std::vector<std::string> ChooseFiles(std::string_view filter) override;
  std::optional<std::string> ChooseFile(std::string_view filter) override;
  std::optional<std::string> ChooseFolder(std::string_view title) override;
  void PostFinished(std::function<void()> handler) override;
  void Post(std::function<void()> handler) override;

 private:
  std::mutex outputMutex_;  // worker threads and the main thread both print
};

}  // namespace tarnlog
