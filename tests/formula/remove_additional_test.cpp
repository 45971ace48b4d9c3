#include "formula/remove_additional.h"

#include <gtest/gtest.h>

#include <stdexcept>

#include "formula/computed_session.h"

namespace velk {
namespace {

class RemovingAdditional : public testing::Test, protected test::ComputedSession {
 protected:
  void Remove(const std::string& chosen) {
    mnuToolsRemove_Click(state, dialogs, graphs,
                         [&](const OperatorText& title, const OperatorText& prompt, const auto& entries) {
                           ++asked_;
                           title_ = title.English();
                           prompt_ = prompt.English();
                           entries_ = entries;
                           return chosen;
                         });
  }

  int asked_ = 0;
  std::string title_, prompt_;
  std::vector<std::string> entries_;
};

TEST_F(RemovingAdditional, AsksWhichOne) {
  Add("1", "One");
  Add("2", "Two");
  Remove("");
  EXPECT_EQ(title_, "Remove Additional Parameter");
  EXPECT_EQ(prompt_, "Select Additional Parameter to Remove");
  EXPECT_EQ(entries_, (std::vector<std::string>{"One", "Two"}));
}

TEST_F(RemovingAdditional, LeavesEverythingOnCancel) {
  Add("1", "One");
  Remove("");
  EXPECT_EQ(state.NumberOfFormulae, 1);
  EXPECT_EQ(graphs.created, 0);
}

TEST_F(RemovingAdditional, TakesTheChosenOneOutAndRebuildsTheGraphs) {
  Add("1", "One");
  Add("2", "Two");
  Add("3", "Three");
  Remove("Two");
  EXPECT_EQ(state.NumberOfFormulae, 2);
  EXPECT_EQ(state.TotalParameters, 5);
  EXPECT_EQ(state.Formula, (std::vector<std::string>{"", "1", "3"}));
  EXPECT_EQ(state.AdditionalParameters[2].name, "Three");
  EXPECT_EQ(state.CurrentParameters[5].name, "Three");
  EXPECT_EQ(graphs.created, 1);
  // "Three" keeps its graph, 6, and is curve 5 now.
  EXPECT_EQ(state.GraphSlots[1][6], 5);
  EXPECT_EQ(state.GraphCount, 3);
}

TEST_F(RemovingAdditional, TakesTheLastOneOut) {
  Add("1", "One");
  Remove("One");
  EXPECT_EQ(state.NumberOfFormulae, 0);
  EXPECT_EQ(state.TotalParameters, 3);
  EXPECT_EQ(state.Formula.size(), 1U);
  EXPECT_EQ(state.CurrentParameters[4].name, "");
}

TEST_F(RemovingAdditional, TellsChannelsOfOneNameApart) {
  Add("1", "Additional Parameter 2");
  Add("2", "Additional Parameter 2");
  Remove("2: Additional Parameter 2");
  EXPECT_EQ(entries_, (std::vector<std::string>{"1: Additional Parameter 2", "2: Additional Parameter 2"}));
  EXPECT_EQ(state.Formula, (std::vector<std::string>{"", "1"}));
}

TEST_F(RemovingAdditional, OffersAChannelWithoutAName) {
  Add("1", "");
  Remove("1: ");
  EXPECT_EQ(state.NumberOfFormulae, 0);
}

TEST_F(RemovingAdditional, AsksNothingWhereThereIsNone) {
  Remove("");
  EXPECT_EQ(asked_, 0);
}

TEST_F(RemovingAdditional, ShowsAFailureUnderATitleOfItsOwn) {
  Add("1", "One");
  dialogs.Expect("no window - mnuToolsRemove_Click", Answer::Cancel);
  mnuToolsRemove_Click(state, dialogs, graphs,
                       [](const OperatorText&, const OperatorText&, const std::vector<std::string>&) -> std::string {
                         throw std::runtime_error("no window");
                       });
  EXPECT_EQ(dialogs.shown.at(0).title, "Remove additional ... error");
  EXPECT_EQ(state.NumberOfFormulae, 1);
}

}  // namespace
}  // namespace velk
