#include "platform/recording_host.h"

namespace tarnlog {

MessageAnswer RecordingHost::ShowMessage(std::string_view text, std::string_view title,
                                         MessageButtons buttons) {
  std::lock_guard<std::mutex> lock(mutex_);
  messages.push_back(Message{std::string(text), std::string(title), buttons});
  if (answers.empty()) return MessageAnswer::kOk;
  const MessageAnswer answer = answers.front();
  answers.pop_front();
  return answer;
}

void RecordingHost::SetStatus(std::string_view text) {
  std::lock_guard<std::mutex> lock(mutex_);
  statuses.emplace_back(text);
}

std::vector<std::string> RecordingHost::ChooseFiles(std::string_view filter) {
  std::lock_guard<std::mutex> lock(mutex_);
  chooserFilters.emplace_back(filter);
  if (fileChoices.empty()) return {};
  std::vector<std::string> chosen = std::move(fileChoices.front());
  fileChoices.pop_front();
  return chosen;
}

// A single-file chooser takes the first path of the next file choice.
std::optional<std::string> RecordingHost::ChooseFile(std::string_view filter) {
  std::lock_guard<std::mutex> lock(mutex_);
  chooserFilters.emplace_back(filter);
  if (fileChoices.empty()) return std::nullopt;
  std::vector<std::string> chosen = std::move(fileChoices.front());
  fileChoices.pop_front();
  if (chosen.empty()) return std::nullopt;
  return chosen.front();
}

std::optional<std::string> RecordingHost::ChooseFolder(std::string_view title) {
  std::lock_guard<std::mutex> lock(mutex_);
  chooserFilters.emplace_back(title);
  if (folderChoices.empty()) return std::nullopt;
  std::optional<std::string> chosen = std::move(folderChoices.front());
  folderChoices.pop_front();
  return chosen;
}

void RecordingHost::PostFinished(std::function<void()> handler) {
  {
    std::lock_guard<std::mutex> lock(mutex_);
    ++finishedCount;
  }
  if (handler) handler();  // outside the lock: the handler may report again
}

void RecordingHost::Post(std::function<void()> handler) {
  if (handler) handler();
}

std::string RecordingHost::Status() const {
  std::lock_guard<std::mutex> lock(mutex_);
  return statuses.empty() ? std::string() : statuses.back();
}

std::vector<std::string> RecordingHost::MessageTexts() const {
  std::lock_guard<std::mutex> lock(mutex_);
  std::vector<std::string> texts;
  texts.reserve(messages.size());
  for (const Message& message : messages)
    texts.push_back(message.text);
  return texts;
}

}  // namespace tarnlog
