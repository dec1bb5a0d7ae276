#include "extract/capture_views.h"

#include <sys/mman.h>
#include <sys/types.h>

namespace tarnlog {

const char* MappedViews::operator()(std::uint64_t offset, std::size_t length) {
  Release();
  if (length == 0) return nullptr;
  void* mapped = ::mmap(nullptr, length, PROT_READ, MAP_PRIVATE, fd_, static_cast<off_t>(offset));
  if (mapped == MAP_FAILED) return nullptr;
  mapped_ = mapped;
  mappedLength_ = length;
  ::madvise(mapped, length, MADV_SEQUENTIAL | MADV_WILLNEED);
  return static_cast<const char*>(mapped);
}

void MappedViews::Release() {
  if (mapped_) ::munmap(mapped_, mappedLength_);
  mapped_ = nullptr;
  mappedLength_ = 0;
}

}  // namespace tarnlog
