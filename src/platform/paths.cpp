#include "platform/paths.h"

#include <algorithm>

namespace tarnlog {
namespace {

// The path-part helpers count positions in 8 bits, so they only ever look at
// the first 255 characters; a longer path is cut there before any search.
constexpr std::size_t kMaxPathPartLength = 255;

std::string_view LookedAt(std::string_view path) {
  return path.substr(0, std::min(path.size(), kMaxPathPartLength));
}

// Position of the n-th separator from the left (n >= 1), or npos.
std::size_t NthFromLeft(std::string_view text, int n) {
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == kPathSeparator && --n == 0) return i;
  }
  return std::string_view::npos;
}

// Position of the n-th separator from the right (n >= 1), or npos.
std::size_t NthFromRight(std::string_view text, int n) {
  for (std::size_t i = text.size(); i > 0; --i) {
    if (text[i - 1] == kPathSeparator && --n == 0) return i - 1;
  }
  return std::string_view::npos;
}

}  // namespace

PathParts SplitPath(std::string_view path) {
  PathParts parts;
  const std::size_t lastSeparator = path.rfind(kPathSeparator);
  const std::size_t nameStart = lastSeparator == std::string_view::npos ? 0 : lastSeparator + 1;
  parts.folder = std::string(path.substr(0, nameStart));

  // Only a dot in the last element starts the extension.
  const std::string_view last = path.substr(nameStart);
  const std::size_t dot = last.rfind('.');
  if (dot == std::string_view::npos) {
    parts.name = std::string(last);
  } else {
    parts.name = std::string(last.substr(0, dot));
    parts.extension = std::string(last.substr(dot, kMaxExtensionLength));
  }
  return parts;
}

std::string PathPart(std::string_view path, int k) {
  const std::string_view text = LookedAt(path);
  if (k > 0) {
    const std::size_t pos = NthFromLeft(text, k);
    if (pos != std::string_view::npos) return std::string(text.substr(0, pos));
  } else if (k < 0) {
    const std::size_t pos = NthFromRight(text, -k);
    if (pos != std::string_view::npos) return std::string(text.substr(pos + 1));
  }
  return std::string(text);
}

std::string PathPartFromRight(std::string_view path, int k) {
  const std::string_view text = LookedAt(path);
  std::size_t pos = std::string_view::npos;
  if (k > 0) {
    pos = NthFromRight(text, k);
    if (pos != std::string_view::npos) return std::string(text.substr(0, pos));
  } else if (k == -1) {
    pos = NthFromRight(text, 1);
    if (pos != std::string_view::npos) return std::string(text.substr(pos + 1));
  } else if (k == -2) {
    pos = NthFromLeft(text, 1);
    if (pos != std::string_view::npos) return std::string(text.substr(0, pos));
  } else if (k < 0) {
    return std::string();
  }
  return std::string(text);
}

std::string FolderOf(std::string_view path) {
  const std::size_t pos = path.rfind(kPathSeparator);
  if (pos == std::string_view::npos) return std::string();
  return std::string(path.substr(0, pos));
}

std::string JoinPath(std::string_view folder, std::string_view name) {
  std::string joined(folder);
  if (joined.empty() || joined.back() != kPathSeparator) joined += kPathSeparator;
  joined += name;
  return joined;
}

}  // namespace tarnlog
