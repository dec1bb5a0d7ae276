// Path helpers over the native separator '/'.
//
// A Linux path has no drive: the drive part is always the empty text, so the
// drive line that opens every script is empty as well.
#pragma once

#include <string>
#include <string_view>

namespace tarnlog {

inline constexpr char kPathSeparator = '/';

// The four-way split of a path: drive, folder, name and extension.
// `folder` keeps its leading and trailing separators ("/data/run/"), the
// extension keeps its dot and is held to kMaxExtensionLength characters.
struct PathParts {
  std::string drive;
  std::string folder;
  std::string name;
  std::string extension;
};

inline constexpr std::size_t kMaxExtensionLength = 9;

PathParts SplitPath(std::string_view path);

// Path pieces by an integer k, counted with an 8-bit position, so only the
// first 255 characters of a path are looked at.
//   k > 0: the text before the k-th separator from the left (k = 1: the drive);
//   k < 0: the text after the |k|-th separator from the right;
//   k = 0, or fewer separators than asked for: the whole (looked-at) text.
std::string PathPart(std::string_view path, int k);

// The variant used for PlotRange.bat: k > 0 counts from the right and gives
// the text before the k-th separator from the right (k = 1: the folder);
// -1 gives the last element and -2 the drive. Same 8-bit limit.
std::string PathPartFromRight(std::string_view path, int k);

// Text of `path` before its last separator, or empty when it has none.
std::string FolderOf(std::string_view path);

// `folder` + "/" + `name`, without doubling a separator that ends `folder`.
std::string JoinPath(std::string_view folder, std::string_view name);

}  // namespace tarnlog
