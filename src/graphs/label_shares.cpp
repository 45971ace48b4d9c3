#include "graphs/label_shares.h"

#include <algorithm>
#include <cmath>

namespace velk {

namespace {

// Pixels.
constexpr int kLeastValue = 46;
constexpr int kUsualName = 48;  ///< below this the units give way
constexpr int kLeastName = 30;
constexpr int kMostUnits = 44;
constexpr int kLeastUnits = 20;
constexpr int kBesideValue = 6;  ///< both sides together

int Whole(double pixels) {
  return static_cast<int>(std::ceil(std::clamp(pixels, 0.0, 1e5)));
}

/// Takes from `share`, down to `least`, what `missing` asks for.
void GiveWay(int& share, int least, int& missing) {
  const int given = std::clamp(share - least, 0, std::max(missing, 0));
  share -= given;
  missing -= given;
}

}  // namespace

LabelShares ShareLabels(int room, const LabelNeeds& needs) {
  LabelShares shares;
  const int least = Whole(needs.value + needs.mark) + kBesideValue;
  shares.value = std::max({Whole(1.15 * needs.value), least, kLeastValue});
  shares.units = std::clamp(Whole(needs.units), kLeastUnits, kMostUnits);
  shares.name = kUsualName;
  int missing = shares.name + shares.value + shares.units - room;
  if (missing < 0) shares.name -= missing;
  GiveWay(shares.name, kLeastName, missing);
  GiveWay(shares.units, kLeastUnits, missing);
  GiveWay(shares.value, std::max(least, kLeastValue), missing);
  GiveWay(shares.name, 0, missing);
  GiveWay(shares.units, 1, missing);
  GiveWay(shares.value, 1, missing);
  return shares;
}

}  // namespace velk
