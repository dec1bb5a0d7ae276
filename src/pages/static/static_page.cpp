#include "pages/static/static_page.h"

namespace tarnlog {

llherroRTKStatic::llherroRTKStatic(PageParent& parent, PageHost& host)
    : Page(parent, host, "llherroRTKStatic"),
      realValueType(*this, "RealValueType"),
      realValueCoordinates(*this, "Real Value"),
      master(*this, "Master"),
      masterCoordinates(*this, "Master"),
      slave(*this, "Slave"),
      slaveCoordinates(*this, "Slave"),
      addRealValueType(*this, "Add RealValueType"),
      addAction(*this, "Add",
                [this] {
                  RealValueEditor editor = Editor();
                  AddRealValue(editor);
                }),
      modifyAction(*this, "Modify",
                   [this] {
                     RealValueEditor editor = Editor();
                     ModifyRealValue(editor);
                   }),
      deleteAction(*this, "Delete", [this] {
        RealValueEditor editor = Editor();
        DeleteRealValue(editor);
      }) {
  const auto apply = [this] {
    RealValueEditor editor = Editor();
    ApplyRealValueSelection(editor);
  };
  realValueType.onChanged = apply;
  master.onChanged = apply;
  slave.onChanged = apply;
}

void llherroRTKStatic::Start() {
  Page::Start();
  RealValueEditor editor = Editor();
  if (!StartRealValueEditor(editor)) return;
  RefuseAutoTestSwitch(kStaticSwitch);
}

RealValueEditor llherroRTKStatic::Editor() {
  return RealValueEditor{Parent().RealValueStore(),
                         {realValueType, realValueCoordinates, realValue},
                         {master, masterCoordinates, masterValue},
                         {slave, slaveCoordinates, slaveValue},
                         addRealValueType,
                         Host(),
                         StartFolder() + std::string(kRealValueFile)};
}

}  // namespace tarnlog
