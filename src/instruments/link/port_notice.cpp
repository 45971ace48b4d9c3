#include "instruments/link/port_notice.h"

#include "instruments/setup/hardware_choices.h"
#include "instruments/texts.h"

namespace velk {

namespace {

OperatorText NameOf(const SerialSettings& settings, PortSetting setting) {
  switch (setting) {
    case PortSetting::DataBits:
      return text::PortDataBits + std::to_string(settings.dataBits);
    case PortSetting::Parity:
      return text::PortParity + ParityText(PlaceOf(kParities, settings.parity));
    case PortSetting::StopBits:
      return text::PortStopBits + settings.stopBits;
    case PortSetting::ModemLines:
      break;
  }
  return text::PortModemLines;
}

}  // namespace

OperatorText UnsupportedText(const SerialSettings& settings, const std::vector<PortSetting>& unsupported) {
  OperatorText text = settings.device + text::PortGoesWithout;
  for (std::size_t i = 0; i < unsupported.size(); ++i)
    text += OperatorText(i == 0 ? "" : ", ") + NameOf(settings, unsupported[i]);
  return text;
}

}  // namespace velk
