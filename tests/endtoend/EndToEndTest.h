// What every end-to-end case shares.
#pragma once

#include <gtest/gtest.h>

#include "MessageDialogIds.h"
#include "fakes/Printing.h"
#include "operator/Operator.h"
#include "resource.h"

namespace endtoend {

using enum base::MessageId;

/// Leaves the workstation tidy before and after each case.
class EndToEndTest : public ::testing::Test {
 protected:
  void SetUp() override { TidyUp(); }
  void TearDown() override { TidyUp(); }
};

}  // namespace endtoend
