#include "shell/icons.h"

#include "model/main_view.h"

namespace velk {

namespace {

struct Picture {
  int image;
  const char* file;
};

constexpr Picture kPictures[] = {
    {image::Record, "record"},
    {image::PlayBack, "playback"},
    {image::Exit, "exit"},
    {image::Acquire, "acquire"},
    {image::Edit, "edit"},
    {image::Tools, "tools"},
    {image::PauseRunning, "pause"},
    {image::Stop, "stop"},
    {image::PauseStopped, "start"},
    {image::Help, "help"},
    {image::Alarms, "alarms"},
    {image::RecordOff, "record_off"},
    {image::RecordOn, "record_on"},
    {image::DisconnectOff, "disconnect_off"},
    {image::ConnectOff, "connect_off"},
    {image::ConnectOn, "connect_on"},
    {image::DisconnectOn, "disconnect_on"},
};

}  // namespace

QIcon Icon(int image) {
  for (const Picture& picture : kPictures)
    if (picture.image == image) return QIcon(QStringLiteral(":/icons/%1.svg").arg(QLatin1String(picture.file)));
  return {};
}

}  // namespace velk
