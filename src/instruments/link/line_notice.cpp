#include "instruments/link/line_notice.h"

#include "instruments/setup/line_choices.h"
#include "instruments/texts.h"

namespace velk {

namespace {

OperatorText NameOf(const SerialSettings& settings, LineSetting setting) {
  switch (setting) {
    case LineSetting::DataBits:
      return text::LineDataBits + std::to_string(settings.dataBits);
    case LineSetting::Parity:
      return text::LineParity + ParityText(PlaceOf(kParities, settings.parity));
    case LineSetting::StopBits:
      return text::LineStopBits + settings.stopBits;
    case LineSetting::ModemLines:
      break;
  }
  return text::LineModemLines;
}

}  // namespace

OperatorText UnsupportedText(const SerialSettings& settings, const std::vector<LineSetting>& unsupported) {
  OperatorText text = settings.device + text::PortGoesWithout;
  for (std::size_t i = 0; i < unsupported.size(); ++i)
    text += OperatorText(i == 0 ? "" : ", ") + NameOf(settings, unsupported[i]);
  return text;
}

}  // namespace velk
