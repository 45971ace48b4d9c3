#include "shell/company_logo.h"

#include <QIcon>
#include <QToolButton>
#include <algorithm>

#include "imaging/read_picture.h"
#include "platform/dialogs/dialogs.h"
#include "platform/dialogs/procedure.h"
#include "platform/files/file_errors.h"
#include "settings/settings_io.h"
#include "shell/icons.h"
#include "shell/texts.h"

namespace velk {

namespace {

constexpr int kHeight = 28;     ///< of the picture, in pixels at scale 1: the bar gets no higher than the toolbar
constexpr int kMaxWidth = 224;  ///< so that a banner leaves room for the buttons
constexpr int kMaxScale = 4;    ///< pictures are kept sharp up to this scale of the screen

constexpr QSize kOwnPicture(96, 28);

constexpr const char* kPatterns = "|*.bmp;*.gif;*.jpg;*.jpeg;*.png;*.svg";

QSize Within(QSize size, QSize bound) {
  const QSize scaled = size.scaled(bound, Qt::KeepAspectRatio);
  return {std::max(scaled.width(), 1), std::max(scaled.height(), 1)};
}

}  // namespace

CompanyLogo::CompanyLogo(Session& session, Platform& platform, QWidget* parent)
    : QToolBar(parent), session_(session), platform_(platform), picture_(new QToolButton(this)) {
  setObjectName(QStringLiteral("CompanyBar"));
  setMovable(false);
  auto* space = new QWidget(this);
  space->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
  addWidget(space);
  picture_->setObjectName(QStringLiteral("CompanyLogo"));
  picture_->setToolTip(QStringLiteral("Click here to change company logo"));
  picture_->setAutoRaise(true);
  picture_->setFocusPolicy(Qt::TabFocus);
  addWidget(picture_);
  connect(picture_, &QToolButton::clicked, this, &CompanyLogo::CompanyLogo_Click);
  Load();
}

void CompanyLogo::Load() {
  if (!Show(session_.CompanyLogoFile)) SetPicture(Icon("company"), kOwnPicture);
}

bool CompanyLogo::Show(const std::string& path) {
  const auto image = ReadPicture(path, QSize(kMaxWidth, kHeight) * kMaxScale);
  if (image) SetPicture(QIcon(QPixmap::fromImage(*image)), image->size());
  return image.has_value();
}

void CompanyLogo::SetPicture(const QIcon& icon, QSize size) {
  const QSize shown = Within(size, {kMaxWidth, kHeight});
  setIconSize(shown);
  picture_->setIconSize(shown);
  picture_->setIcon(icon);
}

void CompanyLogo::CompanyLogo_Click() {
  RunProcedure({platform_.dialogs, "CompanyLogo_Click"}, [&](const Statements& run) {
    const auto path =
        platform_.dialogs.OpenFile({text::ChooseCompanyLogo, text::Pictures + kPatterns, session_.DefaultDirectory});
    if (!path) return;
    session_.DefaultDirectory = FolderOf(*path);
    run([&] {
      if (!Show(*path)) throw RuntimeError(ErrorNumber::InvalidArgument, text::PictureCannotBeRead + *path);
    });
    session_.CompanyLogoFile = *path;
    run([&] { KeepSettings(session_, platform_.settings); });
  });
}

}  // namespace velk
