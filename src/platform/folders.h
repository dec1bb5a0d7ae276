// Folder and file operations of the pages: copies that never overwrite,
// the two forms of folder creation, access tests and wildcard listings.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tarnlog {

class PageHost;

// Copies `from` to `to` unless `to` already exists (an older copy stays).
// The result is there for tests; pages don't look at it.
bool CopyFileNoOverwrite(const std::string& from, const std::string& to);

// Copies `from` over `to`, replacing what is there, as the shell's copy does.
// The copy keeps the mode bits of `from`.
bool CopyFileReplacing(const std::string& from, const std::string& to);

// Copies the folder `from` with everything in it into `to`, creating the
// folders on the way and replacing files already there. Nothing happens
// when both name the same folder. False when `from` is no folder.
bool CopyFolderTree(const std::string& from, const std::string& to);

// Creates a folder, result ignored by the callers: it may already exist.
bool MakeFolder(const std::string& path);

inline constexpr std::string_view kMakeDirFailed = "Make DIR is Failed! Enter OK continue.";

// Creates a run's folder; when that fails shows "Creat Folder", the path and
// "is Failed!" run together, and returns false. The run goes on: later
// writes there simply fail.
bool MakeRunFolder(const std::string& path, PageHost& host);
// Creates a fresh folder; when that fails (also when it exists) shows
// "Make DIR is Failed! Enter OK continue." and returns false.
bool MakeFolderChecked(const std::string& path, PageHost& host);

// The access test: does anything exist under `path`.
bool PathExists(const std::string& path);
bool IsFolder(const std::string& path);
// A regular file, or a link to one (not a folder, a FIFO or a device).
bool IsRegularFile(const std::string& path);

// Removes a file; false when there was none.
bool RemoveFile(const std::string& path);

// Case-insensitive wildcard match of a name ('*' any run, '?' one character),
// as the Windows file search and the shell's del do it.
bool WildcardMatch(std::string_view pattern, std::string_view name);

struct FolderEntry {
  std::string name;
  bool isFolder = false;
};

// Entries of `folder` whose names match `pattern`, case-insensitively,
// sorted by name without regard to case. "." and ".." are never listed.
std::vector<FolderEntry> ListMatching(const std::string& folder, std::string_view pattern);

// The paths of the entries of `folder` matching `pattern` that are not
// folders and whose names end in one of `suffixes`, tested as they are
// written (case-sensitively), in the listing's order.
std::vector<std::string> ListFilesEndingIn(const std::string& folder, std::string_view pattern,
                                           std::span<const std::string_view> suffixes);

// The process's current directory, or empty if it can't be read.
std::string CurrentFolder();

// A relative path taken from the current directory; an absolute one as it
// is. Pages name result folders after the folders of their inputs, so an
// input given as "a.log" must carry the folder it lies in.
std::string AbsolutePath(const std::string& path);

}  // namespace tarnlog
