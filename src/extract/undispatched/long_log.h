// The long header of the undispatched logs and where their body starts.
#pragma once

#include "extract/log_fields.h"

namespace tarnlog {

struct LongLog {
  LongHeader header;
  const char* body = nullptr;  // behind the ';'
};

// False unless `sentence` is "#<name>," with a readable week and seconds
// and a ';'.
bool OpenLongLog(const char* sentence, const char* name, LongLog* log);

}  // namespace tarnlog
