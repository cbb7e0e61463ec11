// Linked into a test program that changes the machine below it: no case runs where that was not made for tests.
#include <gtest/gtest.h>

#include <exception>

#include "operator/TestMachine.h"

namespace {

class OnTestMachine : public testing::Environment {
 public:
  void SetUp() override {
    try {
      endtoend::RequireTestHost();
    } catch (const std::exception& refusal) {
      FAIL() << refusal.what();
    }
  }
};

const testing::Environment* const kGuard = testing::AddGlobalTestEnvironment(new OnTestMachine);

}  // namespace
