#include "pages/heading/heading_scripts.h"

#include "platform/fast_format.h"
#include "platform/paths.h"
#include "platform/script_text.h"

namespace tarnlog {
namespace {

std::string ControlLine(const char* word, const Coordinates& values) {
  return FormatString("%s %.9lf %.9lf %.6lf\n", word, values.latitude, values.longitude,
                      values.height);
}

// The drive line, then the cd into the folder; the drive's line end is the
// one that opens the cd.
std::string EnterFolder(const std::string& drive, const std::string& folder) {
  return drive + "\ncd " + Quoted(folder);
}

}  // namespace

std::string HeadingControlText(const Coordinates& base, const Coordinates& ant1,
                               const Coordinates& ant2) {
  // "Tpye" is the spelling the tool reads.
  return "Tpye:BLH\n" + ControlLine("Base:", base) + ControlLine("Rover:", ant1) +
         ControlLine("Rover2:", ant2);
}

std::string StaticHeadingScriptText(const StaticHeadingScript& script) {
  const std::string control = JoinPath(script.folder, kHeadingControlName);
  return EnterFolder(script.drive, script.folder) + "\nHeadingErrorPro.exe static yes " +
         Quoted(script.logPath) + " " + Quoted(control) + "   " + script.trueHeading + "  " +
         std::to_string(script.fileNumber) + "  \nexit\n";
}

std::string DynamicHeadingScriptText(const DynamicHeadingScript& script) {
  // The first cd has a blank after its closing quote, the second none.
  return EnterFolder(script.drive, script.pairFolder) + " \nHeadingErrorPro.exe dynamic yes " +
         Quoted(script.sourcePath) + " " + Quoted(script.referencePath) + " " + script.sourceKind +
         "  " + script.referenceKind + "\ncd " + Quoted(script.pairFolder) + "\nexit\n";
}

std::string HeadingReportScriptText(const HeadingReportScript& script) {
  // The report line is written by its pattern alone: no line end after it
  // and no exit line.
  return EnterFolder(script.drive, script.resultFolder) + "\nGenerateReport.exe Heading " +
         Quoted(script.reportPath) + " " + Quoted(script.dirlistPath);
}

}  // namespace tarnlog
