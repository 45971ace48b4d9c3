#pragma once

#include <functional>
#include <string>

#include "formula/formula_checks.h"
#include "model/session.h"

namespace velk {

/// Checks an entered formula and adds a computed channel with it; what is wrong is told in a box. `putBack` gets the
/// text in lower case, completed by a bracket that was missing, as soon as its brackets are right. Gives whether the
/// channel was added; graph map and windows are the caller's.
bool AddFormula(Session& session, const FormulaReport& report, std::string text,
                const std::function<void(const std::string&)>& putBack);

/// The formula of one of CurrentParameters; empty for an input channel.
std::string FormulaOf(const Session& session, int parameter);

}  // namespace velk
