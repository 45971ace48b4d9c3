#include "instruments/unit/board_calibration.h"

#include "base/numbers.h"
#include "instruments/calibration/calibration.h"
#include "instruments/table/protocols.h"
#include "instruments/texts.h"
#include "instruments/unit/unit_questions.h"
#include "platform/dialogs/procedure.h"

namespace velk {

namespace {

struct ReferenceTexts {
  MessageText prompt;
  MessageText title;
};

constexpr std::array<ReferenceTexts, 2> kReferences{
    {{text::EnterFirstReference, text::FirstReferenceTitle}, {text::EnterSecondReference, text::SecondReferenceTitle}}};

double ReadChannel(CAdc12nCom& board, int channel) {
  const CAdc12nCom::Status status(board);
  board.StartCalibrateChannel(channel);
  return board.EndCalibrateChannel();
}

/// Nothing where the operator leaves one of the questions.
std::optional<CalibrationPoints> AskPoints(Dialogs& dialogs, CAdc12nCom& board, int channel) {
  CalibrationPoints points;
  for (std::size_t i = 0; i < points.size(); ++i) {
    const auto reference = AskUnitNumber(dialogs, kReferences[i].prompt, kReferences[i].title);
    if (!reference) return std::nullopt;
    points[i] = {*reference, ReadChannel(board, channel)};
    dialogs.Message({text::ReadingIs + NumberText(points[i].reading), {}, Buttons::Ok, BoxIcon::Information});
  }
  return points;
}

bool IsAccepted(Dialogs& dialogs, const ChannelScale& scale, bool wasFound) {
  const OperatorText question =
      text::GainIs + NumberText(scale.gain) + text::AndOffsetIs + NumberText(scale.offset) + text::DoYouAccept;
  return dialogs.Message(
             {.text = question, .buttons = Buttons::YesNo, .icon = BoxIcon::Question, .safeDefault = !wasFound}) ==
         Answer::Yes;
}

void Save(CAdc12nCom& board, int channel, const ChannelScale& scale) {
  const CAdc12nCom::Status status(board);
  board.SetOffset(channel, scale.offset);
  board.SetGain(channel, scale.gain);
  SaveOrForget(board);
}

void SendRun(CAdc12nCom& board) {
  if (!board.MayBeInTradMode()) return;
  const CAdc12nCom::Status status(board);
  board.SendRun();
}

}  // namespace

bool CanCalibrateOnBoard(const Session& session, int parameter) {
  return ProtocolOf(session).unit && !ShowsFile(session) && parameter >= 1 && parameter <= session.NumberOfParameters &&
         parameter <= session.LastHardwareChannel;
}

void CalibrateOnBoard(const UnitAccess& unit, int channel) {
  Dialogs& dialogs = unit.platform.dialogs;
  RunProcedure({dialogs, "Command3_Click"}, [&](const Statements& run) {
    run([&] {
      bool cancelled = false;
      const UnitTalk talk(unit, cancelled);
      const auto points = AskPoints(dialogs, talk.Board(), channel);
      if (points) {
        const auto found = ScaleOf(*points);
        const ChannelScale scale = found.value_or(ChannelScale{0, 0});
        if (IsAccepted(dialogs, scale, found.has_value()) && MaySend(dialogs, scale.offset) &&
            MaySend(dialogs, scale.gain))
          Save(talk.Board(), channel, scale);
      }
      SendRun(talk.Board());
    });
  });
}

}  // namespace velk
