#include "pages/simulator/simulator_scripts.h"

#include "platform/fast_format.h"
#include "platform/script_text.h"

namespace tarnlog {
namespace {

std::string Fixed(double value) {
  return FormatString("%lf", value);
}

}  // namespace

std::string SmltPreprocessText(const SimulatorPreprocess& script) {
  std::string text = Quoted(script.extractorPath) + " " + Quoted(script.simulatorPath) + " -smlt ";
  switch (script.type) {
    case kThirdAcademySimulator:
      return text + "-3 " + Quoted(script.middleFile) + "\r\n";
    case kFourthAcademySimulator:
      return text + "-4 " + Quoted(script.middleFile) + "\r\n";
    case kSpirentSimulator:
      return text + "-s -st " + Fixed(script.startTime) + " " + Quoted(script.middleFile) + "\r\n";
    default:
      return text;
  }
}

std::string ProcessFileText(const SimulatorLogScript& script) {
  return script.drive + "\r\ncd " + Quoted(script.outputFolder) + "\r\nSimulatorDataProcess.exe " +
         Quoted(script.outputFolder) + " " + Quoted(script.logPath) + " " +
         Quoted(script.middleFile) + " " + Fixed(-script.gpstDifference) + " " +
         Fixed(-script.utcDifference) + "  " + std::to_string(script.index) + "\r\nexit\r\n";
}

}  // namespace tarnlog
