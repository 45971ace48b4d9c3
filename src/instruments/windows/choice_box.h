#pragma once

#include <QComboBox>
#include <string>

namespace velk {

/// Shows an entry of a list; below 0 no entry, but the stored value in its own words. No signal is sent.
void ShowChoice(QComboBox& box, int place, const std::string& stored);

}  // namespace velk
