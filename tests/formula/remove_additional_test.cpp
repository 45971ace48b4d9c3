#include "formula/remove_additional.h"

#include <gtest/gtest.h>

#include <optional>
#include <stdexcept>

#include "formula/computed_session.h"

namespace velk {
namespace {

class RemovingAdditional : public testing::Test, protected test::ComputedSession {
 protected:
  /// Chooses an entry, or leaves the list by Cancel.
  void Remove(std::optional<std::string> chosen) {
    dialogs.ExpectChoice("Remove Additional Parameter", std::move(chosen));
    mnuToolsRemove_Click(state, dialogs, graphs);
  }
  const ShownListQuestion& Asked() const { return dialogs.listsAsked.back(); }
};

TEST_F(RemovingAdditional, AsksWhichOne) {
  Add("1", "One");
  Add("2", "Two");
  Remove(std::nullopt);
  EXPECT_EQ(Asked().title, "Remove Additional Parameter");
  EXPECT_EQ(Asked().prompt, "Select Additional Parameter to Remove");
  EXPECT_FALSE(Asked().mayEnter);
  EXPECT_EQ(Asked().entries, (std::vector<std::string>{"One", "Two"}));
}

TEST_F(RemovingAdditional, LeavesEverythingOnCancel) {
  Add("1", "One");
  Remove(std::nullopt);
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
  EXPECT_EQ(Asked().entries, (std::vector<std::string>{"1: Additional Parameter 2", "2: Additional Parameter 2"}));
  EXPECT_EQ(state.Formula, (std::vector<std::string>{"", "1"}));
}

TEST_F(RemovingAdditional, OffersAChannelWithoutAName) {
  Add("1", "");
  Remove("1: ");
  EXPECT_EQ(state.NumberOfFormulae, 0);
}

TEST_F(RemovingAdditional, AsksNothingWhereThereIsNone) {
  mnuToolsRemove_Click(state, dialogs, graphs);
  EXPECT_TRUE(dialogs.listsAsked.empty());
}

TEST_F(RemovingAdditional, ShowsAFailureUnderATitleOfItsOwn) {
  Add("1", "One");
  graphs.onCreate = [] { throw std::runtime_error("no window"); };
  dialogs.ExpectChoice("Remove Additional Parameter", "One");
  dialogs.Expect("no window - mnuToolsRemove_Click", Answer::Cancel);
  mnuToolsRemove_Click(state, dialogs, graphs);
  EXPECT_EQ(dialogs.shown.at(0).title, "Remove additional ... error");
}

}  // namespace
}  // namespace velk
