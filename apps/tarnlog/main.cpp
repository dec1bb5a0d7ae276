// tarnlog: the GNSS receiver test workbench. With fewer than three arguments
// the window (when built); with three or more a headless batch run.
#include <cstdio>
#include <cstring>

#include "frame/frame_texts.h"
#include "frame/varnel_dlg.h"

namespace {

constexpr char kUsage[] =
    "usage: tarnlog                         open the window\n"
    "       tarnlog <positions...> <word>   run one page headless\n"
    "       tarnlog -RS|-N|-CT|-AUTO -PATH <test folder>\n"
    "                                       run an automatic test\n"
    "       tarnlog --help | --version\n"
    "\n"
    "The mode word stands in the last argument, in any letter case, and is\n"
    "looked for in this order: heading, rangeplot, static, continue, kml, test.\n"
    "  static:   <logs...> <latA> <lonA> <hA> <latB> <lonB> <hB> <board> static\n"
    "  continue: <logs...> continue\n"
    "  kml:      <log> <data type from 1> <colour from 0> <line width> kml\n"
    "  heading:  <logs...> <base lat lon h> <ant1 lat lon h> <ant2 lat lon h> heading\n"
    "  test:     <ttff type> <reacq type> <chip> <on> <off> <times> <lat> <lon> <h> "
    "[<rover lat lon h>] <logs...> test\n"
    "  rangeplot: <file> ... single|ref|compare rangeplot\n"
    "Results go to a folder beside the first log; status lines go to standard\n"
    "output and messages to standard error.\n";

}  // namespace

int main(int argc, char** argv) {
  if (argc == 2 && std::strcmp(argv[1], "--help") == 0) {
    std::fputs(kUsage, stdout);
    return 0;
  }
  if (argc == 2 && std::strcmp(argv[1], "--version") == 0) {
    std::printf("%s (%s)\n", std::string(tarnlog::kVersionText).c_str(),
                std::string(tarnlog::kDialogTitle).c_str());
    return 0;
  }
  tarnlog::CVarnelApp app;
  return app.Run(argc, argv);
}
