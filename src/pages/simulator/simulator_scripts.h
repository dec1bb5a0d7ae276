// What the simulator comparison writes: the script that turns the
// simulator's truth file into one middle file, and the script of each
// receiver log that compares the log with that middle file.
#pragma once

#include <string>

namespace tarnlog {

// The simulators of the "SmltType" list, by index: the two academies'
// simulators and the Spirent, the only one that needs the scenario's start.
enum SimulatorType {
  kThirdAcademySimulator = 0,
  kFourthAcademySimulator = 1,
  kSpirentSimulator = 2
};

struct SimulatorPreprocess {
  std::string extractorPath;  // ExtractAndProcessData.exe
  std::string simulatorPath;  // the truth file
  std::string middleFile;
  int type = 0;
  double startTime = 0.0;  // seconds of week, read for the third type only
};

// SmltPreprocess.bat in its written form: one line with an explicit
// "\r\n" and no exit line. The model's option follows "-smlt"; a type off
// the list writes none and no line end.
std::string SmltPreprocessText(const SimulatorPreprocess& script);

struct SimulatorLogScript {
  std::string drive;
  std::string outputFolder;
  std::string logPath;
  std::string middleFile;
  double gpstDifference = 0.0;  // simulator minus receiver, as typed
  double utcDifference = 0.0;
  int index = 1;  // the log's number in the list, from 1
};

// ProcessFile.bat in its written form, every line ending in "\r\n". The
// tool takes the receiver-minus-simulator offsets, so both differences are
// negated; two blanks stand before the index.
std::string ProcessFileText(const SimulatorLogScript& script);

}  // namespace tarnlog
