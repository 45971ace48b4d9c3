#include "model/status.h"

#include "model/texts.h"

namespace velk {

void ChangeCurrentStatus(Session& session, MainView& view, const MessageText& status) {
  session.CurrentStatus = status;
  view.SetPanel(1, session.CurrentStatus);
  view.ShowStatus(status);
  if (status == text::StatusAcquiringData) view.SetPanel(2, text::CurrentFile + session.CurrentFile);
  view.SetHourglass(false);
  view.ResetCaption();
}

bool StatusIs(const Session& session, const MessageText& status) {
  return session.CurrentStatus == status;
}

}  // namespace velk
