// Counts what keeps a component server loaded.
#include "common/ServerUse.h"

#include <atomic>

namespace reference {
namespace {

// One number per loaded server: COM asks the DLL as a whole, not an object.
std::atomic<long> uses{0};

}  // namespace

ServerUse::ServerUse() {
  ++uses;
}
ServerUse::~ServerUse() {
  --uses;
}

void ServerUse::Lock(bool lock) {
  uses += lock ? 1 : -1;
}

bool ServerUse::Any() {
  return uses != 0;
}

}  // namespace reference
