// A scratch start folder with Config/AllRealValue.txt, made the current
// directory, and the main dialog started in it with a recording host: the
// way the page tests reach a page as the program builds it.
#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

#include <chrono>
#include <memory>
#include <string>
#include <thread>

#include "frame/varnel_dlg.h"
#include "platform/folders.h"
#include "platform/recording_host.h"
#include "support/test_support.h"

namespace tarnlog::testing {

class StartFolderFixture : public ::testing::Test {
 protected:
  explicit StartFolderFixture(const std::string& realValues = "Roof,31.5,121.25,10\r\n")
      : previous_(CurrentFolder()) {
    MakeFolder(folder_ / "Config");
    WriteBytes(folder_ / "Config/AllRealValue.txt", realValues);
    PlaceStartFiles(folder_.Path());
    EXPECT_EQ(chdir(folder_.Path().c_str()), 0);
    start_ = CurrentFolder();
  }
  ~StartFolderFixture() override { EXPECT_EQ(chdir(previous_.c_str()), 0); }

  CVarnelDlg& StartDialog() {
    dialog_ = std::make_unique<CVarnelDlg>(
        CommandLine({"tarnlog"}), [this](std::string_view) -> PageHost& { return host_; }, table_);
    dialog_->OnInitDialog();
    return *dialog_;
  }

  // Presses a worker page's action and waits for its finished notice.
  void PressAndWaitForFinish(ActionField& action) {
    action.Press();
    for (int i = 0; i < 600 && host_.finishedCount == 0; ++i)
      std::this_thread::sleep_for(std::chrono::milliseconds(50));
    ASSERT_EQ(host_.finishedCount, 1);
  }
  // Presses a worker page's action and waits for the one message it gives.
  void PressAndWaitForMessage(ActionField& action, const std::string& text) {
    const std::size_t before = host_.MessageTexts().size();
    action.Press();
    for (int i = 0; i < 600 && host_.MessageTexts().size() == before; ++i)
      std::this_thread::sleep_for(std::chrono::milliseconds(10));
    ASSERT_EQ(host_.MessageTexts().size(), before + 1);
    EXPECT_EQ(host_.MessageTexts().back(), text);
  }

  TempFolder folder_;
  std::string previous_;
  std::string start_;
  RecordingHost host_;
  RealValueTable table_;
  std::unique_ptr<CVarnelDlg> dialog_;
};

}  // namespace tarnlog::testing
