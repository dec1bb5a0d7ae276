// The option vector of an extraction run: which tables it writes and where.
#pragma once

#include <array>
#include <string>
#include <vector>

#include "extract/tables.h"

namespace tarnlog {

struct ExtractOptions {
  std::string outputFolder;  // argv[0]
  std::string capturePath;   // argv[2], whatever the options say
  // Tables an option asked for, with their paths; a later option replaces an
  // earlier path.
  std::array<bool, kTableCount> wanted{};
  std::array<std::string, kTableCount> paths{};
  // Asked-for tables in the order their options stand in the option table.
  std::vector<TableId> optionOrder;
  // Counted per recognised option; only tested for zero.
  int outputCount = 0;

  bool Wants(TableId id) const { return wanted[static_cast<std::size_t>(id)]; }
  const std::string& PathOf(TableId id) const { return paths[static_cast<std::size_t>(id)]; }
};

// Parses argv[3] on. Arguments that don't begin with '-' are skipped; an
// option's values are read from the following positions up to argv[argc]
// (the full vector's last value lies one past argc, where a command line has
// its null), and a null there leaves the table and those after it unnamed.
// `argv` must hold argc + 1 entries. Unknown options print
// "*****command error\n" where the system does, and parsing goes on.
ExtractOptions ParseExtractOptions(int argc, char** argv);

// The folder joined with a file name, as every table path is built.
std::string TablePath(const std::string& folder, const std::string& name);

}  // namespace tarnlog
