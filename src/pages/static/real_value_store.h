// The Static page's editing of the real-value table: its three lists and
// coordinate sets, and the Add, Modify and Delete actions that change the
// table and rewrite Config/AllRealValue.txt.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "frame/coordinate_fields.h"
#include "frame/fields.h"
#include "frame/real_value_table.h"
#include "platform/host.h"

namespace tarnlog {

inline constexpr std::string_view kRealValueMissing = "doesn't exist";
inline constexpr std::string_view kAddRealValueErrorTitle = "Add RealValue Error";
inline constexpr std::string_view kRealValueNameEmpty = "Please confirm RealValue Type Name!";
inline constexpr std::string_view kRealValueNameTaken = "Already Exists a same name!";
// Says 32 although the table holds 1000 rows; both stay as they are.
inline constexpr std::string_view kRealValueTableFull =
    "Too many RealValueType,the max number is 32!";
inline constexpr std::string_view kDeleteRealValueTitle = "Delete RealValue Type";
inline constexpr std::string_view kDeleteRealValueQuestion = "Do you confirm to delete?";

// A list together with the set it selects: the numbers the page holds and
// the edit boxes that show them.
struct RealValueSet {
  ChoiceField& list;
  CoordinateFields& fields;
  Coordinates& values;
};

// What the actions work on; the Static page builds it over its members.
struct RealValueEditor {
  RealValueTable& table;
  RealValueSet realValue;  // "RealValueType": the editing area
  RealValueSet master;
  RealValueSet slave;
  TextField& addName;  // "Add RealValueType"
  PageHost& host;
  std::string filePath;  // <start folder>/Config/AllRealValue.txt
};

// Page start: tests the file for reading and writing (on failure shows the
// path followed by "doesn't exist" and returns false), then fills the three
// lists, selects entry 0 of each and applies the selection.
bool StartRealValueEditor(RealValueEditor& editor);

// Appends every non-free name, in row order, to the three lists.
void FillRealValueLists(const RealValueTable& table, ChoiceField& realValueType,
                        ChoiceField& master, ChoiceField& slave);

// For RealValueType, Master and Slave in turn: the first row whose name
// equals the selected text (no selection matches the first free row) gives
// its coordinates to that list's set. Then all three sets are shown, which
// overwrites whatever was typed into their fields.
void ApplyRealValueSelection(RealValueEditor& editor);

// Reads the three sets from their fields as plain text-to-double
// conversions. Every latitude must lie in -90..90 and every longitude in
// -180..180. When all do, the sets are taken over and nothing is returned;
// otherwise every set stays as it was and the result is the check's message
// about the first field out of range, in the order Real Value, Master,
// Slave and latitude before longitude.
std::optional<std::string> ReadRealValueSets(RealValueEditor& editor);

// The three actions. Add saves every row with eleven decimals, Modify and
// Delete with nine.
void AddRealValue(RealValueEditor& editor);
void ModifyRealValue(RealValueEditor& editor);
void DeleteRealValue(RealValueEditor& editor);

enum class RealValueDecimals { kAfterAdd, kAfterModifyOrDelete };

// Rewrites the whole file, opened "wb": all 1000 rows in order, free ones
// skipped. A file that can't be opened is left as it is, without a message.
void SaveRealValues(const RealValueTable& table, const std::string& path,
                    RealValueDecimals decimals);

}  // namespace tarnlog
