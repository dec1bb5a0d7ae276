// Fuzz target of the real values: the input is Config/AllRealValue.txt of a
// start folder of the entry's own. The loader reads it, the Static page's
// editor starts over what was loaded, and Add, Modify and Delete each
// rewrite the file, which is then loaded once more.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>
#include <string_view>

#include "frame/coordinate_fields.h"
#include "frame/fields.h"
#include "frame/page.h"
#include "frame/real_value_table.h"
#include "fuzz_folder.h"
#include "pages/static/real_value_store.h"
#include "platform/recording_host.h"

namespace {

// The page the editor's fields belong to; nothing here runs a page.
class Parent : public tarnlog::PageParent {
 public:
  const tarnlog::CommandLine& Arguments() const override { return arguments_; }
  tarnlog::RealValueTable& RealValueStore() override { return table_; }
  void NoteSwitchRun(const tarnlog::Page&) override {}
  void NoteIgnoredSwitch(std::string_view) override {}

 private:
  tarnlog::CommandLine arguments_;
  tarnlog::RealValueTable table_;
};

// On the heap: a table is 1000 rows.
struct Editing {
  Parent parent;
  tarnlog::RecordingHost host;
  tarnlog::Page page{parent, host, "llherroRTKStatic"};
  tarnlog::ChoiceField realValueType{page, "RealValueType"};
  tarnlog::CoordinateFields realValueFields{page, "Real Value"};
  tarnlog::ChoiceField master{page, "Master"};
  tarnlog::CoordinateFields masterFields{page, "Master"};
  tarnlog::ChoiceField slave{page, "Slave"};
  tarnlog::CoordinateFields slaveFields{page, "Slave"};
  tarnlog::TextField addName{page, "Add RealValueType"};
  tarnlog::Coordinates realValue;
  tarnlog::Coordinates masterValue;
  tarnlog::Coordinates slaveValue;
  tarnlog::RealValueTable& table = parent.RealValueStore();

  tarnlog::RealValueEditor Editor(const std::string& path) {
    return {table,
            {realValueType, realValueFields, realValue},
            {master, masterFields, masterValue},
            {slave, slaveFields, slaveValue},
            addName,
            host,
            path};
  }
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string& folder = tarnlog::fuzz::Folder({"Config"});
  const std::string path = folder + std::string(tarnlog::kRealValueFile);
  tarnlog::fuzz::WriteNew(path, std::string_view(reinterpret_cast<const char*>(data), size));

  auto editing = std::make_unique<Editing>();
  tarnlog::LoadRealValues(editing->table, folder, editing->host);
  tarnlog::RealValueEditor editor = editing->Editor(path);
  if (!tarnlog::StartRealValueEditor(editor)) std::abort();  // the file is there

  // A new point beside what was loaded, then the loaded first point
  // written back over itself (whatever its fields hold: a refused check
  // changes nothing), then the middle entry deleted.
  for (tarnlog::CoordinateFields* fields :
       {&editing->realValueFields, &editing->masterFields, &editing->slaveFields}) {
    fields->latitude.text = "-12.5";
    fields->longitude.text = "179.25";
    fields->height.text = "3";
  }
  editing->addName.text = "fuzz point";
  tarnlog::fuzz::Renew(path);  // each action saves the whole table anew
  tarnlog::AddRealValue(editor);
  editing->realValueType.Select(0);
  tarnlog::ApplyRealValueSelection(editor);
  tarnlog::fuzz::Renew(path);
  tarnlog::ModifyRealValue(editor);
  editing->realValueType.Select(static_cast<int>(editing->realValueType.entries.size() / 2));
  tarnlog::fuzz::Renew(path);
  tarnlog::DeleteRealValue(editor);

  // What was saved loads again.
  editing->table.Clear();
  tarnlog::LoadRealValues(editing->table, folder, editing->host);
  return 0;
}
