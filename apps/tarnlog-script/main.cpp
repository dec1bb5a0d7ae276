// tarnlog-script <script.bat>: runs one of the system's scripts from the
// current folder, the way the pages launch them. Its del, move and copy keep
// to the folder tree the script lies in.
#include <cstdio>

#include "platform/folders.h"
#include "platform/script_runner.h"

int main(int argc, char** argv) {
  if (argc < 2) {
    std::fputs("usage: tarnlog-script <script.bat>\n", stderr);
    return 2;
  }
  return tarnlog::RunScriptFile(argv[1], tarnlog::CurrentFolder());
}
