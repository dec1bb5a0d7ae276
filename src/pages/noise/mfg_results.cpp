#include "pages/noise/mfg_results.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <vector>

#include "platform/files.h"
#include "platform/folders.h"
#include "platform/paths.h"

namespace tarnlog {
namespace {

// Result rows and table lines are read into buffers of this size; a longer
// line keeps its first kLineLimit - 1 bytes and counts as one line.
constexpr std::size_t kLineLimit = 1024;

// The first three comma-separated fields of a result row.
struct ResultRow {
  char serial[kLineLimit];
  char name[kLineLimit];
  char verdict[kLineLimit];
};

// A row counts when its three fields are there and its second names the
// rover: the plotter writes the board's name, the rover path holds it.
bool ReadRowOfRover(const char* line, const char* roverPath, ResultRow& row) {
  if (std::sscanf(line, "%1023[^,],%1023[^,],%1023[^,],", row.serial, row.name, row.verdict) != 3)
    return false;
  return std::strstr(roverPath, row.name) != nullptr;
}

bool Empty(const char* text) {
  return text == nullptr || *text == '\0';
}

// The plotter's own tables, which keep lines of any length.
bool IsPlotterTable(const std::string& name) {
  static constexpr const char* kPlotterTables[] = {"half_cycle_glo.txt", "half_cycle.txt",
                                                   "pvt.txt", "control.txt", "big_psr_res.txt"};
  for (const char* table : kPlotterTables) {
    if (name == table) return true;
  }
  return false;
}

// The file through which a line is deleted; never itself a table.
constexpr const char* kTrimScratchName = "instead.txt";

// Hands each line of a text-mode file to `visit(index, piece, ends)` in
// pieces: `ends` holds for the piece that carries the line's '\n'. The
// last line may end without one.
template <typename Visit>
void ForEachLinePiece(InFile& in, Visit&& visit) {
  char block[64 * 1024];
  std::size_t line = 0;
  for (std::size_t got = in.Read(block, sizeof block); got > 0;
       got = in.Read(block, sizeof block)) {
    std::size_t from = 0;
    while (from < got) {
      const auto* lf = static_cast<const char*>(std::memchr(block + from, '\n', got - from));
      const std::size_t to = lf != nullptr ? static_cast<std::size_t>(lf - block) + 1 : got;
      if (!visit(line, std::string_view(block + from, to - from), lf != nullptr)) return;
      if (lf != nullptr) ++line;
      from = to;
    }
  }
}

// What a table needs removed: the lines to leave out, in order.
struct TableTrim {
  bool tooManyLines = false;
  std::vector<std::size_t> lines;
};

// Measures the table's lines (their lengths, '\n' counted, capped at
// kLineLimit) and notes the lines to delete. Empty when the table is left
// as it is.
TableTrim PlanTrim(const std::string& path, bool onlyTxt,
                   const std::function<void(std::string_view)>& message) {
  TableTrim trim;
  InFile in;
  if (!in.Open(path, FileMode::kText)) return trim;
  std::size_t count = 0;
  std::size_t length = 0;  // of the line being read, capped
  std::size_t first = 0;
  std::size_t second = 0;
  bool differ = false;
  bool open = false;  // a line has begun and not yet ended
  auto lineEnded = [&](std::size_t index) {
    ++count;
    if (index == 0) first = length;
    if (index == 1) {
      second = length;
      if (first != second) {
        differ = true;
        return false;
      }
    }
    if (!onlyTxt && index > 1 && length != second) {
      trim.lines.push_back(index);
      if (trim.lines.size() == kLineLimit) {
        trim.tooManyLines = true;
        return false;
      }
    }
    length = 0;
    return true;
  };
  bool stopped = false;
  ForEachLinePiece(in, [&](std::size_t index, std::string_view piece, bool ends) {
    length = std::min(length + piece.size(), kLineLimit);
    open = !ends;
    if (ends && !lineEnded(index)) {
      stopped = true;
      return false;
    }
    return true;
  });
  if (!stopped && open) stopped = !lineEnded(count);

  if (differ) {
    message(kTrimLinesDiffer);
    return {};
  }
  if (trim.tooManyLines) {
    message(kTrimTooManyLines);
    return trim;
  }
  if (count < 2) return {};
  if (onlyTxt) trim.lines.assign(1, count - 1);
  return trim;
}

// Copies the table into the scratch file without the noted lines, in text
// mode as it was read, and puts the copy in the table's place.
void DeleteLines(const std::string& folder, const std::string& path,
                 const std::vector<std::size_t>& lines) {
  const std::string scratch = JoinPath(folder, kTrimScratchName);
  InFile in;
  OutFile out;
  if (!in.Open(path, FileMode::kText) || !out.Open(scratch, FileMode::kText)) return;
  std::size_t next = 0;  // the next noted line in `lines`
  ForEachLinePiece(in, [&](std::size_t index, std::string_view piece, bool /*ends*/) {
    while (next < lines.size() && lines[next] < index)
      ++next;
    if (next == lines.size() || lines[next] != index) out.Write(piece);
    return true;
  });
  in.Close();
  out.Close();
  if (out.WriteFailed() || std::rename(scratch.c_str(), path.c_str()) != 0) RemoveFile(scratch);
}

}  // namespace

void WriteVerdict(const char* resultPath, const char* name, const char* roverPath) {
  if (Empty(resultPath) || Empty(name) || Empty(roverPath)) return;
  InFile in;
  if (!in.Open(resultPath, FileMode::kText)) return;
  // The last two lines, the older one first once two have been read.
  char lines[2][kLineLimit];
  char line[kLineLimit];
  std::size_t count = 0;
  for (std::size_t length = in.ReadLineSkippingRest(line, sizeof line); length > 0;
       length = in.ReadLineSkippingRest(line, sizeof line)) {
    std::memcpy(lines[count % 2], line, length + 1);
    ++count;
  }
  in.Close();
  if (count < 2) return;

  ResultRow previous;
  ResultRow last;
  if (!ReadRowOfRover(lines[count % 2], roverPath, previous) ||
      !ReadRowOfRover(lines[(count + 1) % 2], roverPath, last)) {
    return;
  }
  const char* verdict = "No";
  if (std::strstr(previous.verdict, "NG") != nullptr && std::strstr(last.verdict, "NG") != nullptr)
    verdict = "NG";
  else if (std::strstr(previous.verdict, "Yes") != nullptr &&
           std::strstr(last.verdict, "Yes") != nullptr)
    verdict = "Yes";

  OutFile out;
  if (!out.Open(resultPath, FileMode::kText, true)) return;
  out.Printf("***********%s,%s,**************\n", last.name, verdict);
}

bool TrimResultTableFiles(const std::string& folder, bool onlyTxt,
                          const std::function<void(std::string_view)>& message) {
  for (const FolderEntry& entry : ListMatching(folder, "*.txt")) {
    if (entry.isFolder || IsPlotterTable(entry.name) || entry.name == kTrimScratchName) continue;
    const std::string path = JoinPath(folder, entry.name);
    const TableTrim trim = PlanTrim(path, onlyTxt, message);
    if (trim.tooManyLines) return false;
    if (!trim.lines.empty()) DeleteLines(folder, path, trim.lines);
  }
  return true;
}

}  // namespace tarnlog
