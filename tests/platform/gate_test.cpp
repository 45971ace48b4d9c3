#include "platform/loop/gate.h"

#include <gtest/gtest.h>

namespace velk {
namespace {

struct CountingGate {
  CountingGate() {
    gate.onOpened = [this] { ++openings; };
  }
  Gate gate;
  int openings = 0;
};

TEST(Gate, IsOpenAtFirst) {
  EXPECT_TRUE(Gate().IsOpen());
}

TEST(Gate, IsShutForAScopeAndTellsWhenItOpensAgain) {
  CountingGate counting;
  {
    const GateState working(counting.gate, GateState::Shut);
    EXPECT_FALSE(counting.gate.IsOpen());
    EXPECT_EQ(counting.openings, 0);
  }
  EXPECT_TRUE(counting.gate.IsOpen());
  EXPECT_EQ(counting.openings, 1);
}

TEST(Gate, OpensForABoxOnTopOfASampleAndShutsBehindIt) {
  CountingGate counting;
  const GateState sample(counting.gate, GateState::Shut);
  {
    const GateState box(counting.gate, GateState::Open);
    EXPECT_TRUE(counting.gate.IsOpen());
    EXPECT_EQ(counting.openings, 1);
    {
      const GateState laterSample(counting.gate, GateState::Shut);
      EXPECT_FALSE(counting.gate.IsOpen());
    }
    EXPECT_TRUE(counting.gate.IsOpen());
    EXPECT_EQ(counting.openings, 2);
  }
  EXPECT_FALSE(counting.gate.IsOpen());
  EXPECT_EQ(counting.openings, 2);
}

TEST(Gate, SaysNothingWhereItIsOpenAlready) {
  CountingGate counting;
  {
    const GateState box(counting.gate, GateState::Open);
    const GateState boxOnTop(counting.gate, GateState::Open);
  }
  EXPECT_TRUE(counting.gate.IsOpen());
  EXPECT_EQ(counting.openings, 0);
}

TEST(Gate, NeedsNobodyWhoListens) {
  Gate gate;
  { const GateState sample(gate, GateState::Shut); }
  EXPECT_TRUE(gate.IsOpen());
}

TEST(Gate, IsPutBackWhenAScopeIsLeftByAnError) {
  CountingGate counting;
  try {
    const GateState sample(counting.gate, GateState::Shut);
    throw 1;
  } catch (int) {
  }
  EXPECT_TRUE(counting.gate.IsOpen());
  EXPECT_EQ(counting.openings, 1);
}

}  // namespace
}  // namespace velk
