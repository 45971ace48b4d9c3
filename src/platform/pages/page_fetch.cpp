#include "platform/pages/page_fetch.h"

#include <QNetworkAccessManager>
#include <QNetworkProxy>
#include <QNetworkReply>
#include <QRegularExpression>
#include <QStringDecoder>

#include "base/text_qt.h"

namespace velk {

namespace {

ErrorNumber NumberOf(PageFault fault) {
  return fault == PageFault::BadAddress ? ErrorNumber::InvalidArgument : ErrorNumber::DeviceUnavailable;
}

}  // namespace

PageError::PageError(PageFault fault, std::string address, int status)
    : RuntimeError(NumberOf(fault), ErrorText(NumberOf(fault)) + ": " + address),
      fault_(fault),
      address_(std::move(address)),
      status_(status) {
}

namespace {

constexpr qint64 kReadBuffer = 64 * 1024;  ///< of the page, held by the network while nobody has taken it yet

/// Nothing is disconnected ahead of the abort: the reply tells its connection to close by a signal of its own.
struct DeleteLater {
  void operator()(QNetworkReply* reply) const {
    reply->abort();
    reply->deleteLater();
  }
};
using Reply = std::unique_ptr<QNetworkReply, DeleteLater>;

QUrl UrlOf(const std::string& address) {
  QString text = ToQt(address).trimmed();
  if (!text.contains("://")) text.prepend("http://");
  QUrl url(text, QUrl::StrictMode);
  if (!url.isValid() || url.scheme() != "http" || url.host().isEmpty()) throw PageError(PageFault::BadAddress, address);
  return url;
}

/// The page in the charset that the answer or, failing that, the page itself names. Bytes of a page that names none
/// are UTF-8 where they can be, else Latin-1.
std::string TextOf(const QByteArray& page, const QString& contentType) {
  static const QRegularExpression charset("charset\\s*=\\s*[\"']?([^\\s\"';]+)",
                                          QRegularExpression::CaseInsensitiveOption);
  const QRegularExpressionMatch named = charset.match(contentType);
  if (named.hasMatch()) {
    QStringDecoder decoder(named.captured(1).toLatin1().constData());
    if (decoder.isValid()) return FromQt(decoder(page));
  }
  QStringDecoder decoder = QStringDecoder::decoderForHtml(page);
  const QString text = decoder.isValid() ? QString(decoder(page)) : QString();
  if (decoder.isValid() && !decoder.hasError()) return FromQt(text);
  return FromQt(QString::fromLatin1(page));
}

class NetworkPageFetch : public PageFetch {
 public:
  explicit NetworkPageFetch(Clock& clock) : clock_(clock) {}

  std::optional<std::string> Fetch(const std::string& address) override;
  void Cancel() override { cancelled_ = true; }
  void GiveUp() override;

 private:
  class Busy;
  QNetworkAccessManager& Manager();
  Reply Get(const QUrl& url);
  bool ReadWhole(QNetworkReply& reply, QByteArray& page, int fetch);
  QUrl RedirectOf(const QNetworkReply& reply, int redirects) const;
  [[noreturn]] void Raise(PageFault fault, int status = 0) const { throw PageError(fault, address_, status); }

  Clock& clock_;
  std::unique_ptr<QNetworkAccessManager> manager_;
  bool busy_ = false;
  int fetch_ = 0;  ///< counts those that began and those that were given up
  QNetworkReply* waitsFor_ = nullptr;
  bool cancelled_ = false;
  std::string address_;
  std::int64_t begun_ = 0;
};

class NetworkPageFetch::Busy {
 public:
  explicit Busy(NetworkPageFetch& pages) : pages_(pages), fetch_(++pages.fetch_) { pages_.busy_ = true; }
  ~Busy() {
    if (fetch_ != pages_.fetch_) return;  // given up: the flag is another's by now
    pages_.busy_ = false;
    pages_.waitsFor_ = nullptr;
  }
  int Fetch() const { return fetch_; }

 private:
  NetworkPageFetch& pages_;
  int fetch_;
};

void NetworkPageFetch::GiveUp() {
  if (!busy_) return;
  ++fetch_;
  busy_ = false;
  if (waitsFor_ != nullptr) waitsFor_->abort();
  waitsFor_ = nullptr;
}

std::optional<std::string> NetworkPageFetch::Fetch(const std::string& address) {
  if (busy_) return {};
  const Busy busy(*this);
  cancelled_ = false;
  address_ = address;
  begun_ = clock_.Ticks();
  QUrl url = UrlOf(address);
  for (int redirects = 0;; ++redirects) {
    const Reply reply = Get(url);
    QByteArray page;
    waitsFor_ = reply.get();
    if (!ReadWhole(*reply, page, busy.Fetch())) return {};
    const int status = reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    const bool redirected = status >= 300 && status < 400 && reply->hasRawHeader("Location");
    if (redirected) {
      url = RedirectOf(*reply, redirects);
      continue;
    }
    if (status >= 300) Raise(PageFault::Refused, status);
    if (reply->error() != QNetworkReply::NoError) Raise(PageFault::NoConnection);
    return TextOf(page, reply->header(QNetworkRequest::ContentTypeHeader).toString());
  }
}

/// Made with the first page: most jobs have no networked unit.
QNetworkAccessManager& NetworkPageFetch::Manager() {
  if (!manager_) {
    manager_ = std::make_unique<QNetworkAccessManager>();
    manager_->setProxy(QNetworkProxy::NoProxy);
    manager_->setRedirectPolicy(QNetworkRequest::ManualRedirectPolicy);
  }
  return *manager_;
}

/// A page is asked for as it is: nothing packed, nothing from a store, and one answer at a time.
Reply NetworkPageFetch::Get(const QUrl& url) {
  QNetworkRequest request(url);
  request.setRawHeader("Accept-Encoding", "identity");
  request.setAttribute(QNetworkRequest::CacheLoadControlAttribute, QNetworkRequest::AlwaysNetwork);
  request.setAttribute(QNetworkRequest::CookieLoadControlAttribute, QNetworkRequest::Manual);
  request.setAttribute(QNetworkRequest::CookieSaveControlAttribute, QNetworkRequest::Manual);
  request.setAttribute(QNetworkRequest::Http2AllowedAttribute, false);
  Reply reply(Manager().get(request));
  reply->setReadBufferSize(kReadBuffer);
  return reply;
}

/// False when the wait was cancelled, or given up.
bool NetworkPageFetch::ReadWhole(QNetworkReply& reply, QByteArray& page, int fetch) {
  for (;;) {
    if (fetch != fetch_) return false;
    const bool finished = reply.isFinished();
    page += reply.readAll();
    if (static_cast<std::size_t>(page.size()) > kMostBytes) Raise(PageFault::TooLarge);
    if (finished) return true;
    if (cancelled_) return false;
    if (clock_.Ticks() - begun_ > kMilliseconds) Raise(PageFault::TimedOut);
    clock_.WaitRound();
  }
}

QUrl NetworkPageFetch::RedirectOf(const QNetworkReply& reply, int redirects) const {
  const QUrl target = reply.url().resolved(QUrl(QString::fromLatin1(reply.rawHeader("Location"))));
  const bool sameHost = target.isValid() && target.scheme() == "http" && target.host() == reply.url().host();
  if (!sameHost || redirects >= kMostRedirects) Raise(PageFault::RedirectRefused);
  return target;
}

}  // namespace

std::unique_ptr<PageFetch> MakePageFetch(Clock& clock) {
  return std::make_unique<NetworkPageFetch>(clock);
}

}  // namespace velk
