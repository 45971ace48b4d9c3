#include "platform/pages/page_fetch.h"

#include <QNetworkAccessManager>
#include <QNetworkProxy>
#include <QNetworkReply>
#include <QRegularExpression>
#include <QStringDecoder>
#include <utility>

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
  explicit NetworkPageFetch(Clock& clock);
  ~NetworkPageFetch() override { Cancel(); }

  void Begin(const std::string& address, Done done) override;
  bool IsUnderWay() const override { return done_ != nullptr; }
  void Cancel() override;

 private:
  QNetworkAccessManager& Manager();
  void Get(const QUrl& url);
  void TakeBytes(const QNetworkReply* reply);
  void Finish(const QNetworkReply* reply);
  void FollowRedirect();
  void Fail(PageFault fault, int status = 0) { End({{}, PageError(fault, address_, status)}); }
  void End(FetchedPage page);

  Clock& clock_;
  QObject context_;  ///< what replies tell ends with it
  std::unique_ptr<QNetworkAccessManager> manager_;
  std::unique_ptr<Timer> limit_;
  Done done_;
  int fetch_ = 0;  ///< counts those that began and those that were cancelled
  std::string address_;
  Reply reply_;
  QByteArray page_;
  int redirects_ = 0;
  std::shared_ptr<char> alive_ = std::make_shared<char>();
};

NetworkPageFetch::NetworkPageFetch(Clock& clock) : clock_(clock), limit_(clock.MakeTimer()) {
  limit_->SetInterval(kMilliseconds);
  limit_->SetHandler([this] {
    if (limit_->Enabled()) Fail(PageFault::TimedOut);
  });
}

void NetworkPageFetch::Begin(const std::string& address, Done done) {
  Cancel();
  done_ = std::move(done);
  address_ = address;
  redirects_ = 0;
  limit_->SetEnabled(true);
  try {
    Get(UrlOf(address));
  } catch (const PageError& error) {
    End({{}, error});
  }
}

void NetworkPageFetch::Cancel() {
  ++fetch_;
  done_ = nullptr;
  limit_->SetEnabled(false);
  reply_.reset();
}

/// Told by a post: a box of whoever is told must not stand inside the network's own work.
void NetworkPageFetch::End(FetchedPage page) {
  limit_->SetEnabled(false);
  reply_.reset();
  clock_.Post([this, alive = std::weak_ptr<char>(alive_), fetch = fetch_, fetched = std::move(page)] {
    if (alive.expired() || fetch != fetch_) return;
    const Done done = std::exchange(done_, nullptr);
    done(fetched);
  });
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
void NetworkPageFetch::Get(const QUrl& url) {
  QNetworkRequest request(url);
  request.setRawHeader("Accept-Encoding", "identity");
  request.setAttribute(QNetworkRequest::CacheLoadControlAttribute, QNetworkRequest::AlwaysNetwork);
  request.setAttribute(QNetworkRequest::CookieLoadControlAttribute, QNetworkRequest::Manual);
  request.setAttribute(QNetworkRequest::CookieSaveControlAttribute, QNetworkRequest::Manual);
  request.setAttribute(QNetworkRequest::Http2AllowedAttribute, false);
  page_.clear();
  reply_.reset(Manager().get(request));
  reply_->setReadBufferSize(kReadBuffer);
  const QNetworkReply* const reply = reply_.get();
  QObject::connect(reply, &QNetworkReply::readyRead, &context_, [this, reply] { TakeBytes(reply); });
  QObject::connect(reply, &QNetworkReply::finished, &context_, [this, reply] { Finish(reply); });
}

/// A reply that is let go of still tells of its end: that one is another's by then.
void NetworkPageFetch::TakeBytes(const QNetworkReply* reply) {
  if (reply != reply_.get()) return;
  page_ += reply_->readAll();
  if (static_cast<std::size_t>(page_.size()) > kMostBytes) Fail(PageFault::TooLarge);
}

void NetworkPageFetch::Finish(const QNetworkReply* reply) {
  TakeBytes(reply);
  if (reply != reply_.get()) return;
  const int status = reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
  if (status >= 300 && status < 400 && reply->hasRawHeader("Location")) return FollowRedirect();
  if (status >= 300) return Fail(PageFault::Refused, status);
  if (reply->error() != QNetworkReply::NoError) return Fail(PageFault::NoConnection);
  End({TextOf(page_, reply->header(QNetworkRequest::ContentTypeHeader).toString()), {}});
}

void NetworkPageFetch::FollowRedirect() {
  const QUrl from = reply_->url();
  const QUrl target = from.resolved(QUrl(QString::fromLatin1(reply_->rawHeader("Location"))));
  const bool sameHost = target.isValid() && target.scheme() == "http" && target.host() == from.host();
  if (!sameHost || ++redirects_ > kMostRedirects) return Fail(PageFault::RedirectRefused);
  Get(target);
}

}  // namespace

std::unique_ptr<PageFetch> MakePageFetch(Clock& clock) {
  return std::make_unique<NetworkPageFetch>(clock);
}

}  // namespace velk
