// A host for tests: records every message, status and notice, and answers
// choosers and OK/Cancel boxes from queues the test fills beforehand.
#pragma once

#include <deque>
#include <mutex>

#include "platform/host.h"

namespace tarnlog {

class RecordingHost : public PageHost {
 public:
  struct Message {
    std::string text;
    std::string title;
    MessageButtons buttons = MessageButtons::kOk;
  };

  MessageAnswer ShowMessage(std::string_view text, std::string_view title,
                            MessageButtons buttons) override;
  void SetStatus(std::string_view text) override;
  std::vector<std::string> ChooseFiles(std::string_view filter) override;
  std::optional<std::string> ChooseFile(std::string_view filter) override;
  std::optional<std::string> ChooseFolder(std::string_view title) override;
  void PostFinished(std::function<void()> handler) override;
  void Post(std::function<void()> handler) override;

  // What the page did, in order.
  std::vector<Message> messages;
  std::vector<std::string> statuses;
  std::vector<std::string> chooserFilters;  // filter or title of each chooser shown
  int finishedCount = 0;

  // What the user will answer next; empty queues mean OK and cancel.
  std::deque<MessageAnswer> answers;
  std::deque<std::vector<std::string>> fileChoices;
  std::deque<std::optional<std::string>> folderChoices;

  // The last status line, or "" before any.
  std::string Status() const;
  // Message texts only, for compact expectations.
  std::vector<std::string> MessageTexts() const;

 private:
  mutable std::mutex mutex_;  // pages report from worker threads
};

}  // namespace tarnlog
