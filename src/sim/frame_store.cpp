#include "sim/frame_store.h"

#include <nlohmann/json.hpp>

namespace ostin::sim {

nlohmann::json FrameStore::ToJson() const {
  return nlohmann::json::object();
}

FrameStore FrameStore::FromJson(const nlohmann::json&) {
  return FrameStore{};
}

} // namespace ostin::sim
