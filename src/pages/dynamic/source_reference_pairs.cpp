#include "pages/dynamic/source_reference_pairs.h"

#include "platform/paths.h"

namespace tarnlog {
namespace {

constexpr int kMaxSelections = 2 * static_cast<int>(kMaxSourceReferencePairs);

bool ValidRow(const PairedFileList& files, int row) {
  return row >= 0 && row < files.count;
}

// Takes the rows as the next selections; a selection past the 32nd pair is
// not taken. `openRows` opens a pair row at each even count. Returns how
// many rows were taken.
int TakeRows(SourceReferencePairs& pairs, const PairedFileList& files, const std::vector<int>& rows,
             TableField* openRows) {
  int taken = 0;
  for (int row : rows) {
    if (!ValidRow(files, row) || pairs.pairCount >= kMaxSelections) continue;
    const PairedFileSlot& slot = files.slots[static_cast<std::size_t>(row)];
    PairMember& member = SelectionMember(pairs, pairs.pairCount);
    member.slot = static_cast<std::uint8_t>(row);
    member.type = slot.type;
    member.name = slot.name;
    if (openRows != nullptr && pairs.pairCount % 2 == 0)
      openRows->rows.push_back({std::to_string(pairs.pairCount / 2 + 1), slot.name});
    ++pairs.pairCount;
    ++taken;
  }
  return taken;
}

// The pair just completed by the last selection: refused when both sides
// name the same file (folders and extensions aside), and, with
// `checkRepeats`, when an earlier pair has its name.
std::string_view CompleteLastPair(SourceReferencePairs& pairs, TableField& pairList,
                                  bool checkRepeats) {
  const int index = pairs.pairCount / 2 - 1;
  SourceReferencePair& pair = pairs.pairs[static_cast<std::size_t>(index)];
  if (pair.source.name == pair.reference.name) {
    --pairs.pairCount;
    return kPairSameFile;
  }
  pair.name = pair.source.name + "-" + pair.reference.name;
  if (checkRepeats) {
    for (int earlier = 0; earlier < index; ++earlier) {
      if (pairs.pairs[static_cast<std::size_t>(earlier)].name == pair.name) {
        --pairs.pairCount;
        return kPairRepeated;
      }
    }
  }
  if (index < static_cast<int>(pairList.rows.size()))
    pairList.rows[static_cast<std::size_t>(index)] = {std::to_string(index + 1), pair.name};
  return {};
}

}  // namespace

bool PairedFileList::Add(const std::string& path, int type) {
  if (count >= static_cast<int>(kPairedFileSlots)) return false;
  PairedFileSlot& slot = slots[static_cast<std::size_t>(count)];
  static_cast<FileSlotPaths&>(slot) = FileSlotPathsOf(path);
  slot.type = type;
  lastPath = slot.path;
  ++count;
  return true;
}

void PairedFileList::Remove(int row) {
  if (!ValidRow(*this, row)) return;
  for (int i = row; i + 1 < count; ++i)
    static_cast<FileSlotPaths&>(slots[static_cast<std::size_t>(i)]) =
        slots[static_cast<std::size_t>(i + 1)];
  static_cast<FileSlotPaths&>(slots[static_cast<std::size_t>(count - 1)]) = {};
  --count;
}

void PairedFileList::Clear() {
  slots = {};
  count = 0;
  lastPath.clear();
}

void SourceReferencePairs::Clear() {
  pairs = {};
  pairCount = 0;
}

PairMember& SelectionMember(SourceReferencePairs& pairs, int selection) {
  SourceReferencePair& pair = pairs.pairs[static_cast<std::size_t>(selection / 2)];
  return selection % 2 == 0 ? pair.source : pair.reference;
}

std::string_view PickSources(SourceReferencePairs& pairs, const PairedFileList& sources,
                             const std::vector<int>& rows, TableField& pairList,
                             const PairingTexts& texts) {
  if (rows.empty()) return kPairNoItemSelected;
  if (pairs.pairCount % 2 != 0) return texts.referenceNext;
  const int taken = TakeRows(pairs, sources, rows, &pairList);
  // Only a selection of two rows or more ends on an even count: the last two
  // sources then make a pair of their own, with no look at earlier pairs.
  if (taken > 0 && pairs.pairCount % 2 == 0) return CompleteLastPair(pairs, pairList, false);
  return {};
}

std::string_view PickReferences(SourceReferencePairs& pairs, const PairedFileList& references,
                                const std::vector<int>& rows, TableField& pairList,
                                const PairingTexts& texts) {
  if (rows.empty()) return kPairNoItemSelected;
  if (pairs.pairCount % 2 == 0) return texts.sourceFirst;
  TakeRows(pairs, references, rows, nullptr);
  if (pairs.pairCount % 2 == 0) return CompleteLastPair(pairs, pairList, true);
  return {};
}

std::string_view DeleteOnePair(SourceReferencePairs& pairs, TableField& pairList) {
  if (pairList.rows.empty()) return kPairListEmpty;
  if (pairs.pairCount % 2 != 0) return kPairWaiting;
  const int row = pairList.selected;
  const int shown = static_cast<int>(pairList.rows.size());
  if (row < 0 || row >= shown) return kPairNoItemSelected;
  if (shown == 1) {
    DeleteAllPairs(pairs, pairList);
    return {};
  }
  for (int i = row; i + 1 < shown; ++i)
    pairs.pairs[static_cast<std::size_t>(i)] = pairs.pairs[static_cast<std::size_t>(i + 1)];
  pairs.pairs[static_cast<std::size_t>(shown - 1)] = {};
  pairList.rows.erase(pairList.rows.begin() + row);
  for (std::size_t i = 0; i < pairList.rows.size(); ++i)
    pairList.rows[i][0] = std::to_string(i + 1);
  pairList.selected = -1;
  pairs.pairCount -= 2;
  return {};
}

void DeleteAllPairs(SourceReferencePairs& pairs, TableField& pairList) {
  pairs.Clear();
  pairList.rows.clear();
  pairList.selected = -1;
  pairList.selectedRows.clear();
}

std::string_view DeleteOneFile(PairedFileList& files, TableField& list,
                               std::string_view emptyText) {
  if (files.count == 0) return emptyText;
  const int row = list.selected;
  if (row < 0 || row >= files.count || row >= static_cast<int>(list.rows.size()))
    return kPairNoItemSelected;
  files.Remove(row);
  list.rows.erase(list.rows.begin() + row);
  list.selected = -1;
  list.selectedRows.clear();
  return {};
}

void DeleteAllFiles(PairedFileList& files, TableField& list) {
  files.Clear();
  list.rows.clear();
  list.selected = -1;
  list.selectedRows.clear();
}

void ResolvePairs(SourceReferencePairs& pairs, const PairedFileList& sources,
                  const PairedFileList& references, const std::string& resultFolder) {
  for (int i = 0; i < pairs.CompletePairs(); ++i) {
    SourceReferencePair& pair = pairs.pairs[static_cast<std::size_t>(i)];
    pair.folder = JoinPath(resultFolder, pair.name);
    pair.sourcePath = sources.slots[pair.source.slot].path;
    pair.referencePath = references.slots[pair.reference.slot].path;
  }
}

}  // namespace tarnlog
