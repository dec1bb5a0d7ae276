// The pairing of source logs (boards under test) with reference files, as
// the Dynamic and Heading pages both do it: two file lists of 100 slots and
// up to 32 pairs, formed source first by double-clicks on the lists.
//
// `pairCount` counts selections, not pairs: selection i belongs to pair
// i / 2, the even one on the source side, the odd one on the reference
// side. An odd count means that a source waits for its reference, and only
// pairCount / 2 pairs are complete. A pair keeps slot numbers, not paths:
// the paths are looked up when a run starts, so a file deleted from its list
// after pairing changes what the pair means.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "frame/fields.h"
#include "frame/file_slot.h"

namespace tarnlog {

inline constexpr std::size_t kPairedFileSlots = 100;
inline constexpr std::size_t kMaxSourceReferencePairs = 32;

inline constexpr std::string_view kPairNoItemSelected = "No item was selected!";
inline constexpr std::string_view kPairSameFile = "You could not select the same file";
inline constexpr std::string_view kPairRepeated = "You Have Choose This Group!";
inline constexpr std::string_view kPairListEmpty = "Please Choose DD File Firstly!";
inline constexpr std::string_view kPairWaiting = "You should select paired before delete item!";

// A file of the source or reference list: its path texts and the type value
// the page gave it.
struct PairedFileSlot : FileSlotPaths {
  int type = 0;
};

struct PairedFileList {
  std::array<PairedFileSlot, kPairedFileSlots> slots{};
  int count = 0;
  std::string lastPath;  // of the file added last; names the default result folder

  // Takes `path` into the next slot with `type`; false when all 100 are in use.
  bool Add(const std::string& path, int type);
  // The slot of `row`; its path texts move up and the type values stay
  // with the slot numbers.
  void Remove(int row);
  void Clear();
};

// One side of a pair as the double-click took it.
struct PairMember {
  std::uint8_t slot = 0;
  int type = 0;
  std::string name;  // without folder and extension
};

struct SourceReferencePair {
  PairMember source;
  PairMember reference;
  std::string name;  // source name, "-", reference name
  // Filled when a run starts.
  std::string folder;
  std::string sourcePath;
  std::string referencePath;
};

// The messages that differ between the pages.
struct PairingTexts {
  std::string_view sourceFirst;      // a reference picked while no source waits
  std::string_view referenceNext;    // a source picked while one waits
  std::string_view sourceListEmpty;  // Delete One Item on an empty source list
  std::string_view referenceListEmpty;
};

struct SourceReferencePairs {
  std::array<SourceReferencePair, kMaxSourceReferencePairs> pairs{};
  int pairCount = 0;

  int CompletePairs() const { return pairCount / 2; }
  void Clear();
};

// The member selection `selection` stands for (even: source, odd: reference).
PairMember& SelectionMember(SourceReferencePairs& pairs, int selection);

// A double-click on the source list with these rows selected: each row
// becomes the next selection, and a pair row showing the number and the
// source name opens at each even count. Two rows at once form a pair of
// two sources. Returns the message to show, or empty.
std::string_view PickSources(SourceReferencePairs& pairs, const PairedFileList& sources,
                             const std::vector<int>& rows, TableField& pairList,
                             const PairingTexts& texts);

// A double-click on the reference list: completes the waiting pair, unless
// its two names are the same or the pair's name stands in an earlier pair,
// in which case the source waits on.
std::string_view PickReferences(SourceReferencePairs& pairs, const PairedFileList& references,
                                const std::vector<int>& rows, TableField& pairList,
                                const PairingTexts& texts);

// Delete One Item and Delete All Item on the pair list.
std::string_view DeleteOnePair(SourceReferencePairs& pairs, TableField& pairList);
void DeleteAllPairs(SourceReferencePairs& pairs, TableField& pairList);

// Delete One Item and Delete All Item on a file list (rows keep their numbers).
std::string_view DeleteOneFile(PairedFileList& files, TableField& list, std::string_view emptyText);
void DeleteAllFiles(PairedFileList& files, TableField& list);

// The pair folders below `resultFolder` and the paths of both members,
// looked up by slot number in the lists as they are now.
void ResolvePairs(SourceReferencePairs& pairs, const PairedFileList& sources,
                  const PairedFileList& references, const std::string& resultFolder);

}  // namespace tarnlog
