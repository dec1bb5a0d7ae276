#include "extract/pattern_set.h"

#include <algorithm>
#include <deque>
#include <stdexcept>

namespace tarnlog {

int PatternSet::Add(std::string_view pattern) {
  for (std::size_t i = 0; i < patterns_.size(); ++i) {
    if (patterns_[i] == pattern) return static_cast<int>(i);
  }
  if (patterns_.size() >= kMaxPatterns || pattern.empty()) {
    throw std::logic_error("pattern set is full or pattern empty");
  }
  patterns_.push_back(pattern);
  return static_cast<int>(patterns_.size() - 1);
}

void PatternSet::Build() {
  // Bytes that occur in no pattern share class 0.
  byteClass_.fill(0);
  classCount_ = 1;
  for (std::string_view pattern : patterns_) {
    for (char c : pattern) {
      auto& cls = byteClass_[static_cast<unsigned char>(c)];
      if (cls == 0) cls = static_cast<std::uint8_t>(classCount_++);
    }
  }

  // The trie, with -1 for a missing edge.
  std::vector<std::vector<int>> edges(1, std::vector<int>(classCount_, -1));
  std::vector<std::vector<std::uint16_t>> ends(1);
  lengths_.clear();
  for (std::size_t id = 0; id < patterns_.size(); ++id) {
    int state = 0;
    for (char c : patterns_[id]) {
      const int cls = byteClass_[static_cast<unsigned char>(c)];
      if (edges[state][cls] < 0) {
        edges[state][cls] = static_cast<int>(edges.size());
        edges.emplace_back(classCount_, -1);
        ends.emplace_back();
      }
      state = edges[state][cls];
    }
    ends[state].push_back(static_cast<std::uint16_t>(id));
    lengths_.push_back(static_cast<std::uint16_t>(patterns_[id].size()));
  }

  // Breadth-first: failure links become full transitions, outputs merge.
  const int stateCount = static_cast<int>(edges.size());
  std::vector<int> fail(stateCount, 0);
  next_.assign(static_cast<std::size_t>(stateCount) * classCount_, 0);
  std::deque<int> queue;
  for (int cls = 0; cls < classCount_; ++cls) {
    const int child = edges[0][cls];
    if (child >= 0) {
      next_[cls] = static_cast<std::uint16_t>(child);
      queue.push_back(child);
    }
  }
  std::vector<int> order;
  while (!queue.empty()) {
    const int state = queue.front();
    queue.pop_front();
    order.push_back(state);
    for (int cls = 0; cls < classCount_; ++cls) {
      const int child = edges[state][cls];
      const std::size_t slot = static_cast<std::size_t>(state) * classCount_ + cls;
      if (child >= 0) {
        fail[child] = next_[static_cast<std::size_t>(fail[state]) * classCount_ + cls];
        next_[slot] = static_cast<std::uint16_t>(child);
        queue.push_back(child);
      } else {
        next_[slot] = next_[static_cast<std::size_t>(fail[state]) * classCount_ + cls];
      }
    }
  }
  for (int state : order) {
    for (std::uint16_t id : ends[fail[state]]) {
      if (std::find(ends[state].begin(), ends[state].end(), id) == ends[state].end()) {
        ends[state].push_back(id);
      }
    }
  }
  outputBegin_.assign(stateCount + 1, 0);
  outputs_.clear();
  for (int state = 0; state < stateCount; ++state) {
    outputBegin_[state] = static_cast<std::uint32_t>(outputs_.size());
    outputs_.insert(outputs_.end(), ends[state].begin(), ends[state].end());
  }
  outputBegin_[stateCount] = static_cast<std::uint32_t>(outputs_.size());
}

void PatternSet::Match(const char* text, std::size_t length, PatternHits& hits) const {
  const std::uint16_t* next = next_.data();
  const std::uint32_t* begin = outputBegin_.data();
  const int classes = classCount_;
  std::uint32_t state = 0;
  for (std::size_t i = 0; i < length; ++i) {
    state = next[state * classes + byteClass_[static_cast<unsigned char>(text[i])]];
    const std::uint32_t first = begin[state];
    const std::uint32_t last = begin[state + 1];
    for (std::uint32_t k = first; k < last; ++k) {
      const int id = outputs_[k];
      if (!hits.Has(id)) {
        hits.found[id >> 6] |= std::uint64_t{1} << (id & 63);
        hits.firstStart[id] = static_cast<std::uint32_t>(i + 1 - lengths_[id]);
      }
    }
  }
}

}  // namespace tarnlog
