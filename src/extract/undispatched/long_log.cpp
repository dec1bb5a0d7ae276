#include "extract/undispatched/long_log.h"

#include <cstring>

namespace tarnlog {

bool OpenLongLog(const char* sentence, const char* name, LongLog* log) {
  if (sentence == nullptr || sentence[0] != '#') return false;
  const std::size_t n = std::strlen(name);
  if (std::strncmp(sentence + 1, name, n) != 0 || sentence[n + 1] != ',') return false;
  if (!ReadLongHeader(sentence, &log->header)) return false;
  const char* semicolon = std::strchr(sentence, ';');
  if (semicolon == nullptr) return false;
  log->body = semicolon + 1;
  return true;
}

}  // namespace tarnlog
