#include "instruments/line_notice.h"

#include "instruments/line_choices.h"

namespace velk {

namespace {

std::string NameOf(const clstranslation& translator, const SerialSettings& settings, LineSetting setting) {
  switch (setting) {
    case LineSetting::DataBits:
      return translator.Translate(MessageId::LineDataBits) + std::to_string(settings.dataBits);
    case LineSetting::Parity:
      return translator.Translate(MessageId::LineParity) +
             translator.Translate(ParityText(PlaceOf(kParities, settings.parity)));
    case LineSetting::StopBits:
      return translator.Translate(MessageId::LineStopBits) + settings.stopBits;
    case LineSetting::ModemLines:
      break;
  }
  return translator.Translate(MessageId::LineModemLines);
}

}  // namespace

std::string UnsupportedText(const clstranslation& translator, const SerialSettings& settings,
                            const std::vector<LineSetting>& unsupported) {
  std::string text = settings.device + translator.Translate(MessageId::PortGoesWithout);
  for (std::size_t i = 0; i < unsupported.size(); ++i)
    text += (i == 0 ? "" : ", ") + NameOf(translator, settings, unsupported[i]);
  return text;
}

}  // namespace velk
