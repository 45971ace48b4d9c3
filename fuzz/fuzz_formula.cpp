// Any bytes as a formula, with any channel values: the checks and the evaluator always end, after a number of
// operations that the length of the text bounds, with a text that has a value or with one of the errors that they name,
// and the short way of plain formulas gives what the rewriting of the text gives.

#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <optional>
#include <span>
#include <vector>

#include "base/errors.h"
#include "base/numbers.h"
#include "formula/evaluator.h"
#include "formula/formula_checks.h"
#include "formula/formula_value.h"
#include "formula/operations.h"
#include "formula/substitute.h"

using namespace velk;

namespace {

std::size_t operations = 0;

void Require(bool holds) {
  if (!holds) std::abort();
}

class AgreeingDialogs : public Dialogs {
 public:
  using Dialogs::Dialogs;
  int boxes = 0;

 protected:
  Answer ShowMessage(const ShownMessage& /*box*/) override {
    ++boxes;
    return Answer::Ok;
  }
  std::optional<std::string> ShowInput(const std::string& /*prompt*/, const std::string& /*title*/,
                                       const std::string& /*preset*/) override {
    return std::nullopt;
  }
  std::optional<std::string> ShowOpenFile(const ShownFileQuestion& /*question*/) override { return std::nullopt; }
  std::optional<std::string> ShowSaveFile(const ShownFileQuestion& /*question*/) override { return std::nullopt; }
};

/// Both checks, as when a formula is entered; each fault is told once.
void Check(std::string formula) {
  Gate gate;
  const Language language;
  AgreeingDialogs dialogs(gate, language);
  int beeps = 0;
  const FormulaReport report{dialogs, language, [&] { ++beeps; }};
  int rightCount = 0;
  const bool bracketsFailed = CheckBrackets(report, formula, rightCount);
  Require(rightCount >= 0);
  const bool textFailed = CheckFormulaText(report, formula);
  Require(dialogs.boxes == (bracketsFailed ? 1 : 0) + (textFailed ? 1 : 0));
  Require(beeps == (textFailed ? 1 : 0));
}

bool IsNamed(ErrorNumber number) {
  return number == ErrorNumber::DivisionByZero || number == ErrorNumber::InvalidArgument ||
         number == ErrorNumber::Overflow;
}

Session& TheSession() {
  static const auto session = [] {
    auto made = std::make_unique<Session>();
    for (int i = 1; i <= kMaxParameters; ++i) made->CurrentParameters[i].name = kBlankName;
    made->CurrentParameters[1].name = "A";
    made->CurrentParameters[2].name = "b";
    made->CurrentParameters[64].name = "Ж";
    return made;
  }();
  return *session;
}

/// What evaluating comes to: the bits of the value, since minus zero is another one, or the error; the statistics.
struct Outcome {
  std::uint64_t value = 0;
  std::optional<ErrorNumber> error;
  std::int32_t count = 0;
  std::array<std::uint64_t, 3> statistics{};

  bool operator==(const Outcome&) const = default;
};

template <class ValueOf>
Outcome OutcomeOf(ValueOf valueOf, std::string text, int bracketCount, std::vector<Parameter> additional) {
  // Each operation consumes an operator; a "+" or "-" that it writes adds two rounds at most. What begins as a plain
  // formula may have to begin anew as a text.
  const std::size_t bound = 2 * (8 * text.size() + 16);
  operations = 0;
  Outcome outcome;
  try {
    const double value = valueOf(text, bracketCount, additional);
    Require(!std::isnan(value));
    outcome.value = std::bit_cast<std::uint64_t>(value);
  } catch (const RuntimeError& error) {
    Require(IsNamed(error.Number()));
    outcome.error = error.Number();
  }
  Require(operations <= bound);
  const Parameter& kept = additional[1];
  outcome.count = kept.AverageCount;
  outcome.statistics = {std::bit_cast<std::uint64_t>(kept.AverageSum),
                        std::bit_cast<std::uint64_t>(kept.RunningMinimum),
                        std::bit_cast<std::uint64_t>(kept.RunningMaximum)};
  return outcome;
}

void Evaluate(Session& session, std::string_view formula) {
  const auto rewritten = [](std::string& text, int brackets, std::span<Parameter> additional) {
    EvaluateFormula(text, brackets, additional, 1);
    return Val(text);
  };
  const auto valued = [](std::string& text, int brackets, std::span<Parameter> additional) {
    return FormulaValue(text, brackets, additional, 1);
  };
  std::string text;
  const int bracketCount = SubstituteParameters(session, formula, text);
  Require(OutcomeOf(valued, text, bracketCount, session.AdditionalParameters) ==
          OutcomeOf(rewritten, text, bracketCount, session.AdditionalParameters));
}

}  // namespace

// The linker hands the evaluator's calls to this one (see CMakeLists.txt).
extern "C" {
double __real__ZN4velk13ApplyOperatorEddNS_12FormulaTokenE(double left, double right, FormulaToken token);
double __wrap__ZN4velk13ApplyOperatorEddNS_12FormulaTokenE(double left, double right, FormulaToken token) {
  ++operations;
  return __real__ZN4velk13ApplyOperatorEddNS_12FormulaTokenE(left, right, token);
}
}

/// The input: three 32-bit floats, then the formula.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::array<float, 3> values{};
  if (size < sizeof values) return 0;
  std::memcpy(values.data(), data, sizeof values);
  const std::string formula(data + sizeof values, data + size);
  Session& session = TheSession();
  session.CurrentValue[1] = values[0];
  session.CurrentValue[2] = values[1];
  session.CurrentValue[64] = values[2];
  session.AdditionalParameters.assign(2, Parameter{});
  Parameter& kept = session.AdditionalParameters[1];
  kept.AverageCount = static_cast<std::int32_t>(size);
  kept.AverageSum = kept.RunningMinimum = std::isfinite(values[0]) ? static_cast<double>(values[0]) : 0;
  kept.RunningMaximum = -kept.RunningMinimum;

  Check(formula);
  Evaluate(session, formula);
  return 0;
}
