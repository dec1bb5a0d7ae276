#include "platform/folders.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <algorithm>
#include <cerrno>

#include "platform/files.h"
#include "platform/host.h"
#include "platform/paths.h"

namespace tarnlog {
namespace {

char Lower(char c) {
  return (c >= 'A' && c <= 'Z') ? static_cast<char>(c - 'A' + 'a') : c;
}

// Byte order after folding ASCII letters, so that "B.log" sorts after "a.log".
int CompareNoCase(std::string_view a, std::string_view b) {
  const std::size_t common = std::min(a.size(), b.size());
  for (std::size_t i = 0; i < common; ++i) {
    const auto x = static_cast<unsigned char>(Lower(a[i]));
    const auto y = static_cast<unsigned char>(Lower(b[i]));
    if (x != y) return x < y ? -1 : 1;
  }
  return a.size() == b.size() ? 0 : (a.size() < b.size() ? -1 : 1);
}

// Greedy match with one back-track point for the last '*', which is enough
// for '*' and '?' alone.
bool MatchPlain(std::string_view pattern, std::string_view name) {
  std::size_t p = 0;
  std::size_t n = 0;
  std::size_t starAt = std::string_view::npos;
  std::size_t starName = 0;
  while (n < name.size()) {
    if (p < pattern.size() && pattern[p] == '*') {
      starAt = p++;
      starName = n;
    } else if (p < pattern.size() && (pattern[p] == '?' || Lower(pattern[p]) == Lower(name[n]))) {
      ++p;
      ++n;
    } else if (starAt != std::string_view::npos) {
      p = starAt + 1;
      n = ++starName;
    } else {
      return false;
    }
  }
  while (p < pattern.size() && pattern[p] == '*')
    ++p;
  return p == pattern.size();
}

// Copies the bytes and the mode bits of a regular file; `createFlags` says
// what happens to an existing target (O_EXCL or O_TRUNC).
bool CopyBytes(const std::string& from, const std::string& to, int createFlags) {
  // A FIFO as the source is refused at once instead of waiting for a writer.
  struct stat info {};
  const int in = OpenRegularFileForReading(from, &info);
  if (in < 0) return false;
  const mode_t mode = info.st_mode & 0777;
  int out = ::open(to.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC | createFlags, mode);
  if (out < 0) {
    ::close(in);
    return false;
  }
  bool ok = true;
  char buffer[1 << 16];
  for (;;) {
    ssize_t got = ::read(in, buffer, sizeof buffer);
    if (got < 0 && errno == EINTR) continue;
    if (got <= 0) {
      ok = got == 0;
      break;
    }
    if (!WriteAll(out, buffer, static_cast<std::size_t>(got))) {
      ok = false;
      break;
    }
  }
  // The umask must not take the executable bit from a copied tool.
  if (ok) ::fchmod(out, mode);
  ::close(in);
  if (::close(out) != 0) ok = false;
  if (!ok && (createFlags & O_EXCL) != 0) ::unlink(to.c_str());
  return ok;
}

}  // namespace

bool CopyFileNoOverwrite(const std::string& from, const std::string& to) {
  // O_EXCL is the fail-if-exists of the copy: an older copy stays as it is.
  return CopyBytes(from, to, O_EXCL);
}

bool CopyFileReplacing(const std::string& from, const std::string& to) {
  struct stat source {};
  struct stat target {};
  if (::stat(from.c_str(), &source) == 0 && ::stat(to.c_str(), &target) == 0 &&
      source.st_dev == target.st_dev && source.st_ino == target.st_ino) {
    return false;  // a file can't be copied onto itself
  }
  return CopyBytes(from, to, O_TRUNC);
}

bool CopyFolderTree(const std::string& from, const std::string& to) {
  struct stat source {};
  struct stat target {};
  if (::stat(from.c_str(), &source) != 0 || !S_ISDIR(source.st_mode)) return false;
  if (::stat(to.c_str(), &target) == 0 && source.st_dev == target.st_dev &&
      source.st_ino == target.st_ino) {
    return true;
  }
  // Listed before the target is made, so a target inside the source is
  // not copied into itself.
  const std::vector<FolderEntry> entries = ListMatching(from, "*");
  MakeFolder(to);
  for (const FolderEntry& entry : entries) {
    const std::string inner = from + "/" + entry.name;
    if (entry.isFolder) {
      CopyFolderTree(inner, to + "/" + entry.name);
    } else {
      CopyFileReplacing(inner, to + "/" + entry.name);
    }
  }
  return true;
}

bool MakeFolder(const std::string& path) {
  return ::mkdir(path.c_str(), 0777) == 0;
}

bool MakeRunFolder(const std::string& path, PageHost& host) {
  if (MakeFolder(path)) return true;
  host.ShowMessage("Creat Folder" + path + "is Failed!");
  return false;
}

bool MakeFolderChecked(const std::string& path, PageHost& host) {
  if (MakeFolder(path)) return true;
  host.ShowMessage(kMakeDirFailed);
  return false;
}

bool PathExists(const std::string& path) {
  return ::access(path.c_str(), F_OK) == 0;
}

bool IsFolder(const std::string& path) {
  struct stat info {};
  return ::stat(path.c_str(), &info) == 0 && S_ISDIR(info.st_mode);
}

bool IsRegularFile(const std::string& path) {
  struct stat info {};
  return ::stat(path.c_str(), &info) == 0 && S_ISREG(info.st_mode);
}

bool RemoveFile(const std::string& path) {
  return ::unlink(path.c_str()) == 0;
}

bool WildcardMatch(std::string_view pattern, std::string_view name) {
  if (MatchPlain(pattern, name)) return true;
  // As in the Windows search, a trailing ".*" also matches a name without any
  // extension, so "*.*" lists every file.
  if (pattern.size() >= 2 && pattern.substr(pattern.size() - 2) == ".*" &&
      name.find('.') == std::string_view::npos) {
    return MatchPlain(pattern.substr(0, pattern.size() - 2), name);
  }
  return false;
}

std::vector<FolderEntry> ListMatching(const std::string& folder, std::string_view pattern) {
  std::vector<FolderEntry> entries;
  DIR* dir = ::opendir(folder.empty() ? "." : folder.c_str());
  if (dir == nullptr) return entries;
  while (const dirent* entry = ::readdir(dir)) {
    std::string_view name = entry->d_name;
    if (name == "." || name == "..") continue;
    if (!WildcardMatch(pattern, name)) continue;
    FolderEntry found;
    found.name = std::string(name);
    if (entry->d_type == DT_DIR) {
      found.isFolder = true;
    } else if (entry->d_type == DT_UNKNOWN || entry->d_type == DT_LNK) {
      found.isFolder = IsFolder(folder + "/" + found.name);
    }
    entries.push_back(std::move(found));
  }
  ::closedir(dir);
  std::sort(entries.begin(), entries.end(), [](const FolderEntry& a, const FolderEntry& b) {
    const int order = CompareNoCase(a.name, b.name);
    return order != 0 ? order < 0 : a.name < b.name;  // a fixed order for case twins
  });
  return entries;
}

std::vector<std::string> ListFilesEndingIn(const std::string& folder, std::string_view pattern,
                                           std::span<const std::string_view> suffixes) {
  std::vector<std::string> paths;
  for (const FolderEntry& entry : ListMatching(folder, pattern)) {
    if (entry.isFolder) continue;
    for (std::string_view suffix : suffixes) {
      if (entry.name.ends_with(suffix)) {
        paths.push_back(JoinPath(folder, entry.name));
        break;
      }
    }
  }
  return paths;
}

std::string CurrentFolder() {
  std::string buffer(256, '\0');
  for (;;) {
    if (::getcwd(buffer.data(), buffer.size()) != nullptr) {
      buffer.resize(std::char_traits<char>::length(buffer.c_str()));
      return buffer;
    }
    if (errno != ERANGE || buffer.size() > (1u << 20)) return {};
    buffer.resize(buffer.size() * 2);
  }
}

std::string AbsolutePath(const std::string& path) {
  if (path.empty() || path[0] == '/') return path;
  return CurrentFolder() + "/" + path;
}

}  // namespace tarnlog
