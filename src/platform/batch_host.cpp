#include "platform/batch_host.h"

#include <cstdio>

namespace tarnlog {
namespace {

// A message box becomes one line: its line breaks turn into blanks.
std::string OneLine(std::string_view text) {
  std::string line;
  line.reserve(text.size() + 1);
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char c = text[i];
    if (c == '\r' && i + 1 < text.size() && text[i + 1] == '\n') continue;
    line += (c == '\r' || c == '\n') ? ' ' : c;
  }
  return line;
}

}  // namespace

MessageAnswer BatchHost::ShowMessage(std::string_view text, std::string_view title,
                                     MessageButtons /*buttons*/) {
  std::string line = title.empty() ? OneLine(text) : OneLine(title) + ": " + OneLine(text);
  line += '\n';
  std::lock_guard<std::mutex> lock(outputMutex_);
  std::fwrite(line.data(), 1, line.size(), stderr);
  std::fflush(stderr);
  return MessageAnswer::kOk;  // no one to ask: counts as OK pressed
}

void BatchHost::SetStatus(std::string_view text) {
  std::string line = OneLine(text);
  line += '\n';
  std::lock_guard<std::mutex> lock(outputMutex_);
  std::fwrite(line.data(), 1, line.size(), stdout);
  std::fflush(stdout);
}

std::vector<std::string> BatchHost::ChooseFiles(std::string_view /*filter*/) {
  return {};
}

std::optional<std::string> BatchHost::ChooseFile(std::string_view /*filter*/) {
  return std::nullopt;
}

std::optional<std::string> BatchHost::ChooseFolder(std::string_view /*title*/) {
  return std::nullopt;
}

void BatchHost::PostFinished(std::function<void()> handler) {
  if (handler) handler();
}

void BatchHost::Post(std::function<void()> handler) {
  if (handler) handler();
}

}  // namespace tarnlog
