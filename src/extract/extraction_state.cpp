#include "extract/extraction_state.h"

namespace tarnlog {

ExtractionState& SharedExtractionState() {
  static ExtractionState state;
  return state;
}

}  // namespace tarnlog
