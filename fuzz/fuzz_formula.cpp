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
#include <vector>

#include "base/errors.h"
#include "base/numbers.h"
#include "formula/evaluator.h"
#include "formula/formula_checks.h"
#include "formula/operations.h"
#include "formula/rewriting.h"
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

using Way = void (*)(std::string&, int, std::span<Parameter>, int);

/// The value as its bits, since minus zero is another one.
std::string Bits(double value) {
  return '|' + std::to_string(std::bit_cast<std::uint64_t>(value));
}

/// The text or the name of the error that a way gives, its value, and the statistics behind it.
std::string Outcome(Way evaluate, std::string text, int bracketCount, std::vector<Parameter> additional) {
  // Each operation consumes an operator; a "+" or "-" that it writes adds two rounds at most. What begins as a plain
  // formula may have to begin anew as a text.
  const std::size_t bound = 2 * (8 * text.size() + 16);
  operations = 0;
  try {
    evaluate(text, bracketCount, additional, 1);
    Require(!std::isnan(Val(text)));
  } catch (const RuntimeError& error) {
    Require(IsNamed(error.Number()));
    text = ErrorText(error.Number()).English();
  }
  Require(operations <= bound);
  const Parameter& kept = additional[1];
  return text + Bits(Val(text)) + '|' + std::to_string(kept.AverageCount) + Bits(kept.AverageSum) +
         Bits(kept.RunningMinimum) + Bits(kept.RunningMaximum);
}

/// What a sample asks for, in the place of the text: nothing where it raises.
std::string ValueOutcome(std::string text, int bracketCount, std::vector<Parameter> additional) {
  try {
    return Bits(FormulaValue(text, bracketCount, additional, 1));
  } catch (const RuntimeError&) {
    return {};
  }
}

void Evaluate(Session& session, std::string_view formula) {
  std::string text;
  const int bracketCount = SubstituteParameters(session, formula, text);
  const std::string outcome = Outcome(RewriteFormula, text, bracketCount, session.AdditionalParameters);
  Require(Outcome(EvaluateFormula, text, bracketCount, session.AdditionalParameters) == outcome);
  Require(outcome.find(ValueOutcome(text, bracketCount, session.AdditionalParameters)) != std::string::npos);
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
