// Formulas with the texts that an independent walk through the rewriting steps gives (walk_steps.py).

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

#include "base/errors.h"
#include "base/numbers.h"
#include "formula/evaluator.h"
#include "formula/formula_value.h"
#include "formula/substitute.h"

namespace velk {
namespace {

struct WorkedCase {
  std::string formula;
  std::string values[3];  ///< of the channels a, b and c
  std::string expected;   ///< a text, or "!" and the name of an error
};

std::vector<WorkedCase> WorkedCases() {
  std::ifstream file(VELK_WORKED_CASES);
  std::vector<WorkedCase> cases;
  std::string line;
  std::getline(file, line);
  while (std::getline(file, line)) {
    std::istringstream fields(line);
    WorkedCase row;
    std::getline(fields, row.formula, '\t');
    for (std::string& value : row.values) std::getline(fields, value, '\t');
    std::getline(fields, row.expected);
    cases.push_back(row);
  }
  return cases;
}

std::string NameOf(ErrorNumber number) {
  switch (number) {
    case ErrorNumber::DivisionByZero:
      return "!DivisionByZero";
    case ErrorNumber::InvalidArgument:
      return "!InvalidArgument";
    case ErrorNumber::Overflow:
      return "!Overflow";
    default:
      return "!" + ErrorText(number).English();
  }
}

/// What `evaluate` makes of the substituted text, or the error's name.
template <class Evaluate>
std::string Evaluated(Session& session, const WorkedCase& row, Evaluate evaluate) {
  for (int i = 0; i < 3; ++i) session.CurrentValue[i + 1] = ToSingle(Val(row.values[i]));
  session.AdditionalParameters.assign(2, Parameter{});
  std::string text;
  try {
    const int brackets = SubstituteParameters(session, row.formula, text);
    return evaluate(text, brackets, session.AdditionalParameters);
  } catch (const RuntimeError& error) {
    return NameOf(error.Number());
  }
}

TEST(WorkedCases, ComeOutAsTheStepsGiveThem) {
  const auto session = std::make_unique<Session>();
  for (int i = 1; i <= kMaxParameters; ++i) session->CurrentParameters[i].name = "Channel " + std::to_string(i);
  session->CurrentParameters[1].name = "A";
  session->CurrentParameters[2].name = "B";
  session->CurrentParameters[3].name = "c";
  const std::vector<WorkedCase> cases = WorkedCases();
  ASSERT_GT(cases.size(), 1500U);
  for (const WorkedCase& row : cases) {
    const auto told = "[" + row.formula + "] a=" + row.values[0] + " b=" + row.values[1] + " c=" + row.values[2];
    const auto asText = [](std::string& text, int brackets, std::span<Parameter> additional) {
      EvaluateFormula(text, brackets, additional, 1);
      return text;
    };
    const auto asValue = [](std::string& text, int brackets, std::span<Parameter> additional) {
      return NumberText(FormulaValue(text, brackets, additional, 1));
    };
    EXPECT_EQ(Evaluated(*session, row, asText), row.expected) << told;
    const bool raises = row.expected.starts_with('!');
    EXPECT_EQ(Evaluated(*session, row, asValue), raises ? row.expected : NumberText(Val(row.expected))) << told;
  }
}

}  // namespace
}  // namespace velk
