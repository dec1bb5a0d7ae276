// #PERFSTAT: the receiver's task loads. The log lists, for each task, its
// name, a run count and a load; the table keeps the tasks of a fixed list in
// that list's order, one row each, and the task name table receives the list
// once per run.
#include <algorithm>
#include <cctype>
#include <cstring>

#include "extract/status/log_scan.h"
#include "extract/status/status_extractors.h"

namespace tarnlog {
namespace {

constexpr const char* kTaskNames[] = {
    "GSPMain",         "IDLE",         "SerialPort0_IO",  "SerialPort1_IO", "SerialPort2_IO",
    "Tmr Svc",         "StartGsp",     "GSPBBPackage",    "commist1",       "SerialPort1_Msg",
    "SerialPort2_Msg", "GSPBBMessage", "GspMatchedRTKDe", "commist2",       "GspEventDev",
    "SerialPort0_Msg", "GspNVM",       "GspRTCMDecoder",
};

constexpr char kNameBlock[] =
    "GSPMain\r\nIDLE\r\nSerialPort0_IO\r\nSerialPort1_IO\r\nSerialPort2_IO\r\nTmr "
    "Svc\r\nStartGsp\r\n"
    "GSPBBPackage\r\ncommist1\r\nSerialPort1_Msg\r\nSerialPort2_Msg\r\nGSPBBMessage\r\n"
    "GspMatchedRTKDe\r\ncommist2\r\nGspEventDev\r\nSerialPort0_Msg\r\nGspNVM\r\nGspRTCMDecoder\r\n";

// The tasks of one sentence. Names longer than the buffer keep their start,
// which is all the compare looks at.
struct TaskRecord {
  char name[32];
  int count;
  double load;
};
constexpr int kMaxTasks = 64;

struct TaskList {
  TaskRecord records[kMaxTasks];
  int size = 0;
};

bool NameCharacter(char ch) {
  return std::isalnum(static_cast<unsigned char>(ch)) != 0;
}

// The name without what surrounds it (quotes, brackets, blanks).
TextSpan Stripped(TextSpan name) {
  while (name.length > 0 && !NameCharacter(name.begin[0])) {
    ++name.begin;
    --name.length;
  }
  while (name.length > 0 && !NameCharacter(name.begin[name.length - 1]))
    --name.length;
  return name;
}

// The triples "%[^,]", "%d", "%lf" of the body, up to the first that can't
// be read.
void CollectTasks(const char* body, TaskList& list) {
  FieldCursor r(body);
  while (list.size < kMaxTasks) {
    TextSpan name;
    TaskRecord& record = list.records[list.size];
    Span(r, ',', name).Comma().Decimal(record.count).Comma().Double(record.load);
    if (!r.ok) return;
    const TextSpan stripped = Stripped(name);
    const std::size_t length = std::min(stripped.length, sizeof record.name - 1);
    std::memcpy(record.name, stripped.begin, length);
    record.name[length] = '\0';
    ++list.size;
    if (*r.at != ',') return;
    ++r.at;
  }
}

const TaskRecord* FindTask(const TaskList& list, const char* name) {
  const std::size_t length = std::strlen(name);
  for (int i = 0; i < list.size; ++i) {
    if (std::strncmp(list.records[i].name, name, length) == 0) return &list.records[i];
  }
  return nullptr;
}

}  // namespace

void ExtractPerfstat(const DispatchContext& c) {
  // The compact header: its time status is the field ",FINE,".
  if (!Contains(c.sentence, ",FINE,")) return;
  int week = 0, milliseconds = 0;
  FieldCursor head(c.sentence);
  const char* body = BodyOf(c.sentence);
  if (!StatusHeader(head, week, milliseconds).ok || body == nullptr) return;
  const double seconds = milliseconds / 1000.0;

  int nvmLoops = 0;
  if (const char* nvm = std::strstr(c.sentence, "NVMLOOPCOUNT:")) {
    FieldCursor r(nvm);
    SkipUntil(r, ':').Char(':').Decimal(nvmLoops);
  }

  TaskList tasks;
  CollectTasks(body, tasks);

  bool* pending = c.settings.perfstatHeaderPending;
  if (pending != nullptr && *pending) {
    if (OutFile* names = c.Table(1)) {
      names->Write(kNameBlock);
      names->Flush();
    }
    *pending = false;
  }

  OutFile* out = c.Table(0);
  if (out == nullptr) return;
  for (const char* name : kTaskNames) {
    if (const TaskRecord* task = FindTask(tasks, name)) {
      out->Printf("%d %.3f %d %.3f %d \r\n", week, seconds, task->count, task->load, nvmLoops);
    }
  }
}

}  // namespace tarnlog
